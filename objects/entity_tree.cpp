#include "objects/entities.h"

namespace mw {

void SpawnTemplate::UpdateTreeItem(EntityKind) {}
void SpawnInstance::UpdateTreeItem() {}

}  // namespace mw
