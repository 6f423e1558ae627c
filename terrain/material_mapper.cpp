#include "terrain/material_mapper.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "core/editor_state.h"
#include "core/history.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "platform/prompts.h"
#include "terrain/ground_history.h"
#include "terrain/ground_ray.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"
#include "terrain/terrain_passes.h"
#include "terrain/visible_cells.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

// Whether the cell with this corner gets into the brush.
bool IsReached(const BrushWay& way, int i, int j) {
  const TerrainVertex& corner = terrain.grid[i][j];
  const auto size = static_cast<float>(materialMapper->brushSize);
  const float inner = (size - 1) * materialMapper->materialCellSize;
  const float outer = size * materialMapper->materialCellSize;
  return Reaches(way, {corner.x - outer, corner.x + inner}, {corner.z - inner, corner.z + outer});
}

template <typename Act>
void ForBrushedCells(const BrushWay& way, Act act) {
  if (!materialMapper || !HasUsableTerrain()) return;
  const auto reach = static_cast<int>(materialMapper->brushSize) + 1;
  ForVerticesAlong(way, reach, [&](int i, int j) {
    if (IsReached(way, i, j) && IsDrawnCell(i, j)) act(i, j);
  });
}

// Over ground that nobody sees no way leads.
BrushWay WayInSight(const Vector3& from, const Vector3& to) {
  return BrushWay::Between(IsWayInSight(from, to) ? from : to, to);
}

}  // namespace

void PickMaterialPoint(int x, int y) {
  if (!materialMapper) return;
  const Vector3 before = materialMapper->pick;
  const bool wasThere = !materialMapper->pickMissed;
  const auto point = GroundUnderCursor(x, y);
  materialMapper->pickMissed = !point;
  if (!point) return;
  materialMapper->pick = *point;
  if (materialMapper->painting) PaintAlong(WayInSight(wasThere ? before : *point, *point));
}

void StartPainting() {
  if (!materialMapper || materialMapper->painting) return;
  materialMapper->painting = 1;
  materialMapper->step.Begin("Painting");
  const Vector3& at = materialMapper->pick;
  if (!materialMapper->pickMissed) PaintAlong(BrushWay::At(at.x, at.z));
}

void StopPainting() {
  if (!materialMapper) return;
  materialMapper->painting = 0;
  materialMapper->step.End();
}

void LiftMaterialBrush() {
  if (materialMapper) materialMapper->pickMissed = true;
}

void PaintAlong(const BrushWay& way) {
  ForBrushedCells(way, [](int i, int j) {
    KeepMaterial(i, j);
    materialMapper->grid[i][j] = materialMapper->currentMaterial;
    materialMapper->paintedCells.push_back({i, j});
  });
  if (materialMapper && !materialMapper->paintedCells.empty()) editor.levelModified = true;
}

void SetMaterialBrushSize(int size) {
  if (!materialMapper) return;
  materialMapper->brushSize =
      static_cast<std::uint32_t>(std::clamp(size, 1, kMaxMaterialBrushSize));
}

void SetCurrentMaterial(int material) {
  if (!materialMapper) return;
  materialMapper->currentMaterial =
      static_cast<std::uint32_t>(std::clamp(material, 0, kMaterialCount - 1));
}

void ToggleSurfaceView() {
  if (materialMapper) materialMapper->SurfaceView = !materialMapper->SurfaceView;
}

void FillWithMaterial() {
  if (!materialMapper || !HasUsableTerrain()) return;
  if (!ConfirmReplacing("This will replace the materials of the whole level by the chosen one.")) {
    return;
  }
  if (!MayReplaceGround()) return;
  const HistoryStep step("Fill With Material");
  KeepAllMaterials();
  KeepSetting(openLevel.loadReport.parts);
  for (int i = 1; i <= modConfig.MaterialSize; ++i)
    std::fill_n(materialMapper->grid[i].begin(), modConfig.MaterialSize,
                materialMapper->currentMaterial);
  SetReplaced(LevelPart::MaterialMap);
  MarkMaterialsChanged();
  editor.levelModified = true;
}

void UpdateMaterialBrush() {
  materialMapper->brushCells.clear();
  if (materialMapper->pickMissed) return;
  const Vector3& centre = materialMapper->pick;
  ForBrushedCells(BrushWay::At(centre.x, centre.z), [](int i, int j) {
    materialMapper->brushCells.push_back({i, j});
  });
}

std::vector<Cell> TakePaintedCells() { return std::exchange(materialMapper->paintedCells, {}); }

std::span<const Cell> MaterialBrushCells() { return materialMapper->brushCells; }

std::uint32_t ShownMaterial(int i, int j) {
  const std::uint32_t material = materialMapper->grid[i][j];
  return material < kMaterialCount ? material : 0;
}

}  // namespace mw
