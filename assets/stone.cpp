// Gravel and bare rock.
#include <numbers>

#include "assets/ground.h"
#include "assets/noise.h"
#include "assets/scatter.h"
#include "core/steady_math.h"

namespace mw {
namespace {

// A block of broken rock for each cell: a plane tilted its own way.
float Facets(const CellPoint& cell, float tilt) {
  const float angle = static_cast<float>(cell.id & 0xFFFF) / 65536 * 2 * std::numbers::pi_v<float>;
  const float level = static_cast<float>(cell.id >> 16) / 65536;
  return level + tilt * (cell.dx * steady::Cos(angle) + cell.dy * steady::Sin(angle));
}

Field RockRelief() {
  return MakeField(kGroundSide, [](float u, float v) {
    const Place place = Warp(u, v, 0.06f, {{4, 4}, 5, 0.55f, 121});
    const CellPoint slabs = Worley(place.u, place.v, {6, 9}, 123);
    const CellPoint blocks = Worley(place.u, place.v, {15, 20}, 122);
    const CellPoint chips = Worley(place.u, place.v, {38, 44}, 124);
    const float crags = Ridged(place.u, place.v, {{3, 5}, 5, 0.52f, 126});
    const float rough = Fbm(u, v, {{24, 24}, 5, 0.6f, 125});
    return 34 * crags + 11 * Facets(slabs, 0.8f) + 4.5f * Facets(blocks, 0.9f) +
           1.6f * Facets(chips, 0.9f) + 3.0f * rough;
  });
}

}  // namespace

Picture PaintGravel() {
  Dice dice(110);
  StoneBed bed(MakeField(kGroundSide, [](float u, float v) {
    return 2 * Fbm(u, v, {{6, 6}, 3, 0.5f, 111}) + Fbm(u, v, {{90, 90}, 2, 0.6f, 112});
  }));
  ScatterStones(bed, 5200, {2.2f, 6.0f, 0.7f}, dice);
  ScatterStones(bed, 1500, {4.5f, 11.0f, 0.62f}, dice);
  const Field light = Relief(bed.height);
  const Field open = Occlusion(bed.height, 4, 4);
  const Ramp kinds{{0.0f, Rgb(108, 102, 96)},  {0.2f, Rgb(134, 126, 116)},
                   {0.4f, Rgb(150, 146, 140)}, {0.6f, Rgb(168, 156, 138)},
                   {0.8f, Rgb(126, 128, 132)}, {1.0f, Rgb(188, 184, 176)}};
  return MakePicture(kGroundSide, [&](int x, int y, float u, float v) {
    const float grain = Fbm(u, v, {{80, 80}, 3, 0.7f, 113});
    const float patch = Fbm(u, v, {{4, 4}, 3, 0.5f, 114});
    const Colour stone = kinds.At(bed.shade.At(x, y)) * (1 + 0.14f * grain + 0.07f * patch);
    const Colour soil = Mix(Rgb(72, 64, 54), Rgb(104, 94, 80), 0.5f + 0.5f * grain);
    const float facing = 0.3f + 0.7f * light.At(x, y);
    return Mix(soil, stone, bed.cover.At(x, y)) * (facing * open.At(x, y));
  });
}

Picture PaintRockSurface() {
  const Field height = RockRelief();
  const Field light = Relief(height);
  const Field open = Occlusion(height, 3, 3);
  const Field wide = Occlusion(height, 14, 16);
  const Ramp greys{{0.0f, Rgb(92, 88, 84)},
                   {0.35f, Rgb(122, 117, 110)},
                   {0.7f, Rgb(146, 139, 129)},
                   {1.0f, Rgb(168, 160, 148)}};
  return MakePicture(kGroundSide, [&](int x, int y, float u, float v) {
    const Place place = Warp(u, v, 0.05f, {{4, 4}, 3, 0.5f, 126});
    const float strata = Fbm(place.u, place.v, {{3, 14}, 4, 0.55f, 127});
    const float grain = Fbm(u, v, {{80, 80}, 3, 0.7f, 128});
    Colour rock = greys.At(0.5f + 0.4f * strata + 0.14f * grain);
    const float lichen = SmoothStep(0.30f, 0.55f, Fbm(u, v, {{7, 7}, 5, 0.6f, 129})) *
                         SmoothStep(-0.2f, 0.3f, grain);
    rock = Mix(rock, Rgb(142, 146, 106), 0.45f * lichen);
    return rock * ((0.32f + 0.68f * light.At(x, y)) * open.At(x, y) * wide.At(x, y) * 1.08f);
  });
}

}  // namespace mw
