// The Mini-Map's picture with the camera's marker, and what a click in it does.
#pragma once

#include <array>
#include <cstdint>

#include "core/mini_map_picture.h"

namespace mw {

// Red, green, blue per pixel, rows from the top: the height picture, and over it a yellow square at
// the camera's place with a line in its viewing direction.
using MiniMapPixels = std::array<std::uint8_t, kMiniMapSize * kMiniMapSize * 3>;
void PaintMiniMap(MiniMapPixels& pixels);

// Moves the camera to where the marker then shows at picture pixel (x, y) (clamped to the picture);
// height and angles stay.
void MoveCameraToMiniMapPixel(int x, int y);

}  // namespace mw
