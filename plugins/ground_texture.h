// A ground texture at the scale of the surface tiles, ready to be laid over them. Used by the
// surface-map plug-in's painter.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "plugins/mapwright_plugin.h"
#include "plugins/materials.h"

namespace mw::plugin {

inline constexpr int kCellPixels = MAPWRIGHT_TILE_PIXELS / MAPWRIGHT_TILE_CELLS;
// After this many pixels of a tile a texture repeats; tiles are whole multiples of it.
inline constexpr int kPatternSide = kCellPixels * MAPWRIGHT_TEXTURE_CELLS;

using Rgb8 = std::array<std::uint8_t, 3>;

struct GroundTexture {
  // Rows and columns as those of a tile.
  std::vector<Rgb8> pixels;
  // The same, each colour by itself.
  std::array<std::vector<std::uint8_t>, 3> channels;
  // How much a pixel stands out of its texture, about -1 ... 1: bright grains and blades lie above
  // dark gaps where two grounds meet.
  std::vector<float> prominence;
};

// The even colour of a material without a texture.
GroundTexture PlainGround(Material material);
// The slot's picture scaled to the pattern and placed as the surface view of the Material Mapper
// shows it; the plain ground when the slot has no picture.
GroundTexture MakeGround(const MapwrightTextureSlot& slot, Material material);

}  // namespace mw::plugin
