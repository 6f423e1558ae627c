// Wind-blown sand. Used by the painters of sand and of the sand road.
#pragma once

#include "assets/picture.h"

namespace mw {

struct Ripples {
  int waves = 18;      // across the square
  float height = 5;    // pixels from trough to crest
  float sway = 0.03f;  // how far the crests wander, in periods
  unsigned seed = 1;
};
// Height of the rippled surface at a place, in pixels.
float RippledSand(float u, float v, const Ripples& ripples);

// Colour of single grains around the sand's own colour.
Colour SandGrain(Colour sand, int x, int y, unsigned seed);

}  // namespace mw
