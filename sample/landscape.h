// A sample level's ground: its heights, roads and built-up places, and the materials that follow
// from them.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "sample/grid.h"
#include "sample/roads.h"

namespace mw::sample {

// A place made level for buildings.
struct Site {
  Point centre;
  float radius = 30;  // of the level ground, world units
  float edge = 25;    // over which it meets the ground around
  Material ground = Material::DryDirt;
};

struct Landscape {
  Grid height;  // world units
  float waterLevel = 0;
  std::array<float, 3> sunDirection{};  // towards the sun, in level coordinates
  std::vector<Site> sites;
  std::vector<Road> roads;
  std::vector<Material> materials;  // one per cell: row x side + column
};

// Levels the site's ground to its mean height (or to `height`, where given) and adds it.
void AddSite(Landscape& land, const Site& site, std::optional<float> height = std::nullopt);
// Lays a road, gives it its bed and adds it. An end near an existing road is moved onto that road.
void AddRoad(Landscape& land, std::vector<Waypoint> waypoints, Material surface, float width);
// Decides every cell's material from height, slope, roads and sites.
void AssignMaterials(Landscape& land);

}  // namespace mw::sample
