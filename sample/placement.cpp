#include "sample/placement.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "assets/picture.h"
#include "sample/ground_noise.h"

namespace mw::sample {
namespace {

constexpr float kDegrees = 180.0f / std::numbers::pi_v<float>;
constexpr float kTreeSpacing = 6.0f, kRoadClearance = 7.0f;  // world units
constexpr float kTreeLine = 70.0f;  // world units above the water up to which woods grow
constexpr float kTreeSlope = 0.5f;
constexpr float kPineHeight = 26.0f, kBirchHeight = 9.0f;  // world units above the water

}  // namespace

void Placer::Put(std::string_view name, Point at, float heading, float above) {
  PutAt(name, at, heading, land_.height.Sample(at) + above);
}

void Placer::PutAt(std::string_view name, Point at, float heading, float height) {
  objects_.push_back({name, at, height, heading});
}

void Placer::PutRow(std::string_view name, Point from, Point to, float length) {
  const float distance = Distance(from, to);
  const int pieces = std::max(1, static_cast<int>(distance / length));
  const float dx = (to.x - from.x) / distance, dz = (to.z - from.z) / distance;
  const float heading = std::atan2(-dz, dx) * kDegrees;
  for (int k = 0; k < pieces; ++k) {
    const float along = (static_cast<float>(k) + 0.5f) * length;
    Put(name, {from.x + along * dx, from.z + along * dz}, heading);
  }
}

bool Placer::IsFree(Point at, float distance) const {
  return std::none_of(objects_.begin(), objects_.end(), [&](const PlacedObject& object) {
    return Distance(object.at, at) < distance;
  });
}

bool Placer::CarriesTrees(Point at) const {
  const int side = land_.height.Side();
  const int column = static_cast<int>(at.x / kCellSize), row = static_cast<int>(at.z / kCellSize);
  const Material material = land_.materials[static_cast<std::size_t>(row * side + column)];
  const bool grass = material == Material::DryGrass || material == Material::WetGrass;
  return grass && land_.height.Slope(column, row) < kTreeSlope &&
         land_.height.At(column, row) < land_.waterLevel + kTreeLine;
}

std::string_view Placer::TreeFor(Point at, float chance) const {
  const float above = land_.height.Sample(at) - land_.waterLevel + 16 * (chance - 0.5f);
  return above > kPineHeight ? "pine" : above < kBirchHeight ? "birch" : "oak";
}

void Placer::PlantWoods(int trees, std::uint32_t seed) {
  std::mt19937 random(seed);
  const auto chance = [&] { return static_cast<float>(random() >> 8) / 16777216.0f; };
  const float size = land_.height.WorldSize();
  const RoadIndex roads(land_.roads, size, kRoadClearance);
  const auto inSite = [&](Point at) {
    return std::any_of(land_.sites.begin(), land_.sites.end(), [&](const Site& site) {
      return Distance(at, site.centre) < site.radius * 0.95f;
    });
  };
  // Every try uses the same number of random values, so that one place more or less moves nothing
  // else.
  for (int tries = 0; trees > 0 && tries < 60000; ++tries) {
    const float x = chance() * size, z = chance() * size;
    const float luck = chance(), kind = chance(), turn = chance(), growth = chance();
    const Point at{x, z};
    const float density = SmoothStep(-0.1f, 0.45f, Noise(at, size, {8, 3, seed}));
    if (luck > density || !CarriesTrees(at) || inSite(at) || roads.Nearest(at).road) continue;
    if (!IsFree(at, kTreeSpacing)) continue;
    Put(TreeFor(at, kind), at, std::floor(360 * turn));
    objects_.back().scale = 0.8f + 0.05f * std::floor(9 * growth);
    --trees;
  }
}

}  // namespace mw::sample
