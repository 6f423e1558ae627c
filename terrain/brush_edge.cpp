#include "terrain/brush_edge.h"

#include <algorithm>
#include <cmath>

namespace mw {
namespace {

float DistanceAt(const BrushWay& way, float share, float x, float z) {
  return std::hypot(std::lerp(way.fromX, way.toX, share) - x,
                    std::lerp(way.fromZ, way.toZ, share) - z);
}

float NearestShare(const BrushWay& way, float x, float z) {
  const float alongX = way.toX - way.fromX, alongZ = way.toZ - way.fromZ;
  const float square = alongX * alongX + alongZ * alongZ;
  if (square == 0) return 1;
  return std::clamp(((x - way.fromX) * alongX + (z - way.fromZ) * alongZ) / square, 0.0f, 1.0f);
}

}  // namespace

float StrengthAt(BrushEdge edge, float distance, float radius) {
  const float left = (radius - distance) / (radius * (1 - kBrushCore));
  if (edge == BrushEdge::Hard) return left > 0 ? 1.0f : 0.0f;
  const float linear = std::clamp(left, 0.0f, 1.0f);
  return edge == BrushEdge::Linear ? linear : linear * linear * (3 - 2 * linear);
}

float RadiusOfStrength(BrushEdge edge, float strength, float radius) {
  if (edge == BrushEdge::Hard) return radius;
  // The inverse of the curve of StrengthAt.
  const float linear =
      edge == BrushEdge::Linear ? strength : 0.5f - std::sin(std::asin(1 - 2 * strength) / 3);
  return radius * (1 - linear * (1 - kBrushCore));
}

float MeanStrength(BrushEdge edge, const BrushWay& way, float x, float z, float radius) {
  if (edge == BrushEdge::Hard) return ShareWithin(way, x, z, radius);
  const auto [first, last] = SharesWithin(way, x, z, radius);
  if (last <= first) return 0;
  if (way.Length() == 0) return StrengthAt(edge, DistanceAt(way, 1, x, z), radius);
  // The part within the brush is at most its diameter, whatever the way.
  constexpr int kSteps = 8;
  float sum = 0;
  for (int step = 0; step < kSteps; ++step) {
    const float share = std::lerp(first, last, (static_cast<float>(step) + 0.5f) / kSteps);
    sum += StrengthAt(edge, DistanceAt(way, share, x, z), radius);
  }
  return sum / kSteps * (last - first);
}

float GreatestStrength(BrushEdge edge, const BrushWay& way, float x, float z, float radius) {
  return StrengthAt(edge, DistanceAt(way, NearestShare(way, x, z), x, z), radius);
}

}  // namespace mw
