// The cells that a tool's brush can act on: those around a point that the current frame draws.
// Used by the brushes of the mappers, which act only on what the user sees.
#pragma once

#include <algorithm>

#include "terrain/cell_draw_list.h"
#include "terrain/terrain.h"

namespace mw {

// low < value <= high.
inline bool IsWithin(float value, float low, float high) { return low < value && value <= high; }

// Whether the current frame draws the cell.
inline bool IsDrawnCell(int i, int j) {
  return i > terrain.viewSquare.ViewRowStart && i <= terrain.viewSquare.ViewRowEnd &&
         j >= terrain.viewSquare.ViewColStart && j < terrain.viewSquare.ViewColEnd &&
         CellMap::IsCornerVisible(i, j);
}

// Calls act(i, j) for the visible cells of the view square within `reach` cells of the world
// position, in drawing order.
template <typename Act>
void ForVisibleCellsAround(float x, float z, int reach, Act act) {
  const auto [row, column] = CellOf(x, z);
  const int firstRow = std::max(row - reach, terrain.viewSquare.ViewRowStart + 1);
  const int lastRow = std::min(row + reach, terrain.viewSquare.ViewRowEnd);
  const int firstColumn = std::max(column - reach, terrain.viewSquare.ViewColStart);
  const int lastColumn = std::min(column + reach, terrain.viewSquare.ViewColEnd - 1);
  for (int i = lastRow; i >= firstRow; --i) {
    for (int j = firstColumn; j <= lastColumn; ++j) {
      if (CellMap::IsCornerVisible(i, j)) act(i, j);
    }
  }
}

}  // namespace mw
