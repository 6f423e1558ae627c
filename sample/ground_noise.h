// Smooth noise over a level's ground that repeats at the level's edges, so that what is made from
// it fits together there.
#pragma once

#include <cstdint>

#include "sample/grid.h"

namespace mw::sample {

struct NoiseKind {
  int cycles = 4;  // waves over the level in each direction
  int octaves = 1;
  std::uint32_t seed = 0;
};

// About -1 ... 1, at a position in a square of `worldSize` units.
float Noise(Point at, float worldSize, const NoiseKind& kind);
// 0 ... 1 with sharp crests near 1: mountain ridges.
float RidgedNoise(Point at, float worldSize, const NoiseKind& kind);

}  // namespace mw::sample
