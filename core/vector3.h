// Three floats with the few operations that camera, picking and object tools need.
#pragma once

namespace mw {

struct Vector3 {
  float x = 0, y = 0, z = 0;

  void Set(float newX, float newY, float newZ) { x = newX, y = newY, z = newZ; }
  // (cos a, cos b, sin a), angles in degrees.
  void SetFromAngles(float a, float b);
  Vector3& operator+=(const Vector3& other);
  Vector3& operator-=(const Vector3& other);
  // Square root of x² + y² + z², computed in double precision.
  double Length() const;
  // Scales to length 1; a vector of length 0 stays as it is.
  void Normalise();
  double DistanceTo(const Vector3& other) const;

  friend bool operator==(const Vector3&, const Vector3&) = default;
};

Vector3 operator+(Vector3 a, const Vector3& b);
Vector3 operator-(Vector3 a, const Vector3& b);
Vector3 operator*(Vector3 v, float factor);

}  // namespace mw
