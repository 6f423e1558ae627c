#include "app/terrain_operations.h"

#include "app/operations.h"
#include "app/shell.h"
#include "app/start_up.h"
#include "terrain/in_game_map.h"
#include "terrain/material_generation.h"
#include "terrain/material_map.h"
#include "terrain/roads.h"
#include "terrain/surface_maps.h"

namespace mw {

void ConnectTerrainOperations() {
  operations.loadMaterialMap = LoadMaterialMap;
  operations.generateMaterialMap = [] { GenerateMaterialMap(LoadedMaterialPlugin()); };
  operations.addRoadPoint = AddRoadPoint;
  operations.finishRoad = [] { FinishRoadPoints(shell.createRoadDialog); };
  operations.generateSurfaceMaps = [] { return GenerateSurfaceMaps(LoadedSurfacePlugin()); };
  operations.generateInGameMap = GenerateInGameMap;
}

}  // namespace mw
