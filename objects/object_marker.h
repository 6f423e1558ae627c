// The white line over each static object that marks it in the Object Mapper.
#pragma once

#include "core/vector3.h"
#include "objects/object_store.h"

namespace mw {

inline constexpr float kMarkerWidth = 8;  // pixels; as wide as every graphics card draws lines

struct MarkerLine {
  Vector3 foot, top;
};

// The marker of an object at this place (view coordinates): from the top of the mesh up, leaning
// against the camera's view so that it can also be seen from above.
MarkerLine MarkerAt(const Vector3& place, const CatalogueEntry& entry);

// Whether a point of what the view shows is one of the line, as wide as it is drawn.
bool IsOnMarker(const Vector3& point, const MarkerLine& marker);

}  // namespace mw
