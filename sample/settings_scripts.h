// The texts of the sample game: its configuration files, the object list, and the scripts of a
// level that are not about entities. Lines end with line feeds.
#pragma once

#include <string>
#include <string_view>

#include "sample/levels.h"
#include "sample/objects.h"

namespace mw::sample {

// A mod's configuration, and at the same time the template of new mods. `gamePath` ends with `\`.
std::string ModConfigText(std::string_view gamePath, std::string_view introduction);
std::string ObjectListText();
// Tells the game what an object is and which mesh it shows.
std::string ObjectScript(const ObjectKind& object);

std::string LevelInitScript(const Level& level);
std::string TerrainScript(const Level& level);
std::string SkyScript(const Level& level);
std::string MenuScript();
std::string SoundScript();
// Starts one game mode; `folder` holds its entity scripts.
std::string ModeScript(std::string_view folder, bool tickets);
std::string StaticObjectsScript(const Level& level);
std::string CubeMapText(std::string_view levelName);

}  // namespace mw::sample
