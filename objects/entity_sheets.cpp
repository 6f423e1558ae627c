#include "objects/entities.h"

namespace mw {

bool SpawnTemplate::Edit(EntityKind) { return false; }
bool ObjectSpawnTemplate::Edit(EntityKind) { return false; }
bool SoldierSpawn::Edit() { return false; }
bool ObjectSpawn::Edit() { return false; }
bool ControlPoint::Edit() { return false; }

}  // namespace mw
