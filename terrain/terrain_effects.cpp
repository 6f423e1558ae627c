#include <vector>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "terrain/point_selection.h"
#include "terrain/terrain.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_render.h"
#include "terrain/visible_cells.h"

namespace mw {
namespace {

std::vector<Cell> brushCells;

void SelectPickedVertex(int i, int j) {
  TerrainVertex& vertex = terrain->grid[i][j];
  const float half = CellSize / 2;
  if (!pick.pending || !IsWithin(vertex.x, pick.x - half, pick.x + half) ||
      !IsWithin(vertex.z, pick.z - half, pick.z + half))
    return;
  vertex.selected = editor.ctrlHeld || !vertex.selected;
  GrowSelectionBox(i, j);
  ComputeSmoothingWeights();
  pick.pending = false;
}

// Takes the height of the cell under the cursor.
void SampleHeight(int i, int j) {
  const TerrainVertex& vertex = terrain->grid[i][j];
  if (!IsWithin(vertex.x, pick.x, pick.x + CellSize) ||
      !IsWithin(vertex.z, pick.z - CellSize, pick.z))
    return;
  terrain->flattenSampled = 1;
  terrain->flattenHeight = vertex.h;
  brushCells.push_back({i, j});
}

void LevelVertex(int i, int j) {
  terrain->grid[i][j].h = terrain->flattenHeight;
  MarkTerrainChanged(i, j, i, j);
  ShowOnMiniMap(i, j);
  editor.levelModified = true;
  hooks.invalidateMiniMap();
}

void FlattenVertex(int i, int j) {
  const TerrainVertex& vertex = terrain->grid[i][j];
  const auto size = static_cast<float>(terrain->brushSize);
  const float outer = (size + 1) * CellSize, inner = size * CellSize;
  if (!IsWithin(vertex.x, pick.x - outer, pick.x + outer) ||
      !IsWithin(vertex.z, pick.z - outer, pick.z + outer))
    return;
  if (terrain->flattenActive && vertex.h != terrain->flattenHeight) LevelVertex(i, j);
  if (vertex.x > pick.x - inner && vertex.z <= pick.z + inner) brushCells.push_back({i, j});
}

void SampleOrFlatten(int i, int j) {
  if (!terrain->flattenSampled || editor.ctrlHeld)
    SampleHeight(i, j);
  else
    FlattenVertex(i, j);
}

}  // namespace

void ApplyTerrainEffects() {
  brushCells.clear();
  if (!HasUsableTerrain()) return;
  if (pick.pending) ForVisibleCellsAround(pick.x, pick.z, 2, SelectPickedVertex);
  if (terrain->tool == TerrainTool::Flatten)
    ForVisibleCellsAround(pick.x, pick.z, terrain->brushSize + 2, SampleOrFlatten);
}

std::span<const Cell> BrushCells() { return brushCells; }

std::array<float, 4> BrushColour() {
  if (terrain->flattenSampled && !editor.ctrlHeld) return {1, 0, 0, 1};
  return {0, 0, 1, 1};
}

}  // namespace mw
