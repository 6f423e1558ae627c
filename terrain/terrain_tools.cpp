#include "terrain/terrain_tools.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "terrain/brush_edge.h"
#include "terrain/ground_history.h"
#include "terrain/point_selection.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_render.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

bool IsWithin(int value, int low, int high) { return low <= value && value <= high; }

// The brush still acts when its centre lies this side of the view square's edge plus its size.
bool IsBrushInReach(Cell centre) {
  const int b = terrain.brushSize;
  return IsWithin(centre.i, terrain.viewSquare.ViewRowStart - b,
                  terrain.viewSquare.ViewRowEnd + b) &&
         IsWithin(centre.j, terrain.viewSquare.ViewColStart - b,
                  terrain.viewSquare.ViewColEnd + b) &&
         IsWithin(centre.i, 0, modConfig.MaterialSize) &&
         IsWithin(centre.j, 0, modConfig.MaterialSize);
}

// Calls act(i, j, share) for the vertices in the brush, with the share of the way that they are in
// it; where the brush's edge fades, as much less as it is weaker there. To a hard edge distances
// count in whole units.
template <typename Act>
void ForBrushedVertices(const BrushWay& way, Act act) {
  const float radius = BrushRadius() + (terrain.brushEdge == BrushEdge::Hard ? 1.0f : 0.0f);
  KeepHeights(BlockAround(way, terrain.brushSize));
  ForVerticesAlong(way, terrain.brushSize, [&](int i, int j) {
    const TerrainVertex& vertex = terrain.grid[i][j];
    const float share = MeanStrength(terrain.brushEdge, way, vertex.x, vertex.z, radius);
    if (share > 0) act(i, j, share);
  });
}

void RaiseAlong(const BrushWay& way, float change) {
  ForBrushedVertices(way, [change](int i, int j, float share) {
    SetHeight(i, j, terrain.grid[i][j].h + change * share);
  });
}

// Reads what it has just written, so the order shows in the heights.
void SmoothAlong(const BrushWay& way) {
  if (terrain.brushEdge == BrushEdge::Hard) {
    ForBrushedVertices(way,
                       [](int i, int j, float) { SetHeight(i, j, AverageOfNeighbours(i, j)); });
    return;
  }
  ForBrushedVertices(way, [&way, radius = BrushRadius()](int i, int j, float) {
    const TerrainVertex& vertex = terrain.grid[i][j];
    const float strength = GreatestStrength(terrain.brushEdge, way, vertex.x, vertex.z, radius);
    SetHeight(i, j, std::lerp(vertex.h, AverageOfNeighbours(i, j), strength));
  });
}

BrushEdge NextEdge(BrushEdge edge) {
  return static_cast<BrushEdge>((static_cast<std::size_t>(edge) + 1) % kBrushEdgeNames.size());
}

}  // namespace

void SelectTool(TerrainTool tool) {
  if (!terrain.grid) return;
  terrain.tool = tool;
  if (tool != TerrainTool::PointManipulation) ClearSelection();
  if (tool == TerrainTool::Road) terrain.roadPointCount = 0;
}

void ToggleAutoSmoothing() { terrain.autoSmoothing = !terrain.autoSmoothing; }

std::optional<TerrainTool> ToolOf(TerrainControl control) {
  switch (control) {
    case TerrainControl::PointManipulation:
      return TerrainTool::PointManipulation;
    case TerrainControl::Carving:
      return TerrainTool::Carving;
    case TerrainControl::Raising:
      return TerrainTool::Raising;
    case TerrainControl::Smoothing:
      return TerrainTool::Smoothing;
    case TerrainControl::Flatten:
      return TerrainTool::Flatten;
    case TerrainControl::Road:
      return TerrainTool::Road;
    default:
      return std::nullopt;
  }
}

void PressTerrainControl(TerrainControl control) {
  if (const auto tool = ToolOf(control)) SelectTool(*tool);
  if (control == TerrainControl::AutoSmoothing) ToggleAutoSmoothing();
  if (control == TerrainControl::BrushEdge) SetBrushEdge(NextEdge(terrain.brushEdge));
}

void SetSmoothingRange(int cells) {
  if (!terrain.grid) return;
  terrain.smoothingRange = static_cast<float>(std::clamp(cells, 1, kMaxSmoothingRange));
  ComputeSmoothingWeights();
}

void SetBrushSize(int cells) { terrain.brushSize = std::clamp(cells, 1, kMaxBrushSize); }

void SetBrushEdge(BrushEdge edge) {
  terrain.brushEdge = edge;
  terrain.stroke.faded.clear();
}

float BrushRadius() {
  const int cells = terrain.brushSize + (terrain.tool == TerrainTool::Flatten ? 1 : 0);
  return static_cast<float>(cells) * terrain.cellSize;
}

void SetPower(int power) {
  terrain.power = static_cast<float>(std::clamp(power, 1, kMaxToolPower));
}

bool UsesBrushSize(TerrainTool tool) { return tool != TerrainTool::PointManipulation; }

bool UsesPower(TerrainTool tool) {
  return tool == TerrainTool::Carving || tool == TerrainTool::Raising;
}

bool IsBrush(TerrainTool tool) {
  return tool != TerrainTool::PointManipulation && tool != TerrainTool::Road;
}

void PickUnderCursor(int x, int y) {
  const auto point = GroundUnderCursor(x, y);
  terrain.pick.missed = !point;
  if (point) terrain.pick = {point->x, point->y, point->z, false};
}

void BrushAlong(const BrushWay& way, float seconds) {
  if (!HasUsableTerrain()) return;
  const Cell centre = CellOf(way.toX, way.toZ);
  if (!IsBrush(terrain.tool) || !IsBrushInReach(centre)) return;
  if (terrain.tool == TerrainTool::Carving) RaiseAlong(way, -seconds * terrain.power);
  if (terrain.tool == TerrainTool::Raising) RaiseAlong(way, seconds * terrain.power);
  if (terrain.tool == TerrainTool::Smoothing) SmoothAlong(way);
  if (terrain.tool == TerrainTool::Flatten && !FlattenAlong(way)) return;
  editor.levelModified = true;
  terrain.pick.y = modConfig.HeightScale * terrain.grid[centre.i][centre.j].h;
  hooks.invalidateMiniMap();
}

}  // namespace mw
