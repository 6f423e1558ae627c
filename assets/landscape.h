// Scenes of the program's own pictures: the landscape of the splash picture, half wire frame and
// half finished ground, and the layers of the earth behind the credits. Used by the program's
// pictures.
#pragma once

#include "assets/picture.h"

namespace mw {

Picture PaintSplashLandscape(int width, int height);

// From the sky down through grass, soil, gravel, sand and rock to the ground water.
Picture PaintEarthLayers(int width, int height);

}  // namespace mw
