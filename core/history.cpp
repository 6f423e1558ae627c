#include "core/history.h"

#include <algorithm>
#include <utility>

#include "core/editor_state.h"

namespace mw {

namespace {

// Settings as bytes, and of those only what changed.
class SettingsPart final : public HistoryPart {
 public:
  void Keep(std::span<std::uint8_t> setting, void (*exchanged)()) {
    const auto isKept = [&](const Setting& kept) { return kept.now.data() == setting.data(); };
    if (std::ranges::any_of(settings_, isKept)) return;
    settings_.push_back({setting, exchanged, {{0, {setting.begin(), setting.end()}}}});
  }

  bool Close() override {
    for (Setting& setting : settings_) setting.kept = DifferencesOf(setting);
    return std::ranges::any_of(settings_, [](const Setting& one) { return !one.kept.empty(); });
  }

  void Reopen() override {
    for (Setting& setting : settings_) {
      std::vector<std::uint8_t> before(setting.now.begin(), setting.now.end());
      for (const Piece& piece : setting.kept)
        std::ranges::copy(piece.bytes, before.begin() + static_cast<std::ptrdiff_t>(piece.at));
      setting.kept = {{0, std::move(before)}};
    }
  }

  void Exchange() override {
    for (Setting& setting : settings_) {
      for (Piece& piece : setting.kept)
        std::ranges::swap_ranges(piece.bytes, setting.now.subspan(piece.at, piece.bytes.size()));
    }
    for (const Setting& setting : settings_) {
      if (setting.exchanged && !setting.kept.empty()) setting.exchanged();
    }
  }

  std::size_t Bytes() const override {
    std::size_t bytes = settings_.size() * sizeof(Setting);
    for (const Setting& setting : settings_) {
      for (const Piece& piece : setting.kept) bytes += sizeof(Piece) + piece.bytes.size();
    }
    return bytes;
  }

 private:
  struct Piece {
    std::size_t at = 0;  // in the setting
    std::vector<std::uint8_t> bytes;
  };
  struct Setting {
    std::span<std::uint8_t> now;
    void (*exchanged)();
    std::vector<Piece> kept;
  };

  // Of a setting that is kept whole.
  static std::vector<Piece> DifferencesOf(const Setting& setting) {
    std::vector<Piece> pieces;
    const auto& before = setting.kept.front().bytes;
    for (std::size_t at = 0; at < before.size(); ++at) {
      if (before[at] == setting.now[at]) continue;
      if (pieces.empty() || pieces.back().at + pieces.back().bytes.size() != at)
        pieces.push_back({at, {}});
      pieces.back().bytes.push_back(before[at]);
    }
    return pieces;
  }

  std::vector<Setting> settings_;
};

std::size_t StepsDone() { return editor.history.dropped + editor.history.past.size(); }

bool IsAsSaved() { return editor.history.saved == StepsDone(); }

// An edit that was no step leaves the level modified where it was saved: undoing no longer leads
// back to what the file holds.
void LookForForeignEdit() {
  if (editor.levelModified && IsAsSaved()) editor.history.saved.reset();
}

std::size_t BytesOf(const HistoryRecord& step) {
  std::size_t bytes = sizeof(HistoryRecord);
  for (const auto& part : step.parts) bytes += part->Bytes();
  return bytes;
}

template <typename Steps>
void Add(Steps& steps, HistoryRecord step) {
  step.bytes = BytesOf(step);
  editor.history.bytes += step.bytes;
  steps.push_back(std::move(step));
}

template <typename Steps>
HistoryRecord TakeLast(Steps& steps) {
  HistoryRecord step = std::move(steps.back());
  steps.pop_back();
  editor.history.bytes -= step.bytes;
  return step;
}

// A step that is too large by itself goes too: those before it could not be undone without it.
void DropOldest() {
  while (editor.history.bytes > editor.history.limit) {
    editor.history.bytes -= editor.history.past.front().bytes;
    editor.history.past.pop_front();
    ++editor.history.dropped;
  }
}

void OpenStep(std::string_view name, bool isRun) {
  editor.history.isReopened = isRun && editor.history.runGoesOn && !editor.history.past.empty() &&
                              editor.history.past.back().name == name;
  ++editor.history.moment;
  if (editor.history.isReopened) {
    editor.history.open = TakeLast(editor.history.past);
    for (const auto& part : editor.history.open->parts) part->Reopen();
    return;
  }
  LookForForeignEdit();
  editor.history.wasModified = editor.levelModified;
  editor.history.open = HistoryRecord{std::string(name), isRun, {}};
}

void KeepStep(HistoryRecord step) {
  while (!editor.history.future.empty()) TakeLast(editor.history.future);
  if (editor.history.saved && *editor.history.saved > StepsDone()) editor.history.saved.reset();
  editor.history.runGoesOn = step.isRun;
  Add(editor.history.past, std::move(step));
  DropOldest();
}

void CloseStep() {
  ++editor.history.moment;
  HistoryRecord step = *std::exchange(editor.history.open, std::nullopt);
  std::erase_if(step.parts, [](const auto& part) { return !part->Close(); });
  if (!step.parts.empty()) {
    KeepStep(std::move(step));
  } else if (editor.history.isReopened) {
    editor.history.runGoesOn = false;
    editor.levelModified = !IsAsSaved();
  } else {
    editor.levelModified = editor.history.wasModified;
  }
  editor.history.changed();
}

void Begin(std::string_view name, bool isRun) {
  if (editor.history.depth++ > 0) return;
  OpenStep(name, isRun);
  editor.history.changed();
}

// A gesture of a level that is gone ends nothing.
void End(unsigned level) {
  if (level == editor.history.level && --editor.history.depth == 0) CloseStep();
}

// Takes the last step over from one list to the other.
template <typename From, typename To>
std::optional<HistoryNews> Take(From& from, To& to) {
  if (editor.history.IsRecording() || from.empty()) return std::nullopt;
  LookForForeignEdit();
  EndHistoryRun();
  HistoryRecord step = TakeLast(from);
  HistoryNews news{step.name, std::nullopt};
  for (const auto& part : step.parts) {
    part->Exchange();
    if (!news.place) news.place = part->Place();
  }
  Add(to, std::move(step));
  editor.levelModified = !IsAsSaved();
  editor.history.changed();
  return news;
}

}  // namespace

HistoryStep::HistoryStep(std::string_view name, Kind kind) : level_(editor.history.level) {
  Begin(name, kind == Run);
}

HistoryStep::~HistoryStep() { End(level_); }

void HeldStep::Begin(std::string_view name) {
  if (held_ && level_ == editor.history.level) return;
  held_ = true;
  level_ = editor.history.level;
  mw::Begin(name, false);
}

void HeldStep::End() {
  if (std::exchange(held_, false)) mw::End(level_);
}

void EndHistoryRun() { editor.history.runGoesOn = false; }

void KeepBytes(std::span<std::uint8_t> setting, void (*exchanged)()) {
  if (editor.history.IsRecording()) editor.history.PartOf<SettingsPart>().Keep(setting, exchanged);
}

std::optional<HistoryNews> Undo() { return Take(editor.history.past, editor.history.future); }

std::optional<HistoryNews> Redo() { return Take(editor.history.future, editor.history.past); }

std::string NextUndo() {
  return editor.history.IsRecording() || editor.history.past.empty()
             ? std::string()
             : editor.history.past.back().name;
}

std::string NextRedo() {
  return editor.history.IsRecording() || editor.history.future.empty()
             ? std::string()
             : editor.history.future.back().name;
}

void ClearHistory(bool isSaved) {
  History next;
  next.level = editor.history.level + 1;
  next.moment = editor.history.moment + 1;
  next.limit = editor.history.limit;
  next.changed = std::move(editor.history.changed);
  if (!isSaved) next.saved.reset();
  editor.history = std::move(next);
  editor.history.changed();
}

void MarkHistorySaved() {
  EndHistoryRun();
  editor.history.saved = StepsDone();
  if (!editor.history.IsRecording()) return;
  // Half of a gesture was saved, and no undoing leads there.
  editor.history.saved.reset();
  editor.history.wasModified = false;
}

bool FitsHistory(std::size_t bytes) { return bytes <= editor.history.limit; }

}  // namespace mw
