// Colour palettes of a texture set, as files of the common RIFF palette form: a 24-byte header
// (RIFF, PAL, data, version 3.0, 256 entries) and 256 entries of red, green, blue and a zero. Used
// by the media writer.
#pragma once

#include <array>
#include <cstdint>

#include "assets/picture.h"

namespace mw {

inline constexpr int kPaletteHeader = 24, kPaletteEntries = 256;
using PaletteFile = std::array<std::uint8_t, kPaletteHeader + 4 * kPaletteEntries>;

// Light on the ground, from full shadow to full sun.
PaletteFile TerrainPaletteFile();
// Light on objects, the same with less blue in the shade.
PaletteFile ObjectPaletteFile();
// The same over snow, which fills its shade with the light of the sky.
PaletteFile WinterTerrainPaletteFile();
PaletteFile WinterObjectPaletteFile();

}  // namespace mw
