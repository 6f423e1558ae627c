// How entities come into the level's tables, whatever brings them: a drop from the tree or a paste.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "core/vector3.h"
#include "objects/entities.h"

namespace mw {

// Whether the user may add so many more; the kind's message says so when not.
bool HasRoomForInstance(EntityKind kind, std::size_t count = 1);
bool HasRoomForTemplate(EntityKind kind, std::size_t count = 1);
// For instances with a template of their own each.
bool HasRoomForEntity(EntityKind kind, std::size_t count = 1);

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
// A copy that stays with its control point gets a name like the one that it has, and a spawn id.
void GiveOwnName(SoldierSpawnTemplate& made);
// The name that a copy's number comes after.
std::string WithoutNumber(const EntityName& name);

}  // namespace mw
