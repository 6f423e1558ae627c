// Bare earth: clods, pebbles and moisture. Used by the painters of dirt, frozen ground and dirt
// roads.
#pragma once

#include <cstdint>

#include "assets/picture.h"

namespace mw {

// Crumbled soil, heights in pixels.
Field CrumbledSoil(std::uint32_t seed);

struct Pebbles {
  int count = 0;
  float smallest = 1.5f, largest = 4.5f;  // radius in pixels
  Colour dark, light;
};

struct Earth {
  Field height;
  Ramp colours;  // by height and patches, 0 to 1
  Pebbles pebbles;
  float wetness = 0;  // 0 dry, 1 shining
  std::uint32_t seed = 1;
};
Picture PaintEarth(const Earth& earth);

}  // namespace mw
