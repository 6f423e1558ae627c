#include "sample/noise.h"

#include <algorithm>
#include <cmath>

#define STB_PERLIN_IMPLEMENTATION
#include <stb/stb_perlin.h>

namespace mw::sample {
namespace {

// Layers beyond the noise's own period would no longer repeat over the level.
constexpr int kMaxCycles = 256;

float OneLayer(Point at, float worldSize, int cycles, int seed) {
  const float scale = static_cast<float>(cycles) / worldSize;
  return stb_perlin_noise3_seed(at.x * scale, at.z * scale, 0.5f, cycles, cycles, 0, seed);
}

// Sum of `shape`d layers, weighted so that the weights add up to 1.
template <typename Shape>
float SumLayers(Point at, float worldSize, const NoiseKind& kind, Shape shape) {
  float sum = 0, weights = 0, weight = 1;
  int cycles = kind.cycles;
  for (int octave = 0; octave < kind.octaves && cycles <= kMaxCycles; ++octave, cycles *= 2) {
    sum += weight * shape(OneLayer(at, worldSize, cycles, kind.seed + octave));
    weights += weight;
    weight *= 0.5f;
  }
  return sum / weights;
}

}  // namespace

float Noise(Point at, float worldSize, const NoiseKind& kind) {
  return SumLayers(at, worldSize, kind, [](float value) { return 1.6f * value; });
}

float RidgedNoise(Point at, float worldSize, const NoiseKind& kind) {
  return SumLayers(at, worldSize, kind, [](float value) {
    const float crest = 1.0f - std::min(1.0f, 1.8f * std::abs(value));
    return crest * crest;
  });
}

}  // namespace mw::sample
