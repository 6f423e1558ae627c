#include "core/camera.h"

#include <cmath>
#include <numbers>

namespace mw {

Camera camera;

void Camera::UpdateDirection() {
  const double toRadians = std::numbers::pi / 180;
  const double heading = (yaw + 90.0) * toRadians;
  const double tilt = pitch * toRadians;
  direction.Set(static_cast<float>(std::cos(heading) * std::cos(tilt)),
                static_cast<float>(std::sin(tilt)),
                static_cast<float>(-std::sin(heading) * std::cos(tilt)));
}

void Camera::ExtractFrustum(const Matrix4& projection, const Matrix4& modelView) {
  Matrix4 clip;
  for (int column = 0; column < 4; ++column) {
    for (int row = 0; row < 4; ++row) {
      float sum = 0;
      for (int k = 0; k < 4; ++k) sum += projection[k * 4 + row] * modelView[column * 4 + k];
      clip[column * 4 + row] = sum;
    }
  }
  struct Source {
    int row;
    float sign;
  };
  constexpr std::array<Source, 6> kSources{{{0, -1}, {0, 1}, {1, 1}, {1, -1}, {2, -1}, {2, 1}}};
  for (std::size_t i = 0; i < kSources.size(); ++i) {
    const auto [row, sign] = kSources[i];
    Plane plane{clip[3] + sign * clip[row], clip[7] + sign * clip[4 + row],
                clip[11] + sign * clip[8 + row], clip[15] + sign * clip[12 + row]};
    const float length = std::sqrt(plane.a * plane.a + plane.b * plane.b + plane.c * plane.c);
    if (length > 0) plane.a /= length, plane.b /= length, plane.c /= length, plane.d /= length;
    frustum[i] = plane;
  }
}

Vector3 Camera::ToWorld(double eyeX, double eyeY, double eyeZ) const {
  Vector3 angles;
  angles.SetFromAngles(yaw, pitch);
  const Vector3& forward = direction;
  const double distance = -eyeZ;
  return {static_cast<float>(position.x + forward.y * angles.z * eyeY + forward.x * distance +
                             eyeX * angles.x),
          static_cast<float>(position.y + angles.y * eyeY + forward.y * distance),
          static_cast<float>(position.z + forward.y * angles.x * eyeY + forward.z * distance -
                             eyeX * angles.z)};
}

Vector3 Camera::ToEye(const Vector3& world) const {
  Vector3 angles;
  angles.SetFromAngles(yaw, pitch);
  const Vector3 along = world - position;
  return {along.x * angles.x - along.z * angles.z,
          along.x * direction.y * angles.z + along.y * angles.y + along.z * direction.y * angles.x,
          -(along.x * direction.x + along.y * direction.y + along.z * direction.z)};
}

}  // namespace mw
