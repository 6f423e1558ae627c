#include "terrain/point_selection.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/editor_state.h"
#include "core/history.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "terrain/brush_way.h"
#include "terrain/ground_ray.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"
#include "terrain/terrain_tools.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

// Calls act(i, j) for all vertices in the selection box, including those that join it meanwhile in
// rows and columns still to come.
template <typename Act>
void ForSelectionBox(Act act) {
  for (int i = terrain.selectionBox.SelMinRow; i <= terrain.selectionBox.SelMaxRow; ++i) {
    for (int j = terrain.selectionBox.SelMinCol; j <= terrain.selectionBox.SelMaxCol; ++j)
      act(i, j);
  }
}

struct WholeRange {
  int first, last;
};

// The rows or columns within the smoothing range of one, limited to the grid.
WholeRange WithinSmoothingRange(int index) {
  const auto at = static_cast<float>(index);
  return {std::max(0, static_cast<int>(at - terrain.smoothingRange)),
          std::min(modConfig.MaterialSize, static_cast<int>(at + terrain.smoothingRange))};
}

void WeighNeighbour(const TerrainVertex& selected, TerrainVertex& neighbour) {
  const float distance = std::trunc(std::hypot(neighbour.x - selected.x, neighbour.z - selected.z));
  if (distance <= terrain.cellSize * terrain.smoothingRange)
    neighbour.weight = std::trunc(distance / terrain.cellSize);
}

void WeighNeighboursOf(int i, int j) {
  const WholeRange rows = WithinSmoothingRange(i), columns = WithinSmoothingRange(j);
  for (int column = columns.first; column <= columns.last; ++column) {
    for (int row = rows.first; row <= rows.last; ++row) {
      TerrainVertex& neighbour = terrain.grid[row][column];
      if (neighbour.selected) continue;
      GrowSelectionBox(row, column);
      WeighNeighbour(terrain.grid[i][j], neighbour);
    }
  }
}

void MoveVertex(int i, int j, float delta) {
  const TerrainVertex& vertex = terrain.grid[i][j];
  if (vertex.selected) SetHeight(i, j, vertex.h + delta);
  if (terrain.autoSmoothing && vertex.weight > 0) SetHeight(i, j, AverageOfNeighbours(i, j));
}

// Calls act(i, j) for the vertices whose squares, one cell wide, the way passes.
template <typename Act>
void ForVerticesOn(const BrushWay& way, Act act) {
  const float half = terrain.cellSize / 2;
  ForVerticesAlong(way, 1, [&](int i, int j) {
    const TerrainVertex& vertex = terrain.grid[i][j];
    if (Reaches(way, {vertex.x - half, vertex.x + half}, {vertex.z - half, vertex.z + half}))
      act(i, j);
  });
}

bool IsInRectangle(const ViewPoint& point, const ViewPoint& from, const ViewPoint& to) {
  return from.x <= point.x && point.x <= to.x && from.y <= point.y && point.y <= to.y;
}

}  // namespace

void GrowSelectionBox(int i, int j) {
  terrain.selectionBox.SelMinRow = std::min(terrain.selectionBox.SelMinRow, i);
  terrain.selectionBox.SelMaxRow = std::max(terrain.selectionBox.SelMaxRow, i);
  terrain.selectionBox.SelMinCol = std::min(terrain.selectionBox.SelMinCol, j);
  terrain.selectionBox.SelMaxCol = std::max(terrain.selectionBox.SelMaxCol, j);
}

void ToggleVertexUnderCursor(int x, int y) {
  PickUnderCursor(x, y);
  if (!HasUsableTerrain() || terrain.pick.missed) return;
  ForVerticesOn(BrushWay::At(terrain.pick.x, terrain.pick.z), [](int i, int j) {
    terrain.grid[i][j].selected = !terrain.grid[i][j].selected;
    GrowSelectionBox(i, j);
  });
  ComputeSmoothingWeights();
}

void StartSelecting(int x, int y) {
  terrain.lastSelected.reset();
  SelectOnTheWayTo(x, y);
}

void SelectOnTheWayTo(int x, int y) {
  PickUnderCursor(x, y);
  if (!HasUsableTerrain() || terrain.pick.missed) {
    terrain.lastSelected.reset();
    return;
  }
  const Vector3 to{terrain.pick.x, terrain.pick.y, terrain.pick.z};
  const bool goesOn = terrain.lastSelected && IsWayInSight(*terrain.lastSelected, to);
  ForVerticesOn(BrushWay::Between(goesOn ? *terrain.lastSelected : to, to), [](int i, int j) {
    terrain.grid[i][j].selected = 1;
    GrowSelectionBox(i, j);
  });
  terrain.lastSelected = to;
  ComputeSmoothingWeights();
}

void SelectRectangle(int x0, int y0, int x1, int y1) {
  if (!HasUsableTerrain()) return;
  const ViewPoint from{static_cast<float>(x0), static_cast<float>(y0)};
  const ViewPoint to{static_cast<float>(x1), static_cast<float>(y1)};
  for (int i = terrain.viewSquare.ViewRowStart + 1; i <= terrain.viewSquare.ViewRowEnd; ++i) {
    for (int j = terrain.viewSquare.ViewColStart; j < terrain.viewSquare.ViewColEnd; ++j) {
      TerrainVertex& vertex = terrain.grid[i][j];
      const auto shown = ViewPointOf({vertex.x, vertex.h * modConfig.HeightScale, vertex.z});
      if (!shown || !IsInRectangle(*shown, from, to)) continue;
      vertex.selected = !vertex.selected;
      GrowSelectionBox(i, j);
    }
  }
  ComputeSmoothingWeights();
}

void MoveSelection(float delta) {
  if (!HasUsableTerrain()) return;
  const HistoryStep step("Moving Points", HistoryStep::Run);
  ForSelectionBox([delta](int i, int j) { MoveVertex(i, j, delta); });
  editor.levelModified = true;
  hooks.invalidateMiniMap();
}

void ClearSelection() {
  if (!HasUsableTerrain()) return;
  EndHistoryRun();
  for (int i = 0; i <= modConfig.MaterialSize; ++i) {
    for (int j = 0; j <= modConfig.MaterialSize; ++j) {
      terrain.grid[i][j].selected = 0;
      terrain.grid[i][j].weight = 0;
    }
  }
  terrain.selectionBox = SelectionBox{};
}

void ComputeSmoothingWeights() {
  if (!HasUsableTerrain()) return;
  EndHistoryRun();
  ForSelectionBox([](int i, int j) { terrain.grid[i][j].weight = 0; });
  ForSelectionBox([](int i, int j) {
    if (terrain.grid[i][j].selected) WeighNeighboursOf(i, j);
  });
}

}  // namespace mw
