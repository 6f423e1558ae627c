// Pictures of the level that may be larger than the view: drawn tile by tile off the screen, as the
// view shows it but for the cursor's brush and what lies over the scene.
#pragma once

#include <vector>

namespace mw {

// What the view shows, or all of the level from straight above without perspective, turned as the
// Mini-Map is.
enum class PictureOf { View, WholeLevel };

inline constexpr int kMostPictureScale = 4;
inline constexpr int kLevelPictureSide = 1024;  // pixels of the whole level at scale 1

struct PictureSize {
  int width = 0, height = 0;  // pixels
};
// At a scale of 1 ... kMostPictureScale.
PictureSize SizeOfPicture(PictureOf what, int scale);

// A part of a picture, in its pixels from the top-left corner.
struct PictureTile {
  int left = 0, top = 0, width = 0, height = 0;
};
// They cover the picture. None is larger than the view or, of a level, than 64 x 64 cells are.
std::vector<PictureTile> TilesOfPicture(PictureOf what, PictureSize picture);

// Draws a tile into the current framebuffer, of which it takes the lower left part. The camera and
// the state of the tools stay as they are; viewport and projection are the tile's afterwards.
void DrawPictureTile(PictureOf what, PictureSize picture, const PictureTile& tile);

}  // namespace mw
