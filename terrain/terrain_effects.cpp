#include <algorithm>
#include <vector>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "terrain/point_selection.h"
#include "terrain/terrain.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_render.h"

namespace mw {
namespace {

std::vector<Cell> brushCells;

// low < value <= high.
bool Within(float value, float low, float high) { return low < value && value <= high; }

// Calls act(i, j) for the visible cells within `reach` cells of the pick point, in drawing order.
template <typename Act>
void ForVisibleCellsAroundPick(int reach, Act act) {
  const auto [row, column] = CellOf(pick.x, pick.z);
  const int firstRow = std::max(row - reach, viewSquare.ViewRowStart + 1);
  const int lastRow = std::min(row + reach, viewSquare.ViewRowEnd);
  const int firstColumn = std::max(column - reach, viewSquare.ViewColStart);
  const int lastColumn = std::min(column + reach, viewSquare.ViewColEnd - 1);
  for (int i = lastRow; i >= firstRow; --i) {
    for (int j = firstColumn; j <= lastColumn; ++j) {
      if (CellMap::IsCornerVisible(i, j)) act(i, j);
    }
  }
}

void SelectPickedVertex(int i, int j) {
  TerrainVertex& vertex = terrain->grid[i][j];
  const float half = CellSize / 2;
  if (!pick.pending || !Within(vertex.x, pick.x - half, pick.x + half) ||
      !Within(vertex.z, pick.z - half, pick.z + half))
    return;
  vertex.selected = editor.ctrlHeld || !vertex.selected;
  GrowSelectionBox(i, j);
  ComputeSmoothingWeights();
  pick.pending = false;
}

// Takes the height of the cell under the cursor.
void SampleHeight(int i, int j) {
  const TerrainVertex& vertex = terrain->grid[i][j];
  if (!Within(vertex.x, pick.x, pick.x + CellSize) || !Within(vertex.z, pick.z - CellSize, pick.z))
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
  if (!Within(vertex.x, pick.x - outer, pick.x + outer) ||
      !Within(vertex.z, pick.z - outer, pick.z + outer))
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
  if (!terrain) return;
  if (pick.pending) ForVisibleCellsAroundPick(2, SelectPickedVertex);
  if (terrain->tool == TerrainTool::Flatten)
    ForVisibleCellsAroundPick(terrain->brushSize + 2, SampleOrFlatten);
}

std::span<const Cell> BrushCells() { return brushCells; }

std::array<float, 4> BrushColour() {
  if (terrain->flattenSampled && !editor.ctrlHeld) return {1, 0, 0, 1};
  return {0, 0, 1, 1};
}

}  // namespace mw
