// The overview picture of the level that the game shows to its players: a mosaic of the surface
// tiles with water, grid and labels. Made by the Tools menu.
#pragma once

#include <cstdint>
#include <vector>

namespace mw {

inline constexpr int kInGameMapSide = 512;  // pixels

// Writes "%s/Textures/ingamemap.dds" of the level folder from the level's tiles, the terrain and
// "media/igmfont.bmp" (without that picture, no labels). Tells in the status bar that it works, and
// shows a message when the file could not be written.
void GenerateInGameMap();
// The picture by itself: 512 x 512 RGB pixels, rows from the top. Tiles that are not assigned,
// cannot be read, or are not square DXT1 pictures stay black.
std::vector<std::uint8_t> PaintInGameMap();

}  // namespace mw
