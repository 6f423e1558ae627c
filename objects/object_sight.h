// Which static objects are drawn, and as what. Shared by their drawing and by finding the one under
// the mouse.
#pragma once

#include "objects/object_store.h"

namespace mw {

// What the object is drawn as: its catalogue entry, or a plain box when the catalogue does not have
// its name. Null when it is not drawn at all.
const CatalogueEntry* EntryOf(const StaticObject& object);
// The same for an object that stands at this place (view coordinates): null, too, when its kind is
// hidden or the place is out of sight.
const CatalogueEntry* EntryInSight(const StaticObject& object, const Vector3& place);
// Its picture in the current view mode; 0 when there is none. The context must be current.
MeshListId ShownListOf(const StaticObject& object);
// With X mirrored, as the level is.
Vector3 ScaleInView(const StaticObject& object);

}  // namespace mw
