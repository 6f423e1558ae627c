// The texts of a new level's scripts, one function for each script or group of scripts. Each
// returns false when not all of it could be written. Used by app/level_skeleton.
#pragma once

#include <string>
#include <string_view>

namespace mw {

// Writes a script of the open level: the header, then `text`. `path` is relative to the level
// folder.
[[nodiscard]] bool WriteNewScript(std::string_view path, std::string_view text);
// "x/y/z", world units.
std::string PositionText(int x, int y, int z);

// The scripts of one game mode and the entities in its folder.
[[nodiscard]] bool WriteSinglePlayerScripts();
[[nodiscard]] bool WriteConquestScripts();
[[nodiscard]] bool WriteTeamDeathMatchScripts();
[[nodiscard]] bool WriteCaptureTheFlagScripts();

// The entities that a mode starts with: a base for each side, and a soldier spawn beside it.
// `folder` is the mode's, relative to the level folder.
enum class ControlPoints { Included, None };
[[nodiscard]] bool WriteModeEntityFiles(std::string_view folder, ControlPoints controlPoints);

// Static objects, settings, menu and water: what every level has whatever its game rules.
[[nodiscard]] bool WriteCommonScripts();

}  // namespace mw
