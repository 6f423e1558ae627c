#include "terrain/brush_way.h"

#include <algorithm>
#include <cmath>

#include "data/mod_config.h"

namespace mw {
namespace {

bool IsIn(float value, const Reach& reach) { return reach.low <= value && value < reach.high; }

// The shares of the way with the centre in reach on one axis.
Shares SharesIn(const Reach& reach, float from, float to) {
  if (from == to) return IsIn(from, reach) ? Shares{} : Shares{1, 0};
  const auto [enter, leave] =
      std::minmax({(reach.low - from) / (to - from), (reach.high - from) / (to - from)});
  return {std::max(enter, 0.0f), std::min(leave, 1.0f)};
}

}  // namespace

float BrushWay::Length() const { return std::hypot(toX - fromX, toZ - fromZ); }

BrushWay BrushWay::Section(float first, float last) const {
  return {std::lerp(fromX, toX, first), std::lerp(fromZ, toZ, first), std::lerp(fromX, toX, last),
          std::lerp(fromZ, toZ, last)};
}

Shares SharesWithin(const BrushWay& way, float x, float z, float radius) {
  // |from + share * along - point| = radius is a quadratic equation in the share.
  const float alongX = way.toX - way.fromX, alongZ = way.toZ - way.fromZ;
  const float offX = way.fromX - x, offZ = way.fromZ - z;
  const float a = alongX * alongX + alongZ * alongZ;
  const float b = offX * alongX + offZ * alongZ;
  const float c = offX * offX + offZ * offZ - radius * radius;
  const float root = b * b - a * c;
  if (a == 0 ? c >= 0 : root <= 0) return {1, 0};
  if (a == 0) return {0, 1};
  const float half = std::sqrt(root);
  return {std::max((-b - half) / a, 0.0f), std::min((-b + half) / a, 1.0f)};
}

float ShareWithin(const BrushWay& way, float x, float z, float radius) {
  const auto [first, last] = SharesWithin(way, x, z, radius);
  return std::max(last - first, 0.0f);
}

bool Reaches(const BrushWay& way, const Reach& x, const Reach& z) {
  if (IsIn(way.toX, x) && IsIn(way.toZ, z)) return true;
  const Shares onX = SharesIn(x, way.fromX, way.toX), onZ = SharesIn(z, way.fromZ, way.toZ);
  return std::max(onX.first, onZ.first) < std::min(onX.last, onZ.last);
}

VertexBlock BlockAround(const BrushWay& way, int cells) {
  const Cell from = CellOf(way.fromX, way.fromZ), to = CellOf(way.toX, way.toZ);
  return {std::max(std::min(from.i, to.i) - cells, 1),
          std::min(std::max(from.i, to.i) + cells + 1, modConfig.MaterialSize),
          std::max(std::min(from.j, to.j) - cells, 0),
          std::min(std::max(from.j, to.j) + cells + 1, modConfig.MaterialSize - 1)};
}

}  // namespace mw
