// The way from a pixel of the 3D view to the point of the scene that is drawn there.
#pragma once

#include <optional>

#include "core/vector3.h"

namespace mw {

// The world point under view pixel (x, y), counted from the view's top-left corner, y downwards;
// read from the depth of the frame drawn last. Nothing when there is no context, when the pixel is
// outside the view or when the unprojection fails. Leaves the identity in the model-view matrix.
std::optional<Vector3> WorldPointUnderCursor(int x, int y);

}  // namespace mw
