#include "app/bookmarks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/camera_places.h"
#include "app/commands.h"
#include "core/camera.h"
#include "core/editor_state.h"
#include "core/hooks.h"
#include "core/text.h"
#include "platform/prompts.h"
#include "platform/settings_store.h"

namespace mw {
namespace {

// Of one text, so that it is written whole: a line for each level, newest first, which is the
// level's name and its bookmarks, each after a tab.
constexpr const char* kBookmarksSetting = "Bookmarks";
constexpr std::size_t kLongestLine = 2'000;  // what is longer is damage

struct Sight {
  Vector3 position;
  float yaw = 0, pitch = 0;
  CameraMode mode = CameraMode::Fly;
};
using Bookmarks = std::array<std::optional<Sight>, kBookmarkCount>;

std::string TextOf(int number, const Sight& sight) {
  std::string text = FormatText("\t%i", number);
  for (const float value :
       {sight.position.x, sight.position.y, sight.position.z, sight.yaw, sight.pitch}) {
    text += FormatText(" %.9g", static_cast<double>(value));
  }
  return text + FormatText(" %i", static_cast<int>(sight.mode));
}

// What cannot be read is no bookmark.
void AddBookmark(Bookmarks& bookmarks, std::string_view text) {
  Tokenizer words(text);
  const int number = ParseInt(words.Next(" "));
  if (number < 1 || number > kBookmarkCount) return;
  std::array<float, 5> values{};
  for (float& value : values) {
    const auto word = words.Next(" ");
    if (!word) return;
    value = ParseFloat(word);
    if (std::abs(value) > kFarthestCamera) return;
  }
  const auto word = words.Next(" ");
  const int mode = ParseInt(word);
  if (!word || mode < 0 || mode > static_cast<int>(CameraMode::TopDown)) return;
  bookmarks[static_cast<std::size_t>(number - 1)] = {
      {values[0], values[1], values[2]}, values[3], values[4], static_cast<CameraMode>(mode)};
}

// The lines of all levels, newest first.
std::vector<std::string> ReadLines() {
  std::vector<std::string> lines;
  const std::string text = ReadEditorSetting(kBookmarksSetting).value_or("");
  Tokenizer rest(text);
  while (const auto line = rest.Next("\n")) {
    if (line->size() <= kLongestLine && lines.size() < kMostBookmarkedLevels) {
      lines.emplace_back(*line);
    }
  }
  return lines;
}

bool IsOfOpenLevel(std::string_view line) { return line.starts_with(CameraPlaceName() + '\t'); }

Bookmarks ReadBookmarks() {
  Bookmarks bookmarks;
  const std::vector<std::string> lines = ReadLines();
  const auto own = std::ranges::find_if(lines, IsOfOpenLevel);
  if (own == lines.end()) return bookmarks;
  Tokenizer fields(*own);
  fields.Next("\t");
  while (const auto field = fields.Next("\t")) AddBookmark(bookmarks, *field);
  return bookmarks;
}

[[nodiscard]] bool WriteBookmarks(const Bookmarks& bookmarks) {
  std::string text = CameraPlaceName();
  for (int number = 1; number <= kBookmarkCount; ++number) {
    const auto& sight = bookmarks[static_cast<std::size_t>(number - 1)];
    if (sight) text += TextOf(number, *sight);
  }
  text += '\n';
  std::vector<std::string> others = ReadLines();
  std::erase_if(others, IsOfOpenLevel);
  others.resize(std::min(others.size(), kMostBookmarkedLevels - 1));
  for (const std::string& line : others) text += line + '\n';
  return WriteEditorSetting(kBookmarksSetting, text);
}

CommandId CommandOf(CameraMode mode) {
  switch (mode) {
    case CameraMode::OnTerrain:
      return kCommandCameraOnTerrain;
    case CameraMode::TopDown:
      return kCommandCameraTopDown;
    case CameraMode::Fly:
      break;
  }
  return kCommandCameraFly;
}

}  // namespace

void KeepBookmark(int number) {
  Bookmarks bookmarks = ReadBookmarks();
  bookmarks.at(static_cast<std::size_t>(number - 1)) = {camera.position, camera.yaw, camera.pitch,
                                                        editor.cameraMode};
  const bool kept = WriteBookmarks(bookmarks);
  SetStatusText(1, FormatText(kept ? "Kept this place as bookmark %i"
                                   : "Could not keep bookmark %i in the settings",
                              number));
}

void GoToBookmark(int number) {
  const auto sight = ReadBookmarks().at(static_cast<std::size_t>(number - 1));
  if (!sight) {
    SetStatusText(1, FormatText("This level has no bookmark %i", number));
    return;
  }
  RunCommand(CommandOf(sight->mode));
  camera.position = sight->position;
  camera.yaw = sight->yaw;
  camera.pitch = sight->pitch;
  camera.roll = 0;
  camera.UpdateDirection();
  hooks.invalidateMiniMap();
  SetStatusText(1, FormatText("Bookmark %i", number));
}

}  // namespace mw
