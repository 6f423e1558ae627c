#include <algorithm>
#include <cmath>
#include <numbers>

#include "assets/picture.h"
#include "core/steady_math.h"
#include "sample/erosion.h"
#include "sample/ground_noise.h"
#include "sample/levels.h"

namespace mw::sample {
namespace {

constexpr int kSide = 512;
constexpr float kWorldSize = kSide * kCellSize;
constexpr float kWaterLevel = 40.0f;
constexpr float kDeckHeight = kWaterLevel + 7.0f;  // of the bridges' roads
constexpr float kBridgeZ = 1010;                   // where the road crosses the river

float Turn(float z) { return 2 * std::numbers::pi_v<float> * z / kWorldSize; }

// The x of the river's middle: it winds from the south edge to the north edge.
float RiverMiddle(float z) {
  return 800 + 120 * steady::Sin(Turn(z)) + 46 * steady::Sin(3 * Turn(z) + 1.1f) +
         16 * steady::Sin(7 * Turn(z) + 0.4f);
}

float RiverHalfWidth(float z) {
  return 21 + 5 * steady::Sin(4 * Turn(z)) + 3 * steady::Sin(9 * Turn(z));
}

// Signed distance in x, the short way around the level's edge.
float WrappedOffset(float from, float to) { return std::remainder(to - from, kWorldSize); }

float FromWater(Point at) {
  return std::abs(WrappedOffset(RiverMiddle(at.z), at.x)) - RiverHalfWidth(at.z);
}

// The valley without its river.
float RawHeight(Point at) {
  const float bend = 60 * Noise(at, kWorldSize, {4, 3, 61});
  const float river = WrappedOffset(RiverMiddle(at.z), at.x);
  const float fromWater = FromWater(at);
  const float meadow = 4 + 0.018f * std::clamp(fromWater, 0.0f, 300.0f) +
                       3 * SmoothStep(20, 160, fromWater) * Noise(at, kWorldSize, {16, 3, 71});
  // The valley is wider in the west.
  const float valley = SmoothStep(80, river < 0 ? 520.0f : 400.0f, fromWater + bend);
  const float hills = 52 * valley * (0.25f + 0.75f * RidgedNoise(at, kWorldSize, {8, 5, 81}));
  // The stone ridge: one long crest east of the river, with two passes.
  const float crest =
      WrappedOffset(RiverMiddle(at.z) + 590 + 0.7f * bend + 60 * steady::Sin(2 * Turn(at.z)), at.x);
  const float passes = 0.74f + 0.26f * steady::Sin(2 * Turn(at.z) + 2.2f);
  const float ridge = 128 * passes * steady::Exp(-std::abs(crest) / 170) *
                      (0.7f + 0.3f * RidgedNoise(at, kWorldSize, {16, 4, 91}));
  return kWaterLevel + meadow + hills + ridge * SmoothStep(60, 260, fromWater);
}

// The river's bed and banks, cut after the rain so that it cannot fill them.
void CutRiver(Grid& height) {
  for (int row = 0; row < height.Side(); ++row) {
    for (int column = 0; column < height.Side(); ++column) {
      const float fromWater = FromWater(PositionOf(column, row));
      const float bed = fromWater < 0 ? kWaterLevel - 7 * (1 - steady::Exp(fromWater / 8))
                                      : kWaterLevel + 0.14f * fromWater;
      float& h = height.At(column, row);
      h = std::lerp(bed, h, SmoothStep(2, 34, fromWater));
    }
  }
}

Grid MakeHeights() {
  Grid height = MakeGrid(kSide, RawHeight);
  ErodeByRain(height, 170000, 2);
  SettleSlopes(height, 0.74f, 60);
  Smooth(height, 1);
  CutRiver(height);
  return height;
}

}  // namespace

BridgePlace RidgeBridge() {
  const float reach = RiverHalfWidth(kBridgeZ) + 10, middle = RiverMiddle(kBridgeZ);
  return {{middle - reach, kBridgeZ}, {middle + reach, kBridgeZ}, kDeckHeight};
}

Landscape MakeRidgeLandscape() {
  Landscape land{MakeHeights(), kWaterLevel, {0.5f, 0.6f, -0.55f}, {}, {}, {}};
  const BridgePlace bridge = RidgeBridge();
  const Waypoint westEnd{bridge.west, false, bridge.height},
      eastEnd{bridge.east, true, bridge.height};
  const Point village{bridge.east.x + 90, bridge.east.z + 20};
  AddSite(land, {village, 58, 60, Material::DryDirt}, kWaterLevel + 8);
  AddSite(land, {{560, 560}, 70, 70, Material::DryDirt});   // airfield hangars
  AddSite(land, {{1384, 1280}, 30, 40, Material::Gravel});  // fort on the ridge
  AddSite(land, {{1180, 480}, 46, 50, Material::Gravel});   // quarry
  AddSite(land, {{470, 1560}, 44, 50, Material::DryDirt});  // western camp
  AddRoad(
      land,
      {{{0, 1000}}, {{420, 1040}}, westEnd, eastEnd, {{village.x, village.z - 20}}, {{2048, 1000}}},
      Material::PavedRoad, 8);
  AddRoad(land, {{{village.x + 20, village.z - 20}}, {{1180, 470}}, {{1060, 0}}},
          Material::DirtRoad, 6);
  AddRoad(land, {{{1090, 1524}}, {{1060, 2048}}}, Material::DirtRoad, 6);
  AddRoad(land, {{{1440, 1358}}, {{1384, 1286}}}, Material::DirtRoad, 5);
  AddRoad(land, {{{420, 1040}}, {{560, 570}}}, Material::DirtRoad, 6);
  AddRoad(land, {{{420, 1040}}, {{470, 1556}}}, Material::DirtRoad, 6);
  AssignMaterials(land);
  return land;
}

}  // namespace mw::sample
