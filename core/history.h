// The past of the open level: what every gesture changed, to take it back and to do it again. A
// step holds, per house, what was there before. Undoing exchanges that with what is there now, and
// so does redoing: one record of data serves both directions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "core/vector3.h"

namespace mw {

// What the steps may hold together; the oldest ones go first.
inline constexpr std::size_t kHistoryBytes = std::size_t{256} << 20;

// What one house keeps of one step. While the step is open it grows; each house brings its kind.
class HistoryPart {
 public:
  virtual ~HistoryPart() = default;
  // The gesture has ended: drops what did not change. False when nothing is left.
  virtual bool Close() = 0;
  // The gesture goes on after all, from what the level is now.
  virtual void Reopen() = 0;
  // Puts back what is kept, and keeps what was there instead.
  virtual void Exchange() = 0;
  virtual std::size_t Bytes() const = 0;
  // Where the change is, in world units of the view; nothing when it is nowhere in particular.
  virtual std::optional<Vector3> Place() const { return std::nullopt; }
};

struct HistoryRecord {
  std::string name;  // "Raising"
  bool isRun = false;
  std::vector<std::unique_ptr<HistoryPart>> parts;
  std::size_t bytes = 0;  // all of it, once the step is done
};

struct History {
  std::deque<HistoryRecord> past;  // the next one to undo is the last
  std::vector<HistoryRecord> future;
  std::size_t bytes = 0;  // of the past and the future
  std::optional<HistoryRecord> open;
  int depth = 0;                         // gestures within the one that opened the step
  unsigned moment = 0;                   // grows whenever a step opens or closes
  unsigned level = 0;                    // grows with every Clear
  std::size_t dropped = 0;               // steps that the past held before its first
  std::optional<std::size_t> saved = 0;  // number of steps done when saved; none: out of reach
  bool runGoesOn = false;                // the last step, a run, takes more of its kind
  bool isReopened = false, wasModified = false;
  std::size_t limit = kHistoryBytes;
  // Names or number of the steps changed. The shell fills it in.
  std::function<void()> changed = [] {};

  bool IsRecording() const { return open.has_value(); }
  // The part of this kind of the open step, made when there is none. A step must be open.
  template <typename Part>
  Part& PartOf() {
    for (const auto& part : open->parts) {
      if (auto* const found = dynamic_cast<Part*>(part.get())) return *found;
    }
    open->parts.push_back(std::make_unique<Part>());
    return static_cast<Part&>(*open->parts.back());
  }
};

// A gesture, from its beginning to the end of this object's life. One within another is part of it.
// A gesture that changed nothing is no step, and leaves the level unmodified if it was so.
class HistoryStep {
 public:
  // A run goes on with the last step when that is a run of the same name and nothing came between.
  enum Kind { Single, Run };
  explicit HistoryStep(std::string_view name, Kind kind = Single);
  ~HistoryStep();
  HistoryStep(const HistoryStep&) = delete;
  HistoryStep& operator=(const HistoryStep&) = delete;

 private:
  unsigned level_;
};

// The same for a gesture that begins and ends in different calls: a held button's. Begun again it
// goes on; ended twice, or after the level is gone, it is nothing.
class HeldStep {
 public:
  void Begin(std::string_view name);
  void End();

 private:
  bool held_ = false;
  unsigned level_ = 0;
};

// The next gesture is a step of its own, whatever the last one was.
void EndHistoryRun();

// Keeps the bytes of a setting with static life as they are now, for the open step; once is enough.
// `exchanged` is called after they were put back. Nothing happens while no step is open.
void KeepBytes(std::span<std::uint8_t> setting, void (*exchanged)() = nullptr);
template <typename T>
void KeepSetting(T& setting, void (*exchanged)() = nullptr) {
  static_assert(std::is_trivially_copyable_v<T>);
  KeepBytes({reinterpret_cast<std::uint8_t*>(&setting), sizeof(T)}, exchanged);
}

// What was undone or redone.
struct HistoryNews {
  std::string name;
  std::optional<Vector3> place;
};
// Nothing while a gesture is under way or there is no step. editor.levelModified tells afterwards
// whether the level is as it was saved.
std::optional<HistoryNews> Undo();
std::optional<HistoryNews> Redo();
// Name of the step that each would take; empty for none.
std::string NextUndo();
std::string NextRedo();

// Another level is open, or none: its past begins now, as it was saved or (recovered) was not.
void ClearHistory(bool isSaved = true);
// The level was saved as it is now. The steps stay.
void MarkHistorySaved();
// Whether a step of so many bytes could be kept.
bool FitsHistory(std::size_t bytes);

}  // namespace mw
