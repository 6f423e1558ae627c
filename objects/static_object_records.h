// The records of static objects: how one is made and comes into the table. For those who read the
// level's objects and those who place new ones.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

#include "objects/object_store.h"

namespace mw {

// The object's catalogue entry is the one of its name; where there is none, "default", else -1.
void FindEntry(StaticObject& object);
// A record with the name in lower case that shows its catalogue entry. It has no mesh yet.
StaticObject NewStaticObject(std::string_view name);

// Shows a mesh of the cache.
void UseCachedMesh(StaticObject& object, int mesh);
// Finds the mesh of the object's name in the cache, or loads it if the catalogue has the name.
void FindMesh(StaticObject& object);

bool ObjectTableIsFull();
// Where objects of this one's kind belong in the level tree.
TreeItem TreeParentOf(const StaticObject& object);
// Puts the object into the level tree, or where its kind belongs there: before another item, or
// behind all. An item that stands there already gets the object's name.
void ShowInTree(StaticObject& object, TreeItem before = 0);
// The same for the objects with these indices, in rising order, each before the next object of its
// kind.
void ShowInTree(const std::vector<std::size_t>& indices);
// Puts the record at the end of the table, which has room, and into the level tree.
void AppendStaticObject(StaticObject object);
// Takes every object that `isMeant` accepts out of the table, then out of the level tree, which may
// choose another object's item meanwhile. The places in the table are free at once, and indices
// into it mean other objects: nothing is hovered until the mouse is looked at again. True if there
// were any.
bool RemoveStaticObjects(const std::function<bool(const StaticObject&)>& isMeant);

}  // namespace mw
