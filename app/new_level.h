// A level from nothing: what the user chooses, and the steps that make a complete level of it,
// which the game can load at once. Used by the File menu, the welcome dialog and the New Level
// dialog.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "app/level_skeleton.h"

namespace mw {

inline constexpr std::size_t kMaxLevelName = 127;  // characters
inline constexpr int kMinHeightScaleTenths = 1, kMaxHeightScaleTenths = 20;

enum class LevelSize { Small, Medium, Large };

struct NewLevelChoices {
  std::string name;  // as AcceptLevelName gave it
  LevelSize size = LevelSize::Medium;
  int heightScaleTenths = 6;
  GameRules rules{.conquest = true, .teamDeathMatch = true};
  bool water = false;
  std::string theatre;  // of the mod; empty when it has none
  bool randomTerrain = true;
};

// The level's name from what was typed: every character but ASCII letters and digits becomes `_`.
// Nothing, after a message, when no letter or digit is left, when Load Level does not list such a
// name, when the name is too long for the level's files, or when the user does not want to
// overwrite the level of that name.
std::optional<std::string> AcceptLevelName(std::string_view typed);
// What the user should know about a new level of this height scale, or an empty text.
std::string HeightScaleNotice(int tenths);

// Lets the user choose; nothing when the user cancels.
using AskNewLevel = std::function<std::optional<NewLevelChoices>()>;

// Lets the user pick a mod and choose, and creates the level. False when cancelled, or, after a
// message, when it could not be created; no level is loaded then.
bool NewLevel(const AskNewLevel& ask);

}  // namespace mw
