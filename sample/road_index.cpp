#include <algorithm>
#include <cmath>

#include "sample/roads.h"

namespace mw::sample {

RoadIndex::RoadIndex(const std::vector<Road>& roads, float worldSize, float reach)
    : side_(static_cast<int>(worldSize / kBucketSize)),
      reach_(reach),
      buckets_(static_cast<std::size_t>(side_) * static_cast<std::size_t>(side_)) {
  const auto bucketOf = [&](float position) {
    return std::clamp(static_cast<int>(std::floor(position / kBucketSize)), 0, side_ - 1);
  };
  for (const Road& road : roads) {
    float along = 0;
    for (std::size_t k = 1; k < road.path.size(); ++k) {
      const PathPoint &from = road.path[k - 1], &to = road.path[k];
      const Piece piece{&road, &from, &to, along};
      along += Distance(from.at, to.at);
      if (to.bridge) continue;
      for (int z = bucketOf(std::min(from.at.z, to.at.z) - reach);
           z <= bucketOf(std::max(from.at.z, to.at.z) + reach); ++z) {
        for (int x = bucketOf(std::min(from.at.x, to.at.x) - reach);
             x <= bucketOf(std::max(from.at.x, to.at.x) + reach); ++x) {
          buckets_[static_cast<std::size_t>(z * side_ + x)].push_back(piece);
        }
      }
    }
  }
}

RoadHit RoadIndex::Nearest(Point at) const {
  const int x = static_cast<int>(at.x / kBucketSize), z = static_cast<int>(at.z / kBucketSize);
  RoadHit best;
  if (x < 0 || z < 0 || x >= side_ || z >= side_) return best;
  float bestEdge = reach_;
  for (const Piece& piece : buckets_[static_cast<std::size_t>(z * side_ + x)]) {
    const Point from = piece.from->at, to = piece.to->at;
    const float dx = to.x - from.x, dz = to.z - from.z;
    const float lengthSquared = std::max(dx * dx + dz * dz, 1e-6f);
    const float t =
        std::clamp(((at.x - from.x) * dx + (at.z - from.z) * dz) / lengthSquared, 0.0f, 1.0f);
    const float distance = Distance(at, {from.x + t * dx, from.z + t * dz});
    const float edge = distance - piece.road->width / 2;
    if (edge >= bestEdge) continue;
    bestEdge = edge;
    best = {distance, piece.along + t * std::sqrt(lengthSquared),
            std::lerp(piece.from->height, piece.to->height, t), piece.road};
  }
  return best;
}

}  // namespace mw::sample
