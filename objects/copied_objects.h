// What Copy of the Object Mapper remembers, as it is then; Duplicate uses it for a moment.
#pragma once

#include <cstdint>
#include <vector>

#include "core/vector3.h"
#include "objects/entities.h"
#include "objects/game_modes.h"
#include "objects/static_object.h"

namespace mw {

struct ObjectCopy {
  StaticObject object;
  Vector3 offset;  // from the middle of what was copied; view coordinates
};

// An entity and its template.
template <class Template>
struct EntityCopy {
  Template from;
  GameModeMask modes = 0;      // of the entity itself
  Vector3 position, rotation;  // level coordinates
  Vector3 offset;              // from the middle of what was copied; view coordinates
};

struct ControlPointCopy : EntityCopy<ControlPointTemplate> {
  std::vector<SpawnGroup> groups;
};

struct ObjectSpawnCopy : EntityCopy<ObjectSpawnTemplate> {
  std::int32_t osId = 0, team = 0;
};

using SoldierSpawnCopy = EntityCopy<SoldierSpawnTemplate>;

struct CopiedObjects {
  std::vector<ObjectCopy> objects;
  std::vector<ControlPointCopy> controlPoints;
  std::vector<SoldierSpawnCopy> soldierSpawns;
  std::vector<ObjectSpawnCopy> objectSpawns;
};

}  // namespace mw
