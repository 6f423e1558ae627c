#include "core/vector3.h"

#include <cmath>
#include <numbers>

namespace mw {

void Vector3::SetFromAngles(float a, float b) {
  const double toRadians = std::numbers::pi / 180;
  x = static_cast<float>(std::cos(a * toRadians));
  y = static_cast<float>(std::cos(b * toRadians));
  z = static_cast<float>(std::sin(a * toRadians));
}

Vector3& Vector3::operator+=(const Vector3& other) {
  x += other.x, y += other.y, z += other.z;
  return *this;
}

Vector3& Vector3::operator-=(const Vector3& other) {
  x -= other.x, y -= other.y, z -= other.z;
  return *this;
}

double Vector3::Length() const {
  return std::sqrt(static_cast<double>(x) * x + static_cast<double>(y) * y +
                   static_cast<double>(z) * z);
}

void Vector3::Normalise() {
  const double length = Length();
  if (length == 0) return;
  x = static_cast<float>(x / length);
  y = static_cast<float>(y / length);
  z = static_cast<float>(z / length);
}

double Vector3::DistanceTo(const Vector3& other) const { return (*this - other).Length(); }

Vector3 operator+(Vector3 a, const Vector3& b) { return a += b; }
Vector3 operator-(Vector3 a, const Vector3& b) { return a -= b; }
Vector3 operator*(Vector3 v, float factor) { return {v.x * factor, v.y * factor, v.z * factor}; }

}  // namespace mw
