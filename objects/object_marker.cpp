#include "objects/object_marker.h"

#include <algorithm>
#include <cmath>

#include "core/camera.h"
#include "core/editor_state.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

constexpr float kMarkerHeight = 4.75f;  // world units
// How much nearer or farther than the line's ends a point of it may seem, in world units.
constexpr float kDepthReach = 0.25f;

// Before the camera, in world units along its direction.
float DistanceOf(const Vector3& point) {
  const Vector3 along = point - camera.position;
  const Vector3& direction = camera.direction;
  return along.x * direction.x + along.y * direction.y + along.z * direction.z;
}

// In pixels, to the nearest point between the two ends.
float DistanceToLine(const ViewPoint& point, const ViewPoint& from, const ViewPoint& to) {
  const float x = to.x - from.x, y = to.y - from.y;
  const float length = x * x + y * y;
  const float along = (point.x - from.x) * x + (point.y - from.y) * y;
  const float part = length > 0 ? std::clamp(along / length, 0.0f, 1.0f) : 0;
  return std::hypot(from.x + part * x - point.x, from.y + part * y - point.y);
}

}  // namespace

MarkerLine MarkerAt(const Vector3& place, const CatalogueEntry& entry) {
  const Vector3& view = camera.direction;
  const Vector3 foot = place + Vector3{0, entry.boxB.y, 0};
  return {foot, foot + Vector3{-view.x * view.y, kMarkerHeight, -view.z * view.y}};
}

// Most objects are farther from the point than their markers are long and wide.
bool IsOnMarker(const Vector3& point, const MarkerLine& marker) {
  const float distance = DistanceOf(point);
  const float reach = kMarkerHeight + 1 + distance * kMarkerWidth / editor.viewHeight;
  if (point.DistanceTo(marker.foot) > reach) return false;
  const auto [nearest, farthest] = std::minmax({DistanceOf(marker.foot), DistanceOf(marker.top)});
  if (distance < nearest - kDepthReach || distance > farthest + kDepthReach) return false;
  const auto seen = ViewPointOf(point);
  const auto foot = ViewPointOf(marker.foot), top = ViewPointOf(marker.top);
  return seen && foot && top && DistanceToLine(*seen, *foot, *top) <= kMarkerWidth / 2 + 1;
}

}  // namespace mw
