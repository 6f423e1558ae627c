#include "objects/objects_state.h"

#include "objects/entities.h"
#include "objects/level_tree.h"
#include "objects/object_store.h"

namespace mw {

ObjectStore objectStore;
Entities entities;
LevelTree levelTree;

void ResetObjectsState() {
  objectStore = ObjectStore{};
  entities = Entities{};
  levelTree = LevelTree{};
}

}  // namespace mw
