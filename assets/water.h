// The picture that the view multiplies onto what lies under the water. Used by the media writer.
#pragma once

#include "assets/picture.h"

namespace mw {

// 256 x 256, light, tiling.
Picture PaintWaterFilter();

}  // namespace mw
