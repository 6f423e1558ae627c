#include "terrain/material_mapper.h"

#include <algorithm>
#include <vector>

#include "core/editor_state.h"
#include "data/mod_config.h"
#include "platform/prompts.h"
#include "terrain/material_map.h"
#include "terrain/terrain_passes.h"
#include "terrain/visible_cells.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

std::vector<Cell> brushCells;

bool IsDataCell(int i, int j) {
  return i >= 1 && i <= modConfig.MaterialSize && j >= 0 && j < modConfig.MaterialSize;
}

bool IsInBrush(int i, int j) {
  const Vector3& pick = materialMapper->pick;
  const TerrainVertex& corner = terrain->grid[i][j];
  const auto size = static_cast<float>(materialMapper->brushSize);
  const float inner = (size - 1) * materialMapper->materialCellSize;
  const float outer = size * materialMapper->materialCellSize;
  return IsDataCell(i, j) && IsWithin(corner.x, pick.x - inner, pick.x + outer) &&
         IsWithin(corner.z, pick.z - outer, pick.z + inner);
}

}  // namespace

void PickMaterialPoint(int x, int y) {
  if (!materialMapper) return;
  if (const auto point = WorldPointUnderCursor(x, y)) materialMapper->pick = *point;
}

void SetPainting(bool on) {
  if (materialMapper) materialMapper->painting = on;
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
  for (int i = 1; i <= modConfig.MaterialSize; ++i)
    std::fill_n(materialMapper->grid[i].begin(), modConfig.MaterialSize,
                materialMapper->currentMaterial);
  MarkMaterialsChanged();
  editor.levelModified = true;
}

void ApplyMaterialBrush() {
  brushCells.clear();
  const auto reach = static_cast<int>(materialMapper->brushSize) + 1;
  ForVisibleCellsAround(materialMapper->pick.x, materialMapper->pick.z, reach, [](int i, int j) {
    if (IsInBrush(i, j)) brushCells.push_back({i, j});
  });
  if (!materialMapper->painting || brushCells.empty()) return;
  for (const auto [i, j] : brushCells) materialMapper->grid[i][j] = materialMapper->currentMaterial;
  editor.levelModified = true;
}

std::span<const Cell> MaterialBrushCells() { return brushCells; }

std::uint32_t ShownMaterial(int i, int j) {
  const std::uint32_t material = materialMapper->grid[i][j];
  return material < kMaterialCount ? material : 0;
}

}  // namespace mw
