// Smooth noise that repeats over a level, so that what is made from it fits together at the level's
// edges.
#pragma once

#include "sample/field.h"

namespace mw::sample {

// One kind of noise: `cycles` waves (a power of two, at most 256) over a level, `octaves` layers of
// doubled frequency and halved strength, and a seed of its own.
struct NoiseKind {
  int cycles = 4;
  int octaves = 1;
  int seed = 0;
};

// About -1 ... 1, at a position in a level of `worldSize` units.
float Noise(Point at, float worldSize, const NoiseKind& kind);
// 0 ... 1 with sharp crests at 1: mountain ridges.
float RidgedNoise(Point at, float worldSize, const NoiseKind& kind);

}  // namespace mw::sample
