// Roads: wheel tracks in sand and in dirt, and asphalt. The roads run from the bottom to the top of
// the picture.
#include <cmath>

#include "assets/earth.h"
#include "assets/grass.h"
#include "assets/ground.h"
#include "assets/noise.h"
#include "assets/sand.h"
#include "assets/scatter.h"
#include "core/steady_math.h"

namespace mw {
namespace {

struct Tracks {
  float gauge = 0.46f;       // between the middles of the two wheels, in periods
  float halfWidth = 0.085f;  // of a rut
  float wander = 0.02f;
  unsigned seed = 1;
};

// How deep a place lies in a rut, 0 to 1.
float RutDepth(float u, float v, const Tracks& tracks) {
  const float middle = 0.5f + tracks.wander * Fbm(0.37f, v, {{1, 2}, 2, 0.4f, tracks.seed});
  const float offset = std::fabs(std::fabs(u - middle) - tracks.gauge / 2);
  const float edge = 0.012f * Fbm(u, v, {{20, 20}, 3, 0.6f, tracks.seed + 3});
  return SmoothStep(tracks.halfWidth, tracks.halfWidth * 0.45f, offset + edge);
}

// Chevrons that tyres pressed into the ground, -1 to 1.
float TreadMarks(float u, float v, const Tracks& tracks) {
  const float middle = 0.5f + tracks.wander * Fbm(0.37f, v, {{1, 2}, 2, 0.4f, tracks.seed});
  const float offset = std::fabs(std::fabs(u - middle) - tracks.gauge / 2);
  constexpr int kMarks = 40;
  const float phase = static_cast<float>(kMarks) * v + offset * 26;
  return steady::Sin(phase * 6.2831853f);
}

// Soil thrown up beside the ruts.
float Shoulder(float rut) { return 4 * rut * (1 - rut); }

}  // namespace

Picture PaintSandRoad() {
  const Tracks tracks{0.46f, 0.10f, 0.03f, 130};
  Field ruts = MakeField(kGroundSide, [&](float u, float v) { return RutDepth(u, v, tracks); });
  const Field height = MakeField(kGroundSide, [&](float u, float v) {
    const float rut = RutDepth(u, v, tracks);
    const float wear = SmoothStep(-0.4f, 0.4f, Fbm(u, v, {{5, 5}, 3, 0.5f, 131}));
    const float loose =
        RippledSand(u, v, {15, 3.0f, 0.05f, 132}) + 1.6f * Fbm(u, v, {{26, 26}, 4, 0.6f, 133});
    return loose * (1 - 0.85f * rut) - 6.5f * rut + 3 * Shoulder(rut) +
           1.3f * rut * wear * TreadMarks(u, v, tracks) + 5 * Fbm(u, v, {{3, 3}, 3, 0.5f, 134});
  });
  const Field light = Relief(height);
  const Field open = Occlusion(height, 8, 9);
  const Ramp colours{
      {0.0f, Rgb(186, 152, 104)}, {0.5f, Rgb(208, 176, 126)}, {1.0f, Rgb(224, 196, 148)}};
  return MakePicture(kGroundSide, [&](int x, int y, float u, float v) {
    const float patch = Fbm(u, v, {{4, 4}, 4, 0.5f, 135});
    const float packed = ruts.At(x, y);
    const Colour sand = SandGrain(colours.At(0.55f + 0.4f * patch - 0.45f * packed), x, y, 136);
    return sand * ((0.3f + 0.7f * light.At(x, y)) * open.At(x, y) * (1 - 0.08f * packed));
  });
}

Picture PaintDirtRoad() {
  const Tracks tracks{0.46f, 0.095f, 0.025f, 140};
  const Field soil = CrumbledSoil(141);
  Field height(kGroundSide), ruts(kGroundSide);
  for (int y = 0; y < kGroundSide; ++y) {
    for (int x = 0; x < kGroundSide; ++x) {
      const float u = (static_cast<float>(x) + 0.5f) / kGroundSide;
      const float v = (static_cast<float>(y) + 0.5f) / kGroundSide;
      const float rut = RutDepth(u, v, tracks);
      const float wear = SmoothStep(-0.3f, 0.4f, Fbm(u, v, {{5, 5}, 3, 0.5f, 142}));
      ruts.At(x, y) = rut;
      height.At(x, y) = soil.At(x, y) * (0.7f - 0.5f * rut) - 6 * rut + 2.4f * Shoulder(rut) +
                        1.1f * rut * wear * TreadMarks(u, v, tracks);
    }
  }
  Picture picture =
      PaintEarth({height,
                  {{0.0f, Rgb(104, 78, 52)}, {0.5f, Rgb(134, 104, 72)}, {1.0f, Rgb(158, 126, 90)}},
                  {700, 1.3f, 4.2f, Rgb(112, 100, 86), Rgb(176, 164, 146)},
                  0,
                  143});
  for (int y = 0; y < kGroundSide; ++y) {
    for (int x = 0; x < kGroundSide; ++x) {
      picture.At(x, y) = Mix(picture.At(x, y), picture.At(x, y) * 0.74f, ruts.At(x, y));
    }
  }
  Sward sward;
  sward.root = Rgb(70, 76, 36);
  sward.young = Rgb(132, 138, 70);
  sward.old = Rgb(166, 154, 92);
  sward.blades = 4200;
  sward.length = 15;
  sward.width = 1.8f;
  sward.disorder = 2.5f;
  sward.seed = 144;
  sward.density = [&](float u, float v) {
    const int x = static_cast<int>(u * kGroundSide), y = static_cast<int>(v * kGroundSide);
    const float fromVerge = std::fabs(u - std::round(u));
    const float verge = SmoothStep(0.16f, 0.04f, fromVerge);
    const float crown = 0.35f * SmoothStep(0.08f, 0.02f, std::fabs(u - 0.5f));
    const float clumps = SmoothStep(-0.15f, 0.35f, Fbm(u, v, {{9, 9}, 3, 0.5f, 145}));
    return (verge + crown) * clumps * (1 - ruts.At(x, y));
  };
  GrowGrass(picture, sward);
  return picture;
}

Picture PaintPavedRoad() {
  const auto crackDepth = [](float u, float v) {
    const Place place = Warp(u, v, 0.03f, {{6, 6}, 5, 0.6f, 151});
    const float border = Worley(place.u, place.v, {3, 3}, 152).Border();
    const float broken = SmoothStep(0.0f, 0.35f, Fbm(u, v, {{4, 4}, 3, 0.5f, 153}));
    return SmoothStep(0.022f, 0.006f, border) * broken;
  };
  Dice dice(150);
  StoneBed bed(MakeField(kGroundSide, [&](float u, float v) {
    return 0.6f * Fbm(u, v, {{90, 90}, 3, 0.7f, 154}) - 2.6f * crackDepth(u, v);
  }));
  ScatterStones(bed, 15000, {0.9f, 2.3f, 0.35f}, dice);
  const Field light = Relief(bed.height);
  return MakePicture(kGroundSide, [&](int x, int y, float u, float v) {
    const float patch = Fbm(u, v, {{3, 3}, 5, 0.5f, 155});
    const float polish = SmoothStep(0.14f, 0.05f, std::fabs(std::fabs(u - 0.5f) - 0.23f));
    const float tar = 0.33f + 0.035f * patch + 0.02f * polish;
    const float aggregate = tar - 0.02f + 0.3f * bed.shade.At(x, y) * bed.shade.At(x, y);
    const float grey = tar + (aggregate - tar) * bed.cover.At(x, y) * 0.8f;
    const Colour asphalt =
        Colour{grey, grey * 1.005f, grey * 1.03f} * (0.4f + 0.6f * light.At(x, y));
    return Mix(asphalt, Rgb(34, 34, 36), 0.85f * crackDepth(u, v));
  });
}

}  // namespace mw
