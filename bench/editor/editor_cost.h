// What the running editor's work costs, for a thread beside its windows.
#pragma once

#include <QMetaObject>
#include <atomic>
#include <functional>
#include <vector>

#include "tools/help_tour/windows.h"

namespace mw::bench {

struct Cost {
  double wall = 0, processor = 0;  // seconds; the processor's of all threads
};

Cost CostOf(const std::function<void()>& work);
// On the thread of the windows. A message box that the work shows is answered with Yes or OK, and
// only what comes after the last one counts: no user waits for the box itself.
Cost CostOnGui(const std::function<void()>& work);
// Of each column by itself.
Cost MedianOf(const std::vector<Cost>& costs);

// Counts the frames that the view shows.
class FrameMeter {
 public:
  FrameMeter();
  ~FrameMeter();
  FrameMeter(const FrameMeter&) = delete;
  FrameMeter& operator=(const FrameMeter&) = delete;

  // Of one frame, in a short time during which `meanwhile` is called again and again.
  Cost MeanFrame(const std::function<void()>& meanwhile = [] {}) const;
  // The median of some of these.
  Cost Frame(const std::function<void()>& meanwhile = [] {}) const;
  // Two kinds of frames in turns, so that whatever else the machine does meets both: `begin` leads
  // from the first kind to the second, `end` back.
  struct Pair {
    Cost first, second;
  };
  Pair Frames(const std::function<void()>& begin, const std::function<void()>& meanwhile,
              const std::function<void()>& end) const;
  // Of one frame, the mean of those that are drawn during the work.
  Cost FrameDuring(const std::function<void()>& work) const;
  // Seconds from a press of the left button, so long after a frame was shown, to the frame that
  // shows what it did. The button is released again.
  double PressToPicture(const help::Target& at, double secondsAfterFrame) const;

 private:
  QMetaObject::Connection connection_;
  std::atomic<int> frames_ = 0;
};

// Megabytes of the program that are in memory.
double MemoryNow();
// The most since the last call of ForgetMostMemory.
double MostMemory();
void ForgetMostMemory();

}  // namespace mw::bench
