#include <vector>

#include "core/editor_state.h"
#include "terrain/brush_way.h"
#include "terrain/ground_history.h"
#include "terrain/terrain.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_render.h"
#include "terrain/visible_cells.h"

namespace mw {
namespace {

bool IsSampling() { return !terrain.flattenSampled || editor.ctrlHeld; }

// Takes the height of the cell under the cursor.
void SampleHeight(int i, int j) {
  const TerrainVertex& vertex = terrain.grid[i][j];
  if (!IsWithin(vertex.x, terrain.pick.x, terrain.pick.x + terrain.cellSize) ||
      !IsWithin(vertex.z, terrain.pick.z - terrain.cellSize, terrain.pick.z))
    return;
  terrain.flattenSampled = 1;
  terrain.flattenHeight = vertex.h;
  terrain.flattenCells.push_back({i, j});
}

void ShowFlattenBrush(int i, int j) {
  const TerrainVertex& vertex = terrain.grid[i][j];
  const auto size = static_cast<float>(terrain.brushSize);
  const float outer = (size + 1) * terrain.cellSize, inner = size * terrain.cellSize;
  if (IsWithin(vertex.x, terrain.pick.x - inner, terrain.pick.x + outer) &&
      IsWithin(vertex.z, terrain.pick.z - outer, terrain.pick.z + inner))
    terrain.flattenCells.push_back({i, j});
}

void LevelVertex(int i, int j) {
  KeepHeight(i, j);
  terrain.grid[i][j].h = terrain.flattenHeight;
  MarkTerrainChanged(i, j, i, j);
  ShowOnMiniMap(i, j);
}

}  // namespace

void UpdateFlattenBrush() {
  terrain.flattenCells.clear();
  if (!HasUsableTerrain() || terrain.tool != TerrainTool::Flatten || terrain.pick.missed) return;
  const auto act = IsSampling() ? SampleHeight : ShowFlattenBrush;
  ForVisibleCellsAround(terrain.pick.x, terrain.pick.z, terrain.brushSize + 2, act);
}

bool FlattenAlong(const BrushWay& way) {
  if (IsSampling()) UpdateFlattenBrush();
  if (IsSampling()) return false;
  bool changed = false;
  const float outer = static_cast<float>(terrain.brushSize + 1) * terrain.cellSize;
  KeepHeights(BlockAround(way, terrain.brushSize + 2));
  ForVerticesAlong(way, terrain.brushSize + 2, [&](int i, int j) {
    const TerrainVertex& vertex = terrain.grid[i][j];
    if (vertex.h != terrain.flattenHeight &&
        Reaches(way, {vertex.x - outer, vertex.x + outer}, {vertex.z - outer, vertex.z + outer}) &&
        IsDrawnCell(i, j)) {
      LevelVertex(i, j);
      changed = true;
    }
  });
  return changed;
}

std::span<const Cell> BrushCells() { return terrain.flattenCells; }

std::array<float, 4> BrushColour() {
  if (terrain.flattenSampled && !editor.ctrlHeld) return {1, 0, 0, 1};
  return {0, 0, 1, 1};
}

}  // namespace mw
