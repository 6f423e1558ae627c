#include "assets/earth.h"

#include "assets/ground.h"
#include "assets/noise.h"
#include "assets/scatter.h"

namespace mw {
namespace {

constexpr Colour kSkyGlint = Rgb(214, 226, 236);

Colour WithGlint(Colour colour, float gloss, float wetness) {
  return Mix(colour, kSkyGlint, Clamp01(gloss * wetness));
}

Field MudSurface() {
  return MakeField(kGroundSide, [](float u, float v) {
    const Place place = Warp(u, v, 0.05f, {{3, 3}, 3, 0.5f, 61});
    const float mounds = Fbm(place.u, place.v, {{5, 5}, 4, 0.5f, 62});
    const float folds = Ridged(place.u, place.v, {{9, 9}, 3, 0.5f, 63});
    const float lumps = Fbm(u, v, {{40, 40}, 3, 0.5f, 65});
    return 11 * mounds + 7 * folds + 1.3f * lumps;
  });
}

constexpr float kPuddleLevel = 2.2f;  // of the mud's height

// Polygons of cracked soil: 0 in a crack, 1 away from it.
float Cracks(float u, float v, Lattice lattice, std::uint32_t seed) {
  const Place place = Warp(u, v, 0.018f, {{12, 12}, 3, 0.6f, seed});
  return SmoothStep(0.0f, 0.13f, Worley(place.u, place.v, lattice, seed + 1).Border());
}

}  // namespace

Field CrumbledSoil(std::uint32_t seed) {
  return MakeField(kGroundSide, [seed](float u, float v) {
    const Place place = Warp(u, v, 0.012f, {{16, 16}, 3, 0.5f, seed});
    const float swells = Fbm(u, v, {{4, 4}, 4, 0.5f, seed + 1});
    const float clods = 1 - Worley(place.u, place.v, {26, 26}, seed + 2).nearest;
    const float crumbs = 1 - Worley(place.u, place.v, {70, 70}, seed + 3).nearest;
    const float grain = Fbm(u, v, {{96, 96}, 2, 0.6f, seed + 4});
    const float bare = SmoothStep(-0.3f, 0.5f, swells);  // clods lie in drifts
    return 4.5f * swells + 5 * bare * clods + 2.2f * crumbs + 0.9f * grain;
  });
}

Picture PaintEarth(const Earth& earth) {
  Dice dice(earth.seed);
  StoneBed bed(earth.height);
  const Field open = Occlusion(earth.height, 6, 5);
  if (earth.pebbles.count > 0) {
    ScatterStones(bed, earth.pebbles.count, {earth.pebbles.smallest, earth.pebbles.largest, 0.6f},
                  dice);
  }
  const Field light = Relief(bed.height);
  const Field gloss = Gloss(bed.height, 26);
  return MakePicture(kGroundSide, [&](int x, int y, float u, float v) {
    const float patch = Fbm(u, v, {{4, 4}, 5, 0.55f, earth.seed + 20});
    const float grain = Fbm(u, v, {{64, 64}, 3, 0.7f, earth.seed + 21});
    const Colour soil = earth.colours.At(0.5f + 0.38f * patch + 0.14f * grain) * open.At(x, y);
    const Colour pebble =
        Mix(earth.pebbles.dark, earth.pebbles.light, bed.shade.At(x, y)) * (1 + 0.12f * grain);
    const Colour lit = Mix(soil, pebble, bed.cover.At(x, y)) * (0.25f + 0.75f * light.At(x, y));
    const float damp = SmoothStep(-0.5f, 0.6f, patch);
    return WithGlint(lit, gloss.At(x, y) * damp, earth.wetness);
  });
}

Picture PaintDryDirt() {
  Field height = CrumbledSoil(50);
  return PaintEarth(
      {std::move(height),
       {{0.0f, Rgb(118, 88, 58)}, {0.5f, Rgb(152, 118, 80)}, {1.0f, Rgb(180, 146, 104)}},
       {900, 1.4f, 4.5f, Rgb(126, 112, 96), Rgb(188, 174, 154)},
       0,
       51});
}

Picture PaintWetDirt() {
  Field height = CrumbledSoil(55);
  for (float& value : height.values) value *= 0.8f;
  return PaintEarth({std::move(height),
                     {{0.0f, Rgb(52, 38, 26)}, {0.5f, Rgb(80, 59, 40)}, {1.0f, Rgb(106, 80, 54)}},
                     {450, 1.4f, 3.8f, Rgb(70, 62, 54), Rgb(120, 108, 94)},
                     0.34f,
                     56});
}

Picture PaintMud() {
  const Field mud = MudSurface();
  Field surface = mud;
  for (float& value : surface.values) value = std::max(value, kPuddleLevel);
  const Field light = Relief(surface);
  const Field gloss = Gloss(surface, 60);
  const Field open = Occlusion(surface, 8, 7);
  const Ramp colours{{0.0f, Rgb(48, 36, 26)}, {0.5f, Rgb(76, 57, 40)}, {1.0f, Rgb(98, 76, 54)}};
  return MakePicture(kGroundSide, [&](int x, int y, float u, float v) {
    const float above = mud.At(x, y) - kPuddleLevel;
    const float grain = Fbm(u, v, {{32, 32}, 4, 0.65f, 66});
    const float rim = SmoothStep(5.0f, 0.0f, above);  // soaked and dark beside the water
    Colour ground = colours.At(0.5f + 0.05f * above + 0.25f * grain) * (1 - 0.3f * rim);
    ground = ground * (open.At(x, y) * (0.3f + 0.7f * light.At(x, y)));
    ground = Mix(ground, kSkyGlint, 0.5f * gloss.At(x, y) * SmoothStep(0.2f, 1.2f, above));
    const float sky = Fbm(u, v, {{4, 4}, 3, 0.5f, 67});
    const Colour water = Mix(Rgb(74, 70, 64), Rgb(132, 138, 140), Clamp01(0.45f + 0.6f * sky));
    return Mix(ground, water * (1 - 0.35f * SmoothStep(0, -3, above)),
               SmoothStep(0.1f, -0.7f, above) * 0.85f);
  });
}

Picture PaintFrozenGround() {
  Field height = CrumbledSoil(70);
  for (int y = 0; y < kGroundSide; ++y) {
    for (int x = 0; x < kGroundSide; ++x) {
      const float u = (static_cast<float>(x) + 0.5f) / kGroundSide;
      const float v = (static_cast<float>(y) + 0.5f) / kGroundSide;
      height.At(x, y) = 0.55f * height.At(x, y) + 3.5f * Cracks(u, v, {7, 7}, 71);
    }
  }
  Picture picture =
      PaintEarth({height,
                  {{0.0f, Rgb(92, 88, 86)}, {0.5f, Rgb(122, 117, 112)}, {1.0f, Rgb(146, 141, 136)}},
                  {500, 1.4f, 4.0f, Rgb(100, 100, 102), Rgb(160, 160, 162)},
                  0,
                  72});
  const Field hollow = Blurred(height, 10);
  const Field light = Relief(height);
  for (int y = 0; y < kGroundSide; ++y) {
    for (int x = 0; x < kGroundSide; ++x) {
      const float u = (static_cast<float>(x) + 0.5f) / kGroundSide;
      const float v = (static_cast<float>(y) + 0.5f) / kGroundSide;
      const float drift = Fbm(u, v, {{5, 5}, 5, 0.6f, 75});
      const float sheltered = (hollow.At(x, y) - height.At(x, y)) * 0.16f;
      const float crystals = Ridged(u, v, {{48, 48}, 3, 0.7f, 76}) - 0.55f;
      const float frost = SmoothStep(-0.15f, 0.5f, drift * 0.7f + sheltered + 0.75f * crystals);
      const Colour rime =
          Mix(Rgb(196, 212, 226), Rgb(242, 247, 250), Clamp01(light.At(x, y) - 0.4f));
      picture.At(x, y) = Mix(picture.At(x, y), rime, 0.85f * frost);
    }
  }
  return picture;
}

}  // namespace mw
