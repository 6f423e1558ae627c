// Roads of the sample levels: where they run, the bed they are given in the ground, and how far a
// point is from them.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "sample/grid.h"

namespace mw::sample {

// Ground materials by their numbers in a material map.
enum class Material : std::uint8_t {
  Default = 0,
  Water = 1,
  DryGrass = 2,
  WetGrass = 3,
  DryDirt = 4,
  WetDirt = 5,
  Mud = 6,
  Gravel = 8,
  DrySand = 10,
  WetSand = 11,
  Rock = 12,
  SandRoad = 13,
  DirtRoad = 14,
  PavedRoad = 15
};

struct PathPoint {
  Point at;
  float height = 0;     // of the road's surface, world units
  bool bridge = false;  // the piece that ends here is carried by a bridge
};

struct Road {
  Material surface = Material::DirtRoad;
  float width = 6;  // world units
  std::vector<PathPoint> path;
};

// A point that a road has to pass.
struct Waypoint {
  Point at;
  bool bridge = false;            // reached from the one before in a straight line, on a bridge
  std::optional<float> height{};  // of the road there; the ground's when not given
};

// Lays a road through the waypoints: the cheapest route over land, smoothed, with a steady profile
// that meets the ground at its ends.
Road LayRoad(const Grid& height, float waterLevel, const std::vector<Waypoint>& waypoints,
             Material surface, float width);

// Cuts and fills the ground so that it carries the road, with sloping shoulders.
void ShapeRoadBed(Grid& height, const Road& road);

// The nearest point of a road's centre line.
struct RoadHit {
  float distance = 0;  // from the centre line
  float along = 0;     // from the start of the road, roughly
  float height = 0;
  const Road* road = nullptr;
};

// Finds the roads that pass within a fixed reach of a point.
class RoadIndex {
 public:
  // The roads must outlive the index. Pieces on bridges are left out.
  RoadIndex(const std::vector<Road>& roads, float worldSize, float reach);
  // Null road when none is near; where several are, the one whose edge is nearest.
  RoadHit Nearest(Point at) const;

 private:
  struct Piece {
    const Road* road;
    const PathPoint *from, *to;
    float along;
  };
  static constexpr float kBucketSize = 16.0f;

  int side_;
  float reach_;
  std::vector<std::vector<Piece>> buckets_;
};

}  // namespace mw::sample
