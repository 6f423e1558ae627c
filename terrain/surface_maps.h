// Surface map generation: the surface plug-in paints the tiles that are assigned, and the level
// gets them as compressed textures. Run by the Tools menu.
#pragma once

#include <vector>

#include "plugins/mapwright_plugin.h"
#include "terrain/shadow_work.h"

namespace mw {

// The entry points of the surface plug-in; all null while no plug-in is loaded.
struct SurfacePlugin {
  decltype(&initSurfaceMap) InitSurfaceMap = nullptr;
  decltype(&initSurfaceBmp) InitSurfaceBmp = nullptr;
  decltype(&generateSurfaceMap) GenerateSurfaceMap = nullptr;
};

// Paints every assigned tile and writes it into the level, all tiles as one group of changes, and
// as a TGA file with the terrain palette into the scratch folder "ShadowWork" of the game. Progress
// is told in the status bar. Asks first when the level has some of the tiles already. Shows a
// message when no tile is assigned and when something could not be written; does nothing when the
// plug-in is missing or declines. True when the caller is to reload the level's textures.
bool GenerateSurfaceMaps(const SurfacePlugin& plugin);
// How many of the tiles have their surface in the open level's archive.
int CountTilesInLevel(const std::vector<TileIndex>& tiles);

}  // namespace mw
