// The media that are no landscape: the chequered stand-in for a missing surface, the detail pattern
// that is laid over near ground, and the glyphs of the in-game map.
#pragma once

#include "assets/picture.h"

namespace mw {

// 256 x 256: a chart of squares, so that bare ground still shows its slopes and its scale.
Picture PaintNoSurface();

// 512 x 512 grey around the middle, tiling.
Picture PaintDetail();

// 128 x 9: sixteen glyphs of 8 x 9 pixels, the column letters A to H and the row numbers 1 to 8 of
// the map grid, white with a black outline. Pure red pixels are not drawn.
Picture PaintMapGlyphs();

}  // namespace mw
