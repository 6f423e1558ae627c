#include "app/terrain_operations.h"

#include "app/operations.h"
#include "terrain/material_map.h"

namespace mw {

void ConnectTerrainOperations() {
  operations.loadMaterialMap = LoadMaterialMap;
  operations.saveMaterialMap = SaveMaterialMap;
}

}  // namespace mw
