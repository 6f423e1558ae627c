#include "app/camera_places.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>

#include "app/camera_control.h"
#include "app/commands.h"
#include "app/frame.h"
#include "app/level.h"
#include "core/editor_state.h"
#include "core/hooks.h"
#include "core/text.h"
#include "data/mod_config.h"
#include "platform/settings_store.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

using Position = std::array<float, 3>;

// The names are those of files, whose case does not count; only slashes mean something in settings,
// and control characters in a list of them.
std::string SettingPart(std::string name) {
  const auto isSpecial = [](char c) { return c == '/' || c == '\\' || (c >= 0 && c < ' '); };
  std::replace_if(name.begin(), name.end(), isSpecial, '_');
  return LowerCase(name);
}

std::string CameraSetting() { return "Camera/" + CameraPlaceName(); }

std::optional<Position> RememberedPosition() {
  const auto text = ReadEditorSetting(CameraSetting());
  if (!text) return std::nullopt;
  Tokenizer words(*text);
  Position position{};
  for (float& coordinate : position) {
    const auto word = words.Next(" ");
    if (!word) return std::nullopt;
    coordinate = ParseFloat(word);
    if (std::abs(coordinate) > kFarthestCamera) return std::nullopt;
  }
  return position;
}

Position FirstSight() {
  constexpr float kAbove = 40;  // world units
  const float middle = static_cast<float>(modConfig.WorldSize) / 2;
  float ground = 0;
  if (HasUsableTerrain()) {
    const int row = std::clamp(CellOf(middle, 0).i, 0, modConfig.MaterialSize);
    ground = DrawnHeight(row, 0) * modConfig.HeightScale;
  }
  return {static_cast<float>(modConfig.WorldSize) - middle, ground + kAbove, 0};
}

struct Heights {
  float lowest = kMaxHeight, highest = 0;
};

// World heights of the level's ground.
Heights FindHeights() {
  Heights heights;
  for (int i = 1; i <= modConfig.MaterialSize; ++i) {
    for (int j = 0; j < modConfig.MaterialSize; ++j) {
      heights.lowest = std::min(heights.lowest, terrain.grid[i][j].h);
      heights.highest = std::max(heights.highest, terrain.grid[i][j].h);
    }
  }
  return {heights.lowest * modConfig.HeightScale, heights.highest * modConfig.HeightScale};
}

// World units above the ground from which all of the level fits into the view.
float DistanceToSeeAll() { return DistanceToSee(static_cast<float>(modConfig.WorldSize) / 2); }

}  // namespace

float DistanceToSee(float radius) {
  constexpr double kToRadians = std::numbers::pi / 180;
  const float narrowSide = std::min(1.0f, editor.viewWidth / editor.viewHeight);
  const auto slope = static_cast<float>(std::tan(kFieldOfView / 2 * kToRadians)) * narrowSide;
  return radius / slope;
}

std::string CameraPlaceName() {
  return SettingPart(LevelMod()) + "/" + SettingPart(modConfig.LevelName.String());
}

void RememberCameraPosition() {
  const Position& saved = editor.savedCameraPosition;
  // Where it cannot be kept the level is first looked at as a new one is: nothing to tell of.
  static_cast<void>(WriteEditorSetting(
      CameraSetting(), FormatText("%.9g %.9g %.9g", static_cast<double>(saved[0]),
                                  static_cast<double>(saved[1]), static_cast<double>(saved[2]))));
}

void RecallCameraPosition() {
  const auto remembered = RememberedPosition();
  editor.savedCameraPosition = remembered ? *remembered : FirstSight();
}

void ShowWholeLevel() {
  if (!HasUsableTerrain()) return;
  constexpr float kClearance = 10;  // world units above the highest ground, at least
  RunCommand(kCommandCameraTopDown);
  const Heights heights = FindHeights();
  const auto farPlane = static_cast<float>(kFarPlane) - 1;
  const float middle = static_cast<float>(modConfig.WorldSize) / 2;
  const float height = std::min(heights.highest + DistanceToSeeAll(), heights.lowest + farPlane);
  camera.position.Set(middle, std::max(height, heights.highest + kClearance), middle);
  hooks.invalidateMiniMap();
}

}  // namespace mw
