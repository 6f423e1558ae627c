#include "terrain/roads.h"

#include <cmath>
#include <span>

#include "core/editor_state.h"
#include "core/history.h"
#include "core/hooks.h"
#include "core/vector3.h"
#include "data/mod_config.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

void DiscardRoadPoints() { terrain.roadPointCount = 0; }

bool IsInGrid(int i, int j) {
  return i >= 0 && j >= 0 && i <= modConfig.MaterialSize && j <= modConfig.MaterialSize;
}

void SetCornerHeight(int i, int j, float h) {
  if (IsInGrid(i, j)) SetHeight(i, j, h);
}

void LevelCell(int i, int j, float h) {
  SetCornerHeight(i, j, h);
  SetCornerHeight(i + 1, j, h);
  SetCornerHeight(i + 1, j + 1, h);
  SetCornerHeight(i, j + 1, h);
}

// The material of the cell between vertices (i, j) and (i + 1, j + 1) stands in row i + 1.
void PaintLevelledCell(int i, int j) {
  if (i < 0 || j < 0 || i >= modConfig.MaterialSize || j >= modConfig.MaterialSize) return;
  SetMaterial(static_cast<std::uint32_t>(terrain.roadMaterial), i + 1, j);
}

// One step of a road: the square of cells around its middle, all at one height.
void GradeSquare(Cell middle, float h) {
  const int half = terrain.roadWidth / 2;
  for (int j = middle.j - half; j <= middle.j + half; ++j) {
    for (int i = middle.i - half; i <= middle.i + half; ++i) {
      LevelCell(i, j, h);
      if (terrain.roadAutoMaterial) PaintLevelledCell(i, j);
    }
  }
}

// Steps are one cell long, measured with the heights as the third dimension; a segment without a
// whole step grades nothing.
void GradeSegment(const RoadPoint& a, const RoadPoint& b) {
  const Vector3 along{b.x - a.x, b.h - a.h, b.z - a.z};
  const int steps = static_cast<int>(along.Length() / terrain.cellSize);
  if (steps < 1) return;
  Vector3 step = along;
  step.Normalise();
  step = step * terrain.cellSize;
  const float rise = (b.h - a.h) / static_cast<float>(steps);
  for (int s = 0; s < steps; ++s) {
    const auto done = static_cast<float>(s);
    const Cell middle = CellOf(std::trunc(a.x + done * step.x), std::trunc(a.z + done * step.z));
    GradeSquare(middle, a.h + done * rise);
  }
}

}  // namespace

void AddRoadPoint(int x, int y) {
  if (const auto point = GroundUnderCursor(x, y)) AddRoadPointAt(point->x, point->z);
}

void AddRoadPointAt(float x, float z) {
  if (!HasUsableTerrain() || terrain.roadPointCount >= kMaxRoadPoints) return;
  const auto [i, j] = CellOf(x, z);
  if (i < 1 || j < 1 || i > modConfig.MaterialSize || j >= modConfig.MaterialSize) return;
  const TerrainVertex& corner = terrain.grid[i][j];
  terrain.roadPoints[static_cast<std::size_t>(terrain.roadPointCount++)] = {
      corner.x + terrain.cellSize / 2, corner.h, corner.z + terrain.cellSize / 2};
}

void FinishRoadPoints(const std::function<bool()>& confirm) {
  if (!terrain.grid) return;
  if (terrain.roadPointCount >= kMinRoadPoints && confirm()) {
    CreateRoad();
  } else {
    DiscardRoadPoints();
  }
}

void CreateRoad() {
  if (!HasUsableTerrain()) return;
  const auto points =
      std::span(terrain.roadPoints).first(static_cast<std::size_t>(terrain.roadPointCount));
  if (points.size() >= kMinRoadPoints) {
    const HistoryStep step("Road");
    for (std::size_t k = 0; k + 1 < points.size(); ++k) GradeSegment(points[k], points[k + 1]);
    editor.levelModified = true;
    hooks.invalidateMiniMap();
  }
  DiscardRoadPoints();
}

}  // namespace mw
