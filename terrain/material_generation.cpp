#include "terrain/material_generation.h"

#include "core/editor_state.h"
#include "core/history.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "platform/prompts.h"
#include "terrain/ground_history.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"

namespace mw {

// The grids are handed over as they are.
static_assert(sizeof(MapwrightVertex) == sizeof(TerrainVertex));
static_assert(offsetof(MapwrightVertex, h) == offsetof(TerrainVertex, h));
static_assert(offsetof(MapwrightVertex, z) == offsetof(TerrainVertex, z));
static_assert(offsetof(MapwrightVertex, weight) == offsetof(TerrainVertex, weight));
static_assert(MAPWRIGHT_GRID_ROW == kGridCapacity && MAPWRIGHT_MAX_SIZE == kMaxMaterialSize);

void GenerateMaterialMap(const MaterialPlugin& plugin) {
  if (!plugin.InitMatMap || !plugin.GenerateMatMap || !materialMapper || !HasUsableTerrain())
    return;
  if (!ConfirmReplacing("This will replace all materials of the level, roads too.")) return;
  if (!MayReplaceGround() || !plugin.InitMatMap()) return;
  const HistoryStep step("Generate Material Map");
  KeepAllMaterials();
  KeepSetting(openLevel.loadReport.parts);
  ShowWaitCursor();
  SetStatusText(1, "Generating Material Map...");
  plugin.GenerateMatMap(modConfig.MaterialSize, materialMapper->grid[0].data(),
                        reinterpret_cast<const MapwrightVertex*>(terrain.grid[0].data()),
                        modConfig.WaterLevel, modConfig.HeightScale);
  SetReplaced(LevelPart::MaterialMap);
  MarkMaterialsChanged();
  editor.levelModified = true;
  SetStatusText(1, "");
}

}  // namespace mw
