#include "sample/landscape.h"

#include <algorithm>
#include <cmath>

#include "assets/picture.h"
#include "sample/ground_noise.h"

namespace mw::sample {
namespace {

constexpr float kRockSlope = 0.62f, kScreeSlope = 0.5f;  // rise per unit of length
constexpr float kBeachTop = 3.2f, kWetSandTop = 0.8f;    // world units above the water
constexpr float kFlatShore = 0.27f;                      // slope below which a shore is sand
constexpr float kBareHeight = 92.0f;                     // world units above the water
constexpr float kDamp = 9.0f;                            // world units above the water
constexpr float kJunctionReach = 28.0f;  // world units from a road's end to another road

Point CellCentre(int column, int row) {
  return {(static_cast<float>(column) + 0.5f) * kCellSize,
          (static_cast<float>(row) + 0.5f) * kCellSize};
}

// The built-up place whose ground a point lies on, its outline frayed by `noise`.
const Site* SiteAt(const std::vector<Site>& sites, Point at, float noise) {
  for (const Site& site : sites) {
    if (Distance(at, site.centre) < site.radius * (1.0f + 0.45f * noise)) return &site;
  }
  return nullptr;
}

Material NaturalGround(float aboveWater, float slope, float noise) {
  if (slope > kRockSlope + 0.12f * noise) return Material::Rock;
  if (aboveWater < 0) return aboveWater < -1.5f ? Material::Water : Material::WetSand;
  if (slope < kFlatShore && aboveWater < kWetSandTop) return Material::WetSand;
  if (slope < kFlatShore && aboveWater < kBeachTop + 1.2f * noise) return Material::DrySand;
  if (aboveWater < kWetSandTop) return Material::Mud;
  if (slope > kScreeSlope + 0.12f * noise) {
    return noise > 0.1f ? Material::Gravel : Material::DryDirt;
  }
  if (aboveWater > kBareHeight + 40.0f * noise) {
    return slope > 0.3f ? Material::Rock : Material::Gravel;
  }
  if (noise > 0.52f) return aboveWater < kDamp ? Material::WetDirt : Material::DryDirt;
  return aboveWater < kDamp + 12.0f * noise || noise < -0.28f ? Material::WetGrass
                                                              : Material::DryGrass;
}

// Calls visit(column, row, distance) for every sample within `reach` of a point.
template <typename Visit>
void ForSamplesNear(Point centre, float reach, Visit visit) {
  const auto first = [&](float middle) {
    return static_cast<int>(std::ceil((middle - reach) / kCellSize));
  };
  const auto last = [&](float middle) {
    return static_cast<int>(std::floor((middle + reach) / kCellSize));
  };
  for (int row = first(centre.z); row <= last(centre.z); ++row) {
    for (int column = first(centre.x); column <= last(centre.x); ++column) {
      const float distance = Distance(centre, PositionOf(column, row));
      if (distance <= reach) visit(column, row, distance);
    }
  }
}

float MeanHeight(const Grid& height, const Site& site) {
  float sum = 0;
  int count = 0;
  ForSamplesNear(site.centre, site.radius, [&](int column, int row, float) {
    sum += height.At(column, row);
    ++count;
  });
  return sum / static_cast<float>(count);
}

// Moves the end of a new road onto the nearest road within reach.
void JoinRoad(Point& end, const std::vector<Road>& roads) {
  const Point wanted = end;
  float nearest = kJunctionReach;
  for (const Road& road : roads) {
    for (const PathPoint& point : road.path) {
      if (Distance(wanted, point.at) >= nearest) continue;
      nearest = Distance(wanted, point.at);
      end = point.at;
    }
  }
}

}  // namespace

void AddSite(Landscape& land, const Site& site, std::optional<float> height) {
  const float level = height ? *height : MeanHeight(land.height, site);
  ForSamplesNear(site.centre, site.radius + site.edge, [&](int column, int row, float distance) {
    float& h = land.height.At(column, row);
    h = std::lerp(level, h, SmoothStep(site.radius, site.radius + site.edge, distance));
  });
  land.sites.push_back(site);
}

void AddRoad(Landscape& land, std::vector<Waypoint> waypoints, Material surface, float width) {
  JoinRoad(waypoints.front().at, land.roads);
  JoinRoad(waypoints.back().at, land.roads);
  land.roads.push_back(LayRoad(land.height, land.waterLevel, waypoints, surface, width));
  ShapeRoadBed(land.height, land.roads.back());
}

void AssignMaterials(Landscape& land) {
  const int side = land.height.Side();
  const float worldSize = land.height.WorldSize();
  const RoadIndex roads(land.roads, worldSize, kCellSize);
  land.materials.assign(static_cast<std::size_t>(side) * static_cast<std::size_t>(side),
                        Material::Default);
  for (int row = 0; row < side; ++row) {
    for (int column = 0; column < side; ++column) {
      const Point at = CellCentre(column, row);
      const float noise = Noise(at, worldSize, {16, 3, 90});
      Material& material =
          land.materials[static_cast<std::size_t>(row) * static_cast<std::size_t>(side) +
                         static_cast<std::size_t>(column)];
      const RoadHit hit = roads.Nearest(at);
      const float aboveWater = land.height.Sample(at) - land.waterLevel;
      if (hit.road && hit.distance < hit.road->width / 2 + 0.5f) {
        material = hit.road->surface;
      } else if (const Site* site = SiteAt(land.sites, at, noise); site && aboveWater > 0.5f) {
        material = site->ground;
      } else {
        material = NaturalGround(aboveWater, land.height.Slope(column, row), noise);
      }
    }
  }
}

}  // namespace mw::sample
