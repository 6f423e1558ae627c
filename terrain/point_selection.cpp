#include "terrain/point_selection.h"

#include <algorithm>
#include <cmath>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "terrain/terrain.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

// Calls act(i, j) for all vertices in the selection box, including those that join it meanwhile in
// rows and columns still to come.
template <typename Act>
void ForSelectionBox(Act act) {
  for (int i = selectionBox.SelMinRow; i <= selectionBox.SelMaxRow; ++i) {
    for (int j = selectionBox.SelMinCol; j <= selectionBox.SelMaxCol; ++j) act(i, j);
  }
}

struct WholeRange {
  int first, last;
};

// The rows or columns within the smoothing range of one, limited to the grid.
WholeRange WithinSmoothingRange(int index) {
  const auto at = static_cast<float>(index);
  return {std::max(0, static_cast<int>(at - terrain->smoothingRange)),
          std::min(modConfig.MaterialSize, static_cast<int>(at + terrain->smoothingRange))};
}

void WeighNeighbour(const TerrainVertex& selected, TerrainVertex& neighbour) {
  const float distance = std::trunc(std::hypot(neighbour.x - selected.x, neighbour.z - selected.z));
  if (distance <= CellSize * terrain->smoothingRange)
    neighbour.weight = std::trunc(distance / CellSize);
}

void WeighNeighboursOf(int i, int j) {
  const WholeRange rows = WithinSmoothingRange(i), columns = WithinSmoothingRange(j);
  for (int column = columns.first; column <= columns.last; ++column) {
    for (int row = rows.first; row <= rows.last; ++row) {
      TerrainVertex& neighbour = terrain->grid[row][column];
      if (neighbour.selected) continue;
      GrowSelectionBox(row, column);
      WeighNeighbour(terrain->grid[i][j], neighbour);
    }
  }
}

void MoveVertex(int i, int j, float delta) {
  const TerrainVertex& vertex = terrain->grid[i][j];
  if (vertex.selected) SetHeight(i, j, vertex.h + delta);
  if (terrain->autoSmoothing && vertex.weight > 0) SetHeight(i, j, AverageOfNeighbours(i, j));
}

// From a to b, or from b to a.
bool IsBetween(float value, float a, float b) {
  return std::min(a, b) <= value && value <= std::max(a, b);
}

}  // namespace

void GrowSelectionBox(int i, int j) {
  selectionBox.SelMinRow = std::min(selectionBox.SelMinRow, i);
  selectionBox.SelMaxRow = std::max(selectionBox.SelMaxRow, i);
  selectionBox.SelMinCol = std::min(selectionBox.SelMinCol, j);
  selectionBox.SelMaxCol = std::max(selectionBox.SelMaxCol, j);
}

void SelectRectangle(int x0, int y0, int x1, int y1) {
  if (!HasUsableTerrain()) return;
  const auto first = WorldPointUnderCursor(x0, y0), second = WorldPointUnderCursor(x1, y1);
  if (!first || !second) return;
  for (int i = 1; i <= modConfig.MaterialSize; ++i) {
    for (int j = 0; j < modConfig.MaterialSize; ++j) {
      TerrainVertex& vertex = terrain->grid[i][j];
      if (!IsBetween(vertex.x, first->x, second->x) || !IsBetween(vertex.z, first->z, second->z))
        continue;
      vertex.selected = !vertex.selected;
      GrowSelectionBox(i, j);
    }
  }
  ComputeSmoothingWeights();
}

void MoveSelection(float delta) {
  if (!HasUsableTerrain()) return;
  ForSelectionBox([delta](int i, int j) { MoveVertex(i, j, delta); });
  editor.levelModified = true;
  hooks.invalidateMiniMap();
}

void ClearSelection() {
  if (!HasUsableTerrain()) return;
  for (int i = 0; i <= modConfig.MaterialSize; ++i) {
    for (int j = 0; j <= modConfig.MaterialSize; ++j) {
      terrain->grid[i][j].selected = 0;
      terrain->grid[i][j].weight = 0;
    }
  }
  selectionBox = SelectionBox{};
}

void ComputeSmoothingWeights() {
  if (!HasUsableTerrain()) return;
  ForSelectionBox([](int i, int j) { terrain->grid[i][j].weight = 0; });
  ForSelectionBox([](int i, int j) {
    if (terrain->grid[i][j].selected) WeighNeighboursOf(i, j);
  });
}

}  // namespace mw
