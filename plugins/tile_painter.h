// Paints surface tiles from the material grid and the ground textures. Used by the entry points of
// the surface-map plug-in.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "plugins/ground_texture.h"

namespace mw::plugin {

struct SurfaceMap {
  const std::uint32_t* materials = nullptr;  // the grid; null before the first run
  int size = 0;                              // data rows and columns
  int offsetRows = 0, offsetColumns = 0;     // cells by which tile (0, 0) is moved
  std::array<GroundTexture, MAPWRIGHT_MATERIALS> grounds;
};

inline constexpr int kTileSide = MAPWRIGHT_TILE_PIXELS;

// kTileSide x kTileSide pixels, rows from the top. Every pixel depends on its place in the level
// alone, so that tiles meet without a seam. Beyond the level its edge goes on.
void PaintTile(const SurfaceMap& map, int tileRow, int tileColumn, std::vector<Rgb8>& pixels);

}  // namespace mw::plugin
