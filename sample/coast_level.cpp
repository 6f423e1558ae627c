#include <numbers>

#include "assets/picture.h"
#include "core/steady_math.h"
#include "sample/erosion.h"
#include "sample/ground_noise.h"
#include "sample/levels.h"

namespace mw::sample {
namespace {

constexpr int kSide = 256;
constexpr float kWorldSize = kSide * kCellSize;
constexpr float kWaterLevel = 30.0f;
constexpr float kSeaDepth = 24.0f;

float Bump(float distance, float width) {
  return steady::Exp(-distance * distance / (width * width));
}

// The z of the southern shore: a harbour bay in the west, the point in the east.
float SouthShore(float x) {
  const float turn = 2 * std::numbers::pi_v<float> * x / kWorldSize;
  return 352 + 26 * steady::Sin(turn + 0.6f) + 14 * steady::Sin(3 * turn) +
         118 * Bump(x - 420, 105) - 120 * Bump(x - 730, 120);
}

float NorthShore(float x) {
  const float turn = 2 * std::numbers::pi_v<float> * x / kWorldSize;
  return 968 + 18 * steady::Sin(2 * turn + 1.0f) + 10 * steady::Sin(5 * turn);
}

float RawHeight(Point at) {
  const float bend = 34 * Noise(at, kWorldSize, {4, 3, 11});
  const float fromSouth = at.z - SouthShore(at.x + bend) + bend;
  const float fromNorth = NorthShore(at.x) - at.z + 0.6f * bend;
  const float inland = std::min(fromSouth, fromNorth);
  if (inland < 0) return kWaterLevel - kSeaDepth * (1 - steady::Exp(inland / 150));

  const float beach = 3.4f * SmoothStep(-4, 60, inland) + 0.012f * std::min(inland, 200.0f);
  const float plain =
      7.0f * SmoothStep(50, 170, inland) * (1 + 0.5f * Noise(at, kWorldSize, {8, 3, 21}));
  const float hills = SmoothStep(95, 300, fromSouth) * SmoothStep(12, 120, fromNorth);
  const float ridges = 64 * hills * (0.22f + 0.78f * RidgedNoise(at, kWorldSize, {4, 5, 31}));
  const float point = 25 * Bump(Distance(at, {735, 318}), 74) * SmoothStep(4, 46, inland);
  return kWaterLevel + beach + plain + ridges + point;
}

Grid MakeHeights() {
  Grid height = MakeGrid(kSide, RawHeight);
  ErodeByRain(height, 42000, 1);
  SettleSlopes(height, 0.72f, 60);
  Smooth(height, 1);
  return height;
}

}  // namespace

Landscape MakeCoastLandscape() {
  Landscape land{MakeHeights(), kWaterLevel, {-0.52f, 0.56f, -0.6f}, {}, {}, {}};
  AddSite(land, {{430, 548}, 54, 70, Material::DryDirt}, kWaterLevel + 4.2f);  // fishing village
  AddSite(land, {{424, 478}, 20, 14, Material::Gravel}, kWaterLevel + 2.6f);   // quay
  AddSite(land, {{735, 322}, 26, 22, Material::DryDirt});  // battery on the point
  AddSite(land, {{180, 520}, 34, 28, Material::DryDirt});  // western camp
  AddSite(land, {{560, 770}, 18, 18, Material::Gravel});   // watchtower hill
  AddRoad(land,
          {{{0, 548}},
           {{200, 540}},
           {{385, 556}},
           {{475, 552}},
           {{660, 470}},
           {{860, 520}},
           {{1024, 548}}},
          Material::PavedRoad, 8);
  AddRoad(land, {{{424, 556}}, {{424, 474}}}, Material::DirtRoad, 6);
  AddRoad(land, {{{662, 470}}, {{735, 330}}}, Material::DirtRoad, 5.5f);
  AddRoad(land, {{{462, 552}}, {{560, 764}}}, Material::DirtRoad, 5);
  AddRoad(land, {{{210, 540}}, {{236, 420}}}, Material::SandRoad, 5);
  AssignMaterials(land);
  return land;
}

}  // namespace mw::sample
