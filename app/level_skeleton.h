// What a new level consists of before anybody has edited it: its folders on disk and its scripts,
// written from fixed texts and the choices of whoever creates it. Used by the creation of a level.
#pragma once

#include <optional>
#include <string>

namespace mw {

inline constexpr int kNewWaterLevel = 35;  // of every new level, world units

// The game rules that a level can be played by.
struct GameRules {
  bool singlePlayer = false, conquest = false, teamDeathMatch = false, captureTheFlag = false;

  bool Any() const { return singlePlayer || conquest || teamDeathMatch || captureTheFlag; }
};

// Makes the folders of the level that ModConfig names and the one of its archive, with their
// parents, as far as they are missing. The path of the first one that could not be made, or
// nothing.
std::optional<std::string> CreateLevelFolders(const GameRules& rules);

// Writes all scripts of the level through the game-file layer, into its archive. ModConfig gives
// the name, the sizes and AlternativePath, `editor` whether there is water. False when one
// could not be written.
[[nodiscard]] bool WriteLevelScripts(const GameRules& rules);

}  // namespace mw
