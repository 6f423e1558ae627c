#include "sample/placement.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "assets/picture.h"
#include "core/steady_math.h"
#include "sample/ground_noise.h"

namespace mw::sample {
namespace {

constexpr float kDegrees = 180.0f / std::numbers::pi_v<float>;
constexpr float kTreeSpacing = 6.0f, kRoadClearance = 7.0f;  // world units
constexpr float kTreeLine = 70.0f;  // world units above the water up to which woods grow
constexpr float kTreeSlope = 0.5f;
constexpr float kPineHeight = 26.0f, kBirchHeight = 9.0f;  // world units above the water

// A point for each of the road's but the ends, `beside` world units to the right of it.
std::vector<Point> LineBeside(const Road& road, float beside) {
  std::vector<Point> line;
  for (std::size_t i = 1; i + 1 < road.path.size(); ++i) {
    const Point before = road.path[i - 1].at, at = road.path[i].at, after = road.path[i + 1].at;
    const float part = beside / Distance(before, after);
    line.push_back({at.x + part * (after.z - before.z), at.z - part * (after.x - before.x)});
  }
  return line;
}

std::size_t NearestOf(const std::vector<Point>& line, Point at) {
  const auto nearest =
      std::ranges::min_element(line, {}, [&](Point point) { return Distance(point, at); });
  return static_cast<std::size_t>(nearest - line.begin());
}

}  // namespace

void Placer::Put(std::string_view name, Point at, float heading, float above) {
  PutAt(name, at, heading, land_.height.Sample(at) + above);
}

void Placer::PutAt(std::string_view name, Point at, float heading, float height) {
  objects_.push_back({name, at, height, heading});
}

void Placer::PutBetween(std::string_view name, Point from, Point to) {
  const float heading = steady::Atan2(from.z - to.z, to.x - from.x) * kDegrees;
  Put(name, {(from.x + to.x) / 2, (from.z + to.z) / 2}, heading);
}

void Placer::PutRow(std::string_view name, Point from, Point to, float length) {
  const float distance = Distance(from, to);
  const int pieces = std::max(1, static_cast<int>(distance / length));
  const float dx = length * (to.x - from.x) / distance, dz = length * (to.z - from.z) / distance;
  const auto end = [&](int k) {
    return Point{from.x + static_cast<float>(k) * dx, from.z + static_cast<float>(k) * dz};
  };
  for (int k = 0; k < pieces; ++k) PutBetween(name, end(k), end(k + 1));
}

void Placer::PutAlongRoad(std::string_view name, const Road& road, Point from, Point to,
                          float beside, float length) {
  const std::vector<Point> line = LineBeside(road, beside);
  const std::size_t last = NearestOf(line, to);
  Point end = line[NearestOf(line, from)];
  for (std::size_t i = NearestOf(line, from); i <= last; ++i) {
    while (Distance(end, line[i]) >= length) {
      const float part = length / Distance(end, line[i]);
      const Point next{end.x + part * (line[i].x - end.x), end.z + part * (line[i].z - end.z)};
      PutBetween(name, end, next);
      end = next;
    }
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
