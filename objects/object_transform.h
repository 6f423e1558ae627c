// Where placed things stand and how they are turned, as matrices. Used by the drawing of objects.
#pragma once

#include "core/camera.h"
#include "core/vector3.h"

namespace mw {

// `base` moved to `position`, then turned by rotation.x degrees about (0, -1, 0), rotation.y about
// (1, 0, 0) and rotation.z about (0, 0, -1), then scaled: what glTranslate, three glRotate and
// glScale make of it.
Matrix4 PlacedMatrix(const Matrix4& base, const Vector3& position, const Vector3& rotation,
                     const Vector3& scale);
// An offset from a place that is turned so, as it is without the turn.
Vector3 TurnedBack(const Vector3& offset, const Vector3& rotation);

}  // namespace mw
