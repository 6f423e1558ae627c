// Where a line meets the ground as the current editing mode draws it: cell by cell, each of two
// triangles. What else stands or flows there is not in the way. For the tools that act on the
// ground; they need no picture and see what is under the cursor to the last bit.
#pragma once

#include <optional>

#include "core/vector3.h"

namespace mw {

// The first point, in world units, where the way from one point to the other crosses the ground of
// the view square, from above or from below.
std::optional<Vector3> GroundBetween(const Vector3& from, const Vector3& to);

// World height of the ground at a position of the grid; one outside counts as on its edge.
float DrawnGroundHeight(float x, float z);

// Whether the camera sees the ground halfway between two points of it. Where other ground hides it,
// a stroke that has reached one of them does not go on to the other.
bool IsWayInSight(const Vector3& from, const Vector3& to);

}  // namespace mw
