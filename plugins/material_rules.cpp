#include "plugins/material_rules.h"

#include <cmath>

#include "assets/noise.h"
#include "core/parallel.h"

namespace mw::plugin {
namespace {

// Slopes, rise over run.
constexpr float kCliff = 0.68f, kScree = 0.50f, kSteepShore = 0.36f, kSnowHolds = 0.50f;
constexpr float kLevelGround = 0.10f;
// World units above the water.
constexpr float kShallows = -2.5f, kWetSandTop = 1.3f, kBeachTop = 5.0f;
// Distances from the water, in cells.
constexpr float kBeachWidth = 8, kWetSandWidth = 2.2f, kBankWidth = 4, kDampReach = 22;
// Below this share of water around it, a shore is that of a river or a pond.
constexpr float kSheltered = 0.16f;
// The bare belt below the frost line, as a share of the height range.
constexpr float kAlpineBelt = 0.13f;
// Lower hills are not drier on top.
constexpr float kLeastRange = 40;  // world units
// Moisture, about -1 ... 1.
constexpr float kMire = 0.78f, kSoaked = 0.58f, kLush = 0.04f, kParched = -0.6f;

// Noise repeats after the largest level's side.
constexpr float kNoisePeriod = MAPWRIGHT_MAX_SIZE;

struct Place {
  float above, slope, hollow, toWater, openWater;  // as in Relief
  float patches;                                   // wide noise, about -1 ... 1
  float grain;                                     // narrow noise, about -1 ... 1
};

Material UnderWater(const Place& place) {
  if (place.slope > kCliff) return Material::RockSurface;
  if (place.above < kShallows + place.grain) return Material::Water;
  return place.openWater < 3 * kSheltered && place.patches > 0.25f ? Material::Mud
                                                                   : Material::WetSand;
}

bool IsShore(const Place& place) {
  return place.toWater < kBeachWidth + 4 * place.patches + 2 * place.grain &&
         place.above < kBeachTop + 2 * place.patches;
}

Material Shore(const Place& place) {
  const bool atTheWater =
      place.above < kWetSandTop + 0.4f * place.grain || place.toWater < kWetSandWidth + place.grain;
  if (place.slope > kSteepShore + 0.1f * place.grain) {
    return place.toWater < kBankWidth ? Material::Gravel : Material::DryDirt;
  }
  if (place.openWater > kSheltered) return atTheWater ? Material::WetSand : Material::DrySand;
  if (atTheWater) return place.patches > 0 ? Material::Mud : Material::WetSand;
  return place.patches > 0.2f ? Material::WetDirt : Material::WetGrass;
}

float Moisture(const Place& place, const Relief& relief) {
  const float nearWater = std::exp(-place.toWater / kDampReach);
  const float height = relief.range > 0 ? place.above / std::max(relief.range, kLeastRange) : 0;
  return 7 * place.hollow + 0.42f * place.patches + 0.12f * place.grain + 0.35f * nearWater -
         0.7f * place.slope - 0.3f * std::min(height, 1.0f) + 0.1f;
}

Material Vegetated(const Place& place, const Relief& relief) {
  const float moisture = Moisture(place, relief);
  const bool level = place.slope < kLevelGround;
  if (moisture > kMire && level) return Material::Mud;
  if (moisture > kSoaked && level) return Material::WetDirt;
  if (moisture > kLush) return Material::WetGrass;
  return moisture > kParched ? Material::DryGrass : Material::DryDirt;
}

Material Choose(const Place& place, const Relief& relief) {
  if (place.above < 0) return UnderWater(place);
  if (place.slope > kCliff + 0.10f * place.grain + 0.06f * place.patches) {
    return Material::RockSurface;
  }
  if (IsShore(place)) return Shore(place);
  const float belt = kAlpineBelt * relief.range;
  const float overFrost = place.above - relief.frostLine + 0.4f * belt * place.patches;
  if (overFrost > 0) {
    return place.slope > kSnowHolds ? Material::RockSurface : Material::FrozenGround;
  }
  if (place.slope > kScree + 0.08f * place.grain) {
    return place.hollow > 0 || overFrost > -belt ? Material::Gravel : Material::DryDirt;
  }
  if (overFrost > -belt) return place.patches > 0.1f ? Material::Gravel : Material::DryGrass;
  return Vegetated(place, relief);
}

Place PlaceAt(const Relief& relief, int row, int column) {
  const float u = (static_cast<float>(column) + 0.5f) / kNoisePeriod;
  const float v = (static_cast<float>(row) + 0.5f) / kNoisePeriod;
  const std::size_t k = relief.slope.Index(row, column);
  return {relief.aboveWater.values[k],
          relief.slope.values[k],
          relief.hollow.values[k],
          relief.toWater.values[k],
          relief.openWater.values[k],
          Fbm(u, v, {{16, 16}, 4, 0.45f, 301}),
          Fbm(u, v, {{96, 96}, 2, 0.5f, 302})};
}

}  // namespace

Plane<Material> ChooseMaterials(const Relief& relief) {
  Plane<Material> materials(relief.slope.side);
  SpreadOverCores(static_cast<std::size_t>(materials.side), [&](std::size_t line) {
    const int row = static_cast<int>(line);
    for (int column = 0; column < materials.side; ++column) {
      materials.At(row, column) = Choose(PlaceAt(relief, row, column), relief);
    }
  });
  return materials;
}

}  // namespace mw::plugin
