#include "sample/ground_noise.h"

#include "assets/noise.h"

namespace mw::sample {
namespace {

Octaves OctavesOf(const NoiseKind& kind) {
  return {{kind.cycles, kind.cycles}, kind.octaves, 0.5f, kind.seed};
}

}  // namespace

float Noise(Point at, float worldSize, const NoiseKind& kind) {
  return Fbm(at.x / worldSize, at.z / worldSize, OctavesOf(kind));
}

float RidgedNoise(Point at, float worldSize, const NoiseKind& kind) {
  const float ridged = Ridged(at.x / worldSize, at.z / worldSize, OctavesOf(kind));
  return ridged * ridged;  // wider valleys between the crests
}

}  // namespace mw::sample
