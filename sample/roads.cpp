#include "sample/roads.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <queue>
#include <utility>

#include "assets/picture.h"

namespace mw::sample {
namespace {

constexpr int kRouteStep = 2;          // samples between two places where a route may turn
constexpr float kClimbCost = 220.0f;   // of a slope squared, against one unit of length
constexpr float kWadeCost = 40.0f;     // factor on the length below the water
constexpr float kShore = 2.0f;         // world units above the water that still count as wet
constexpr float kPathSpacing = 6.0f;   // world units between the points of a finished path
constexpr int kPathSmoothing = 40;     // rounds
constexpr int kProfileSmoothing = 60;  // rounds
constexpr float kBedMargin = 1.5f;     // level ground beside the road, world units
constexpr float kShoulder = 16.0f;     // world units over which the bed meets the ground

// Directions in which a route may go: to the neighbours and in knight's moves, for smoother bends.
constexpr int kMoves[16][2] = {{1, 0},  {-1, 0},  {0, 1},   {0, -1}, {1, 1},  {1, -1},
                               {-1, 1}, {-1, -1}, {1, 2},   {2, 1},  {-1, 2}, {-2, 1},
                               {1, -2}, {2, -1},  {-1, -2}, {-2, -1}};

struct RouteGrid {
  const Grid& height;
  float waterLevel;
  int side;  // places per side

  int Clamp(float position) const {
    return std::clamp(static_cast<int>(std::lround(position / (kCellSize * kRouteStep))), 0,
                      side - 1);
  }
  int PlaceOf(Point at) const { return Clamp(at.z) * side + Clamp(at.x); }
  Point PointOf(int place) const {
    const float spacing = kCellSize * kRouteStep;
    const int column = place % side, row = place / side;
    return {static_cast<float>(column) * spacing, static_cast<float>(row) * spacing};
  }
  float HeightOf(int place) const {
    return height.At(place % side * kRouteStep, place / side * kRouteStep);
  }
  float Cost(int from, int to) const {
    const float length = Distance(PointOf(from), PointOf(to));
    const float slope = (HeightOf(to) - HeightOf(from)) / length;
    const bool wet = HeightOf(to) < waterLevel + kShore;
    return length * (1 + kClimbCost * slope * slope) * (wet ? kWadeCost : 1.0f);
  }
};

// For every place the one before it on the cheapest way from `start` (Dijkstra's algorithm), as far
// as `goal`.
std::vector<int> CheapestWays(const RouteGrid& grid, int start, int goal) {
  const std::size_t places =
      static_cast<std::size_t>(grid.side) * static_cast<std::size_t>(grid.side);
  std::vector<int> before(places, -1);
  std::vector<float> costs(places, std::numeric_limits<float>::max());
  using Visit = std::pair<float, int>;
  std::priority_queue<Visit, std::vector<Visit>, std::greater<>> visits;
  costs[static_cast<std::size_t>(start)] = 0;
  visits.push({0, start});
  while (!visits.empty()) {
    const auto [cost, place] = visits.top();
    visits.pop();
    if (place == goal) break;
    if (cost > costs[static_cast<std::size_t>(place)]) continue;
    for (const auto& [x, z] : kMoves) {
      const int column = place % grid.side + x, row = place / grid.side + z;
      if (column < 0 || row < 0 || column >= grid.side || row >= grid.side) continue;
      const int next = row * grid.side + column;
      const float nextCost = cost + grid.Cost(place, next);
      if (nextCost >= costs[static_cast<std::size_t>(next)]) continue;
      costs[static_cast<std::size_t>(next)] = nextCost;
      before[static_cast<std::size_t>(next)] = place;
      visits.push({nextCost, next});
    }
  }
  return before;
}

// The way between two points that costs least, climbing and wading being dear. Both ends included.
std::vector<Point> FindRoute(const Grid& height, float waterLevel, Point from, Point to) {
  const RouteGrid grid{height, waterLevel, height.Side() / kRouteStep};
  const int start = grid.PlaceOf(from), goal = grid.PlaceOf(to);
  const std::vector<int> before = CheapestWays(grid, start, goal);
  std::vector<Point> route{to};
  for (int place = before[static_cast<std::size_t>(goal)]; place >= 0 && place != start;
       place = before[static_cast<std::size_t>(place)]) {
    route.push_back(grid.PointOf(place));
  }
  route.push_back(from);
  std::reverse(route.begin(), route.end());
  return route;
}

// A polyline with points at even distances, ends kept.
std::vector<Point> Resample(const std::vector<Point>& line, float spacing) {
  std::vector<Point> result{line.front()};
  float left = spacing;
  for (std::size_t k = 1; k < line.size(); ++k) {
    Point from = line[k - 1];
    for (float length = Distance(from, line[k]); length >= left; length = Distance(from, line[k])) {
      from = {std::lerp(from.x, line[k].x, left / length),
              std::lerp(from.z, line[k].z, left / length)};
      result.push_back(from);
      left = spacing;
    }
    left -= Distance(from, line[k]);
  }
  if (result.size() > 1 && Distance(result.back(), line.back()) < spacing / 2) result.pop_back();
  result.push_back(line.back());
  return result;
}

void RoundCorners(std::vector<Point>& line) {
  for (int round = 0; round < kPathSmoothing; ++round) {
    const std::vector<Point> before = line;
    for (std::size_t k = 1; k + 1 < line.size(); ++k) {
      line[k].x = (before[k - 1].x + 2 * before[k].x + before[k + 1].x) / 4;
      line[k].z = (before[k - 1].z + 2 * before[k].z + before[k + 1].z) / 4;
    }
  }
}

// Evens out the heights of a piece of road between two points whose heights stay.
void SteadyProfile(std::vector<PathPoint>& path, std::size_t first, std::size_t last) {
  for (int round = 0; round < kProfileSmoothing; ++round) {
    float before = path[first].height;
    for (std::size_t k = first + 1; k < last; ++k) {
      const float own = path[k].height;
      path[k].height = (before + 2 * own + path[k + 1].height) / 4;
      before = own;
    }
  }
}

// Adds a stretch that is on land or on a bridge throughout; the heights of its ends are the
// ground's where they are not given.
void AppendStretch(Road& road, const Grid& height, const std::vector<Point>& line, bool bridge,
                   std::optional<float> startHeight, std::optional<float> endHeight) {
  std::vector<Point> points = Resample(line, kPathSpacing);
  if (!bridge) RoundCorners(points);
  const std::size_t first = road.path.empty() ? 0 : road.path.size() - 1;
  for (std::size_t k = road.path.empty() ? 0 : 1; k < points.size(); ++k) {
    road.path.push_back({points[k], height.Sample(points[k]), bridge});
  }
  if (startHeight) road.path[first].height = *startHeight;
  if (endHeight) road.path.back().height = *endHeight;
  SteadyProfile(road.path, first, road.path.size() - 1);
}

}  // namespace

Road LayRoad(const Grid& height, float waterLevel, const std::vector<Waypoint>& waypoints,
             Material surface, float width) {
  Road road{surface, width, {}};
  std::size_t next = 1;
  while (next < waypoints.size()) {
    const std::size_t first = next - 1;
    const bool bridge = waypoints[next].bridge;
    std::vector<Point> line{waypoints[first].at};
    for (; next < waypoints.size() && waypoints[next].bridge == bridge; ++next) {
      const std::vector<Point> leg =
          bridge ? std::vector<Point>{waypoints[next].at}
                 : FindRoute(height, waterLevel, waypoints[next - 1].at, waypoints[next].at);
      line.insert(line.end(), leg.begin(), leg.end());
    }
    AppendStretch(road, height, line, bridge, waypoints[first].height, waypoints[next - 1].height);
  }
  return road;
}

void ShapeRoadBed(Grid& height, const Road& road) {
  const std::vector<Road> roads{road};
  const RoadIndex index(roads, height.WorldSize(), kShoulder);
  const float level = road.width / 2 + kBedMargin;
  for (int row = 0; row < height.Side(); ++row) {
    for (int column = 0; column < height.Side(); ++column) {
      const RoadHit hit = index.Nearest(PositionOf(column, row));
      if (!hit.road) continue;
      const float ground = SmoothStep(level, road.width / 2 + kShoulder, hit.distance);
      float& h = height.At(column, row);
      h = std::lerp(hit.height, h, ground);
    }
  }
}

}  // namespace mw::sample
