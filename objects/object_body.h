// Where the bodies of static objects are: how far a point is from what is drawn of one. For finding
// the object under the mouse.
#pragma once

#include <optional>

#include "core/vector3.h"
#include "objects/object_store.h"

namespace mw {

// Distance in world units from a point (view coordinates) to the object's triangles, in its picture
// of the current view mode; to the surface of its box where the picture is of lines. Nothing when
// the point lies farther than `reach` from it, or from the box and outside. The object is in sight,
// with this entry.
std::optional<float> DistanceToBody(const StaticObject& object, const CatalogueEntry& entry,
                                    const Vector3& point, float reach);

}  // namespace mw
