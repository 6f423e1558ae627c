// What the show switches of the Object Mapper and the game-mode filter let through. For those who
// draw objects and entities, and those who select them: what is hidden is not selected.
#pragma once

#include "objects/entities.h"
#include "objects/object_store.h"

namespace mw {

// The switch of objects that show a mesh of this kind, of entities of this kind.
bool& ShowSwitchOf(MeshKind kind);
bool& ShowSwitchOf(EntityKind kind);

bool IsShown(const StaticObject& object);
// Its kind is shown, and one of its game modes.
bool IsShown(const SpawnInstance& instance);

// Switches on what hides the object, for a user who asks for this very one.
void ShowKindOf(const StaticObject& object);
void ShowKindOf(const SpawnInstance& instance);

// Deselects what is hidden; the tools follow if that was anything.
void DeselectHidden();

}  // namespace mw
