// How entities come into the level's tables, whatever brings them: a drop from the tree or a paste.
#pragma once

#include <memory>
#include <string_view>

#include "core/vector3.h"
#include "objects/entities.h"

namespace mw {

// Whether the user may add one more; the kind's message says so when not.
bool HasRoomForInstance(EntityKind kind);
bool HasRoomForTemplate(EntityKind kind);
// For an instance with a template of its own.
bool HasRoomForEntity(EntityKind kind);

// A new instance of the template at a place of the level. The tables must have room.
SpawnInstance& PlaceEntity(EntityKind kind, int templateIndex, const Vector3& position);
SpawnInstance& PlaceEntity(EntityKind kind, std::unique_ptr<SpawnTemplate> made,
                           const Vector3& position);

// A group of a free number. The caller adds it.
SpawnGroup NewSpawnGroup(GameModeMask modes);

// The template of the control point nearest to a place of the level, of those in one of the modes
// and within 4000 units; null when there is none. Of two equally near ones the later.
const ControlPointTemplate* NearestControlPoint(const Vector3& position, GameModeMask modes);
// The spawn belongs to the control point; without one to the group of the first that will be made.
// A soldier spawn's template gets name and spawn id with it.
void GiveToControlPoint(SoldierSpawnTemplate& made, const ControlPointTemplate* owner);
void GiveToControlPoint(ObjectSpawn& spawn, const ControlPointTemplate* owner);

}  // namespace mw
