#include "assets/water.h"

#include "assets/ground.h"
#include "assets/noise.h"

namespace mw {
namespace {

constexpr int kFilterSide = 256;

// Net of bright lines that waves focus on the ground below, 0 to 1.
float Caustics(float u, float v, Lattice lattice, unsigned seed) {
  const Place place = Warp(u, v, 0.035f, {{5, 5}, 3, 0.5f, seed});
  const float border = Worley(place.u, place.v, lattice, seed + 1).Border();
  const float line = 1 - SmoothStep(0, 0.55f, border);
  return line * line;
}

Field Waves() {
  return MakeField(kGroundSide, [](float u, float v) {
    const Place place = Warp(u, v, 0.04f, {{3, 3}, 3, 0.5f, 21});
    const float swell = Ridged(place.u, place.v, {{4, 7}, 3, 0.42f, 22});
    const float chop = Ridged(place.u, place.v, {{13, 19}, 3, 0.5f, 23});
    return 13 * swell + 2.5f * chop;
  });
}

}  // namespace

Picture PaintWaterGround() {
  const Field waves = Waves();
  const Field light = Relief(waves);
  const Field gloss = Gloss(waves, 40);
  const Ramp depths{{0.0f, Rgb(18, 62, 92)}, {0.5f, Rgb(34, 96, 124)}, {1.0f, Rgb(74, 146, 160)}};
  return MakePicture(kGroundSide, [&](int x, int y, float u, float v) {
    const float depth = Fbm(u, v, {{3, 3}, 4, 0.5f, 24});
    const float net = Caustics(u, v, {9, 9}, 25);
    const float crest = waves.At(x, y) / 15.5f;
    Colour water = depths.At(0.15f + 0.2f * depth + 0.55f * crest + 0.18f * net);
    water = water * (0.45f + 0.55f * light.At(x, y));
    const float glint = SmoothStep(0.86f, 1.0f, gloss.At(x, y)) * SmoothStep(0.62f, 0.85f, crest);
    return Mix(water, Rgb(226, 240, 244), 0.65f * glint);
  });
}

Picture PaintWaterFilter() {
  return MakePicture(kFilterSide, [](int, int, float u, float v) {
    const float broad = Caustics(u, v, {6, 6}, 11);
    const float fine = Caustics(u, v, {11, 11}, 14);
    const float swell = Fbm(u, v, {{3, 3}, 3, 0.5f, 17});
    const float light = Clamp01(0.34f + 0.13f * swell + 0.42f * broad + 0.18f * fine);
    return Mix(Rgb(96, 146, 168), Rgb(214, 240, 240), light);
  });
}

}  // namespace mw
