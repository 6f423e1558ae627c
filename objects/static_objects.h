// The static objects of a level: buildings, props and vegetation. Reading, writing, adding,
// deleting and setting them on the ground.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/vector3.h"
#include "objects/object_store.h"

namespace mw {

// Reads the level's objects, then its entities. When the file is damaged or not all of its objects
// can be held, what was read stays, and the load report says so.
void LoadStaticObjects();
// Writes the level's objects and entities, each as far as the load report allows it. False when one
// of their files could not be written.
[[nodiscard]] bool SaveStaticObjects();
// Deletes all objects, meshes, textures and entities.
void ClearAllObjects();
// The same, with a tree that shows nothing but its fixed items.
void ClearObjectsAndTree();

// Whether the user may add so many more; a message says so when not.
bool HasRoomForObjects(std::size_t count);
// A new, selected object of a cached mesh at the CursorPoint. False, after a message, when the
// table is full; false when the mesh's name is not in the catalogue.
bool AddStaticObjectFromCache(int mesh);
// A new, unselected object at view position x, z and the height of the CursorPoint. False as above.
bool PlaceStaticObject(std::string_view name, float x, float z, const Vector3& rotation);
void DeleteStaticObject(int index);
// Shows the "Edit Object" sheet; true on OK.
bool EditStaticObject(int index);
// Sets every object and every entity on the ground.
void SnapAllToGround();
// Index of the object with this item, or -1.
int FindObjectByTreeItem(TreeItem item);
// "Static Object: <name>" for the status bar.
std::string StatusTextOf(const StaticObject& object);
// The objects' entries in a catalogue that was read again, with their meshes where they had none.
void FindObjectEntriesAgain();

}  // namespace mw
