// What the editor writes for a mod: its folders under the game folder with the start-up script, and
// the game folder in its configuration file.
#pragma once

#include <string>
#include <string_view>

#include "data/mod_config_parser.h"

namespace mw {

// The game's web address, a line of every new start-up script.
inline constexpr std::string_view kGameWebAddress = "http://www.varnhold.example/";
inline constexpr std::string_view kGamePathKey = "GamePath";
// The longest game folder, in bytes, whose line fits into the configuration reader's line buffer.
inline constexpr std::size_t kMaxSavedGamePath = kConfigLineBuffer - 1 - (kGamePathKey.size() + 1);

// The start-up script of a new mod, with line feeds only.
std::string ModInitScript(std::string_view modName);

// Creates the mod's folder, its archive folders and, where it has none, its Init.con. Shows a
// warning when the mod's folder cannot be created.
void CreateModFolders(std::string_view modName, std::string_view gameFolder);

// A configuration's text with this game folder in the place of that in its GamePath lines. The last
// line gets its line feed.
std::string WithGamePath(std::string_view text, std::string_view gamePath);

// Replaces the lines of `<mod name>.cfg` that begin with "GamePath"; every other line keeps its
// bytes. False when the file cannot be read or written (which has been shown); it is then as it
// was.
bool SaveModGamePath(std::string_view modName, const ModConfig& config);

}  // namespace mw
