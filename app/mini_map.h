// The Mini-Map: the picture of the height field with the camera's marker, in a small window inside
// the 3D view. It is drawn over each frame; the window library only says where and within what.
#pragma once

#include <cstdint>
#include <vector>

#include "terrain/mini_map_picture.h"

namespace mw {

// The window around the picture as its owner painted it, in device pixels of the view.
struct MiniMapWindowPicture {
  int left = 0, top = 0;                // in the view, from its top-left corner
  int width = 0, height = 0;            // 0: no Mini-Map is shown
  int pictureLeft = 0, pictureTop = 0;  // of the height picture, in the window
  int pictureSize = 0;                  // side of the height picture
  std::vector<std::uint8_t> pixels;     // red, green, blue; rows from the top
  bool changed = false;                 // to be given to GL before it is next drawn
};

// Draws window, height picture and marker with the projection of the overlay (device pixels, y
// downwards) current. Only what changed since the last time is given to GL anew.
void DrawMiniMap();
// Frees what drawing keeps in GL; the view's context must be current.
void ReleaseMiniMap();

// Moves the camera to where the marker then shows at picture pixel (x, y) (clamped to the picture);
// height and angles stay.
void MoveCameraToMiniMapPixel(int x, int y);

}  // namespace mw
