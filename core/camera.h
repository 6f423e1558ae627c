// The one camera: where it stands, where it looks, and its frustum. Renderers cull with it, pickers
// turn view pixels into world points with it. How keys and mouse move it is the shell's business.
#pragma once

#include <array>

#include "core/vector3.h"

namespace mw {

enum class CameraMode : int { OnTerrain = 0, Fly = 1, TopDown = 2 };

struct Plane {
  float a = 0, b = 0, c = 0, d = 0;
  friend bool operator==(const Plane&, const Plane&) = default;
};

// The view's perspective.
inline constexpr double kFieldOfView = 45;                  // degrees, upright
inline constexpr double kNearPlane = 0.1, kFarPlane = 350;  // world units before the camera

// Column-major 4 x 4 matrix, as OpenGL keeps it.
using Matrix4 = std::array<float, 16>;

struct Camera {
  // Right, left, bottom, top, far, near; normals point inwards and have unit length.
  std::array<Plane, 6> frustum{};
  float pitch = 0;                   // degrees; negative looks down
  float yaw = 180;                   // degrees
  float roll = 0;                    // degrees
  Vector3 position{1024, 50, 1024};  // world units, y up
  Vector3 direction;                 // unit vector, from pitch and yaw

  Camera() { UpdateDirection(); }

  // Recomputes `direction` from the angles.
  void UpdateDirection();
  // The frustum planes of clip = projection x modelView (Gribb and Hartmann, "Fast Extraction of
  // Viewing Frustum Planes from the World-View-Projection Matrix", 2001).
  void ExtractFrustum(const Matrix4& projection, const Matrix4& modelView);
  // True when the signed distance to each of the six planes is greater than `margin`.
  bool IsPointVisible(float x, float y, float z, float margin) const {
    for (const Plane& plane : frustum) {
      if (!(plane.a * x + plane.b * y + plane.c * z + plane.d > margin)) return false;
    }
    return true;
  }
  // A point given in the camera's own frame (right, up, towards the viewer) as a point of the
  // world, and the other way round.
  Vector3 ToWorld(double eyeX, double eyeY, double eyeZ) const;
  Vector3 ToEye(const Vector3& world) const;
};

extern Camera camera;

}  // namespace mw
