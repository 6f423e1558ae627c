#include "terrain/world_point.h"

#include <GL/gl.h>
#include <cmath>
#include <numbers>

#include "core/camera.h"
#include "core/editor_state.h"
#include "platform/gl_context.h"
#include "terrain/ground_ray.h"

namespace mw {
namespace {

bool IsInView(int x, int y) {
  return x >= 0 && y >= 0 && static_cast<float>(x) < editor.viewWidth &&
         static_cast<float>(y) < editor.viewHeight;
}

// At distance 1 before the camera.
double HalfViewHeight() {
  static const double half = std::tan(kFieldOfView / 2 * std::numbers::pi / 180);
  return half;
}

double HalfViewWidth() { return HalfViewHeight() * editor.viewWidth / editor.viewHeight; }

// The point under the centre of a pixel so far before the camera, world units along its direction.
Vector3 PointUnderPixel(int x, int y, double distance) {
  const double across = 2 * (x + 0.5) / editor.viewWidth - 1;
  const double up = 1 - 2 * (y + 0.5) / editor.viewHeight;
  return camera.ToWorld(across * HalfViewWidth() * distance, up * HalfViewHeight() * distance,
                        -distance);
}

// Distance before the camera, from a value of the depth buffer.
double DistanceOfDepth(double depth) {
  return kNearPlane * kFarPlane / (kFarPlane - depth * (kFarPlane - kNearPlane));
}

// What two neighbouring values of the depth buffer differ by at that distance, and a little more.
double DepthStepAt(double distance) {
  constexpr double kDepthValues = 1 << 24, kSteps = 2;
  return kSteps * distance * distance / (kNearPlane * kDepthValues);
}

}  // namespace

std::optional<Vector3> GroundUnderCursor(int x, int y) {
  if (!IsInView(x, y)) return std::nullopt;
  return GroundBetween(PointUnderPixel(x, y, kNearPlane), PointUnderPixel(x, y, kFarPlane));
}

// Cells under grid lines are drawn a little too far away, and depths are rounded: where it is the
// ground that shows, its own point is the better one.
std::optional<Vector3> WorldPointUnderCursor(int x, int y) {
  if (!IsInView(x, y) || !MakeViewContextCurrent()) return std::nullopt;
  GLfloat depth = 1;
  const int fromBottom = static_cast<int>(editor.viewHeight) - y - 1;
  glReadPixels(x, fromBottom, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
  const double distance = DistanceOfDepth(depth);
  const auto ground = GroundUnderCursor(x, y);
  if (ground && -camera.ToEye(*ground).z <= distance + DepthStepAt(distance)) return ground;
  return PointUnderPixel(x, y, distance);
}

std::optional<ViewPoint> ViewPointOf(const Vector3& point) {
  const Vector3 eye = camera.ToEye(point);
  const double distance = -eye.z;
  if (distance < kNearPlane || distance > kFarPlane) return std::nullopt;
  const double across = eye.x / (distance * HalfViewWidth());
  const double up = eye.y / (distance * HalfViewHeight());
  return ViewPoint{static_cast<float>((across + 1) / 2 * editor.viewWidth),
                   static_cast<float>((1 - up) / 2 * editor.viewHeight)};
}

}  // namespace mw
