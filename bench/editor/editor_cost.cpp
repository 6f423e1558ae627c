#include "bench/editor/editor_cost.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QThread>
#include <algorithm>
#include <ctime>
#include <fstream>
#include <string>

#include "app/ui/gl_widget.h"
#include "bench/table/table.h"
#include "tests/monkey/inputs.h"
#include "tools/help_tour/gui.h"
#include "tools/help_tour/hands.h"

namespace mw::bench {
namespace {

constexpr int kRounds = 3, kLeastFrames = 6;
constexpr double kRoundTime = 0.25, kPatience = 10;  // seconds
constexpr unsigned long kPause = 5;                  // milliseconds

double SecondsOf(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// Where a cost begins.
struct Start {
  double wall = SecondsOf(CLOCK_MONOTONIC), processor = SecondsOf(CLOCK_PROCESS_CPUTIME_ID);
  Cost Since() const {
    return {SecondsOf(CLOCK_MONOTONIC) - wall, SecondsOf(CLOCK_PROCESS_CPUTIME_ID) - processor};
  }
};

// Answers the message boxes that are shown while it lives.
class Answerer : public QObject {
 public:
  Answerer() { qApp->installEventFilter(this); }
  Start start;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* const box = qobject_cast<QMessageBox*>(watched);
    if (box && event->type() == QEvent::Show) {
      QMetaObject::invokeMethod(
          box,
          [this, box] {
            QAbstractButton* const yes = box->button(QMessageBox::Yes);
            QAbstractButton* const button = yes ? yes : box->button(QMessageBox::Ok);
            start = Start();
            if (button) button->click();
          },
          Qt::QueuedConnection);
    }
    return false;
  }
};

// A line of /proc/self/status, in megabytes.
double StatusLine(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double kilobytes = 0;
    if (word == name && status >> kilobytes) return kilobytes / 1024;
  }
  return 0;
}

}  // namespace

Cost CostOf(const std::function<void()>& work) {
  const Start start;
  work();
  return start.Since();
}

Cost CostOnGui(const std::function<void()>& work) {
  return help::OnGui([&] {
    Answerer answerer;
    answerer.start = Start();
    work();
    return answerer.start.Since();
  });
}

Cost MedianOf(const std::vector<Cost>& costs) {
  std::vector<double> wall, processor;
  for (const Cost& cost : costs) {
    wall.push_back(cost.wall);
    processor.push_back(cost.processor);
  }
  return {MedianOf(std::move(wall)), MedianOf(std::move(processor))};
}

FrameMeter::FrameMeter() {
  connection_ = help::OnGui([this] {
    auto* const view = qobject_cast<GlWidget*>(help::FindView());
    return QObject::connect(view, &GlWidget::frameShown, view, [this] { ++frames_; });
  });
}

FrameMeter::~FrameMeter() {
  help::OnGui([this] { QObject::disconnect(connection_); });
}

Cost FrameMeter::FrameDuring(const std::function<void()>& work) const {
  const int before = frames_;
  const Cost cost = CostOf(work);
  const int drawn = frames_ - before;
  Require(drawn > 0, "drawing frames");
  return {cost.wall / drawn, cost.processor / drawn};
}

Cost FrameMeter::MeanFrame(const std::function<void()>& meanwhile) const {
  help::WaitForFrames(3);
  const int enough = frames_ + kLeastFrames;
  return FrameDuring([&] {
    const Start start;
    double seconds = 0;
    while ((seconds < kRoundTime || frames_ < enough) && seconds < kPatience) {
      meanwhile();
      QThread::msleep(kPause);
      seconds = start.Since().wall;
    }
  });
}

Cost FrameMeter::Frame(const std::function<void()>& meanwhile) const {
  std::vector<Cost> costs;
  for (int round = 0; round < kRounds; ++round) costs.push_back(MeanFrame(meanwhile));
  return MedianOf(costs);
}

FrameMeter::Pair FrameMeter::Frames(const std::function<void()>& begin,
                                    const std::function<void()>& meanwhile,
                                    const std::function<void()>& end) const {
  std::vector<Cost> first, second;
  for (int round = 0; round < kRounds; ++round) {
    first.push_back(MeanFrame([] {}));
    begin();
    second.push_back(MeanFrame(meanwhile));
    end();
  }
  return {MedianOf(first), MedianOf(second)};
}

// The press is handled between two frames, and the next one shows it; it may be drawn before the
// press has returned.
double FrameMeter::PressToPicture(const help::Target& at, double secondsAfterFrame) const {
  help::WaitForFrames();
  QThread::usleep(static_cast<unsigned long>(secondsAfterFrame * 1e6));
  const Start start;
  const int before = help::OnGui([&] {
    const int framesBefore = frames_;
    monkey::PressMouse(at);
    return framesBefore;
  });
  while (frames_ == before) QThread::usleep(100);
  const double seconds = start.Since().wall;
  help::Release(at);
  return seconds;
}

double MemoryNow() { return StatusLine("VmRSS:"); }
double MostMemory() { return StatusLine("VmHWM:"); }
void ForgetMostMemory() { std::ofstream("/proc/self/clear_refs") << "5"; }

}  // namespace mw::bench
