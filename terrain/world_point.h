// The way between pixels of the 3D view and points of the scene that is drawn there. View pixels
// are counted from the view's top-left corner, y downwards; what is under a pixel is under its
// centre.
#pragma once

#include <optional>

#include "core/vector3.h"

namespace mw {

// The point of the ground as it is drawn; objects, water and markers are not in the way. Nothing
// where no ground is drawn, and outside the view.
std::optional<Vector3> GroundUnderCursor(int x, int y);

// The point of whatever is drawn there, read from the depth of the frame drawn last: an object, the
// water, the ground, or where the view ends. Nothing when there is no context and outside the view.
std::optional<Vector3> WorldPointUnderCursor(int x, int y);

struct ViewPoint {
  float x = 0, y = 0;  // pixels, with their fractions
};
// Where the view shows a point, which may be beside the view. Nothing for a point behind the camera
// or too far away to be drawn.
std::optional<ViewPoint> ViewPointOf(const Vector3& point);

}  // namespace mw
