#include "objects/entities.h"

namespace mw {

std::unique_ptr<SpawnInstance> SoldierSpawnTemplate::CreateInstance(int) { return nullptr; }
std::unique_ptr<SpawnInstance> ObjectSpawnTemplate::CreateInstance(int) { return nullptr; }
std::unique_ptr<SpawnInstance> ControlPointTemplate::CreateInstance(int) { return nullptr; }

}  // namespace mw
