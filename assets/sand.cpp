#include "assets/sand.h"

#include <cmath>

#include "assets/ground.h"
#include "assets/noise.h"
#include "assets/scatter.h"

namespace mw {
namespace {

// One ripple, phase 0 to 1: a long rise on the side of the wind and a short fall.
float RippleProfile(float phase) {
  constexpr float kCrest = 0.68f;
  return phase < kCrest ? SmoothStep(0, kCrest, phase) : SmoothStep(1, kCrest, phase);
}

}  // namespace

float RippledSand(float u, float v, const Ripples& ripples) {
  const Place place = Warp(u, v, ripples.sway, {{3, 3}, 3, 0.35f, ripples.seed});
  // Crests run roughly across the square, one wave aslant for each period across.
  const float waves = static_cast<float>(ripples.waves) * place.v + 3 * place.u +
                      0.18f * Fbm(u, v, {{14, 14}, 2, 0.5f, ripples.seed + 4});
  const float profile = RippleProfile(waves - std::floor(waves));
  const float strength =
      0.35f + 0.65f * SmoothStep(-0.5f, 0.3f, Fbm(u, v, {{3, 3}, 3, 0.5f, ripples.seed + 2}));
  return ripples.height * strength * profile;
}

Colour SandGrain(Colour sand, int x, int y, unsigned seed) {
  const float grain = HashUnit(x, y, seed) + HashUnit(x / 2, y / 2, seed + 1) - 1;
  const bool fleck = HashUnit(x, y, seed + 2) > 0.992f;
  return sand * (1 + 0.09f * grain - (fleck ? 0.22f : 0.0f));
}

Picture PaintDrySand() {
  const Field height = MakeField(kGroundSide, [](float u, float v) {
    const float dunes = Fbm(u, v, {{3, 3}, 3, 0.5f, 81});
    const float grain = Fbm(u, v, {{120, 120}, 2, 0.6f, 82});
    return RippledSand(u, v, {25, 3.6f, 0.045f, 80}) + 7 * dunes + 0.45f * grain;
  });
  const Field light = Relief(height);
  const Ramp colours{
      {0.0f, Rgb(200, 168, 116)}, {0.5f, Rgb(220, 190, 138)}, {1.0f, Rgb(234, 208, 160)}};
  return MakePicture(kGroundSide, [&](int x, int y, float u, float v) {
    const float patch = Fbm(u, v, {{4, 4}, 4, 0.5f, 83});
    const Colour sand = SandGrain(colours.At(0.5f + 0.45f * patch), x, y, 84);
    return sand * (0.32f + 0.68f * light.At(x, y));
  });
}

Picture PaintWetSand() {
  Dice dice(90);
  StoneBed bed(MakeField(kGroundSide, [](float u, float v) {
    const float shore = Fbm(u, v, {{3, 3}, 4, 0.5f, 91});
    return 9 * shore + RippledSand(u, v, {20, 2.2f, 0.06f, 94}) +
           0.35f * Fbm(u, v, {{120, 120}, 2, 0.6f, 95});
  }));
  const Field bare = bed.height;
  ScatterStones(bed, 130, {1.2f, 3.0f, 0.5f}, dice);
  const Field light = Relief(bed.height);
  const Field gloss = Gloss(Blurred(bare, 1), 24);
  const Field mean = Blurred(bare, 24);
  const Ramp colours{
      {0.0f, Rgb(118, 94, 64)}, {0.5f, Rgb(144, 117, 82)}, {1.0f, Rgb(170, 142, 104)}};
  return MakePicture(kGroundSide, [&](int x, int y, float u, float v) {
    const float patch = Fbm(u, v, {{4, 4}, 4, 0.5f, 96});
    const Colour sand = SandGrain(colours.At(0.5f + 0.5f * patch), x, y, 97);
    const Colour shell = Mix(Rgb(96, 80, 66), Rgb(226, 214, 196), bed.shade.At(x, y));
    const Colour lit = Mix(sand, shell, bed.cover.At(x, y)) * (0.35f + 0.65f * light.At(x, y));
    const float sheen = SmoothStep(0.6f, -1.2f, bare.At(x, y) - mean.At(x, y) + 2 * patch);
    return Mix(lit, Rgb(198, 208, 214), 0.6f * sheen * gloss.At(x, y));
  });
}

}  // namespace mw
