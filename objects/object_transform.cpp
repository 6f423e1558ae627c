#include "objects/object_transform.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace mw {
namespace {

struct Angle {
  float sine, cosine;
};

Angle AngleOf(float degrees) {
  if (degrees == 0) return {0, 1};
  const double radians = degrees * std::numbers::pi / 180;
  return {static_cast<float>(std::sin(radians)), static_cast<float>(std::cos(radians))};
}

using Axes = std::array<Vector3, 3>;

// The columns of Ry Rx Rz.
Axes TurnedAxes(const Vector3& rotation) {
  const auto [sy, cy] = AngleOf(-rotation.x);  // about the axes' positive directions
  const auto [sx, cx] = AngleOf(rotation.y);
  const auto [sz, cz] = AngleOf(-rotation.z);
  return {Vector3{cy * cz + sy * sx * sz, cx * sz, cy * sx * sz - sy * cz},
          Vector3{sy * sx * cz - cy * sz, cx * cz, sy * sz + cy * sx * cz},
          Vector3{sy * cx, -sx, cy * cx}};
}

}  // namespace

Matrix4 PlacedMatrix(const Matrix4& base, const Vector3& position, const Vector3& rotation,
                     const Vector3& scale) {
  const Axes axes = TurnedAxes(rotation);
  const Vector3 columns[] = {axes[0] * scale.x, axes[1] * scale.y, axes[2] * scale.z, position};
  Matrix4 result;
  for (std::size_t column = 0; column < 4; ++column) {
    const auto& [x, y, z] = columns[column];
    for (std::size_t row = 0; row < 4; ++row)
      result[column * 4 + row] = base[row] * x + base[4 + row] * y + base[8 + row] * z;
  }
  for (std::size_t row = 0; row < 4; ++row) result[12 + row] += base[12 + row];
  return result;
}

Vector3 TurnedBack(const Vector3& offset, const Vector3& rotation) {
  const auto along = [&offset](const Vector3& axis) {
    return offset.x * axis.x + offset.y * axis.y + offset.z * axis.z;
  };
  const Axes axes = TurnedAxes(rotation);
  return {along(axes[0]), along(axes[1]), along(axes[2])};
}

}  // namespace mw
