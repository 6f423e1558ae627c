#include "terrain/terrain_tools.h"

#include <algorithm>
#include <cmath>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "terrain/point_selection.h"
#include "terrain/terrain_render.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

bool IsWithin(int value, int low, int high) { return low <= value && value <= high; }

// The brush still acts when its centre lies this side of the view square's edge plus its size.
bool IsBrushInReach(Cell centre) {
  const int b = terrain->brushSize;
  return IsWithin(centre.i, viewSquare.ViewRowStart - b, viewSquare.ViewRowEnd + b) &&
         IsWithin(centre.j, viewSquare.ViewColStart - b, viewSquare.ViewColEnd + b) &&
         IsWithin(centre.i, 0, modConfig.MaterialSize) &&
         IsWithin(centre.j, 0, modConfig.MaterialSize);
}

bool IsInBrush(int i, int j) {
  if (!IsWithin(i, 1, modConfig.MaterialSize) || !IsWithin(j, 0, modConfig.MaterialSize - 1))
    return false;
  const TerrainVertex& vertex = terrain->grid[i][j];
  const float distance = std::hypot(vertex.x - pick.x, vertex.z - pick.z);
  return std::trunc(distance) <= static_cast<float>(terrain->brushSize) * CellSize;
}

void BrushVertex(int i, int j) {
  const float h = terrain->grid[i][j].h;
  const float step = editor.frameSeconds * terrain->power;
  switch (terrain->tool) {
    case TerrainTool::Carving:
      SetHeight(i, j, h - step);
      break;
    case TerrainTool::Raising:
      SetHeight(i, j, h + step);
      break;
    case TerrainTool::Smoothing:
      SetHeight(i, j, AverageOfNeighbours(i, j));
      break;
    case TerrainTool::Flatten:
      terrain->flattenActive = 1;
      break;
    case TerrainTool::PointManipulation:
    case TerrainTool::Road:
      break;
  }
}

// Smoothing reads what it has just written, so the order shows in the heights.
void BrushAround(Cell centre) {
  const int b = terrain->brushSize;
  for (int j = centre.j - b; j <= centre.j + b + 1; ++j) {
    for (int i = centre.i - b; i <= centre.i + b + 1; ++i) {
      if (IsInBrush(i, j)) BrushVertex(i, j);
    }
  }
}

// How far time has run ahead of the strokes, and until when it was counted (milliseconds).
struct BrushTime {
  std::uint32_t ahead = 0, countedUntil = 0;
};
BrushTime brushTime;

// Whether the time of one more stroke has gone by. What passed between two holds of the button is
// worth one stroke at most.
bool IsStrokeDue() {
  constexpr float kPerSecond = 1000;
  const auto stroke = static_cast<std::uint32_t>(std::lround(editor.frameSeconds * kPerSecond));
  brushTime.ahead += std::min(editor.lastFrameTime - brushTime.countedUntil, stroke);
  brushTime.countedUntil = editor.lastFrameTime;
  if (brushTime.ahead < stroke) return false;
  brushTime.ahead -= stroke;
  return true;
}

}  // namespace

void SelectTool(TerrainTool tool) {
  if (!terrain) return;
  terrain->tool = tool;
  terrain->flattenActive = 0;
  if (tool != TerrainTool::PointManipulation) ClearSelection();
  if (tool == TerrainTool::Road) terrain->roadPointCount = 0;
}

void ToggleAutoSmoothing() {
  if (terrain) terrain->autoSmoothing = !terrain->autoSmoothing;
}

void SetSmoothingRange(int cells) {
  if (!terrain) return;
  terrain->smoothingRange = static_cast<float>(std::clamp(cells, 1, kMaxSmoothingRange));
  ComputeSmoothingWeights();
}

void SetBrushSize(int cells) {
  if (terrain) terrain->brushSize = std::clamp(cells, 1, kMaxBrushSize);
}

void SetPower(int power) {
  if (terrain) terrain->power = static_cast<float>(std::clamp(power, 1, kMaxToolPower));
}

bool UsesBrushSize(TerrainTool tool) { return tool != TerrainTool::PointManipulation; }

bool UsesPower(TerrainTool tool) {
  return tool == TerrainTool::Carving || tool == TerrainTool::Raising;
}

void PickUnderCursor(int x, int y, bool markPending) {
  const auto point = WorldPointUnderCursor(x, y);
  if (!point) return;
  pick = {point->x, point->y, point->z, pick.pending || markPending};
}

void ApplyBrush() {
  if (!HasUsableTerrain()) return;
  const Cell centre = CellOf(pick.x, pick.z);
  if (!IsBrushInReach(centre)) return;
  terrain->flattenActive = 0;
  BrushAround(centre);
  editor.levelModified = true;
  pick.y = modConfig.HeightScale * terrain->grid[centre.i][centre.j].h;
  hooks.invalidateMiniMap();
}

void ApplyHeldBrush() {
  if (!terrain) return;
  if (UsesPower(terrain->tool) && !IsStrokeDue()) return;
  ApplyBrush();
}

}  // namespace mw
