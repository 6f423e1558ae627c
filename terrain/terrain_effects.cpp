#include <cmath>
#include <vector>

#include "core/editor_state.h"
#include "terrain/brush_edge.h"
#include "terrain/brush_way.h"
#include "terrain/ground_history.h"
#include "terrain/terrain.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_render.h"
#include "terrain/terrain_tools.h"
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

bool HasFadingEdge() { return terrain.brushEdge != BrushEdge::Hard; }

void ShowFlattenBrush(int i, int j) {
  const TerrainVertex& vertex = terrain.grid[i][j];
  if (HasFadingEdge()) {
    const BrushWay here = BrushWay::At(terrain.pick.x, terrain.pick.z);
    const float half = terrain.cellSize / 2;  // from the vertex to the middle of its cell
    if (ShareWithin(here, vertex.x - half, vertex.z + half, BrushRadius()) > 0)
      terrain.flattenCells.push_back({i, j});
    return;
  }
  const auto size = static_cast<float>(terrain.brushSize);
  const float outer = (size + 1) * terrain.cellSize, inner = size * terrain.cellSize;
  if (IsWithin(vertex.x, terrain.pick.x - inner, terrain.pick.x + outer) &&
      IsWithin(vertex.z, terrain.pick.z - outer, terrain.pick.z + inner))
    terrain.flattenCells.push_back({i, j});
}

void LevelVertex(int i, int j, float height) {
  KeepHeight(i, j);
  terrain.grid[i][j].h = height;
  MarkTerrainChanged(i, j, i, j);
  ShowOnMiniMap(i, j);
}

// A square.
bool LevelHard(const BrushWay& way) {
  bool changed = false;
  const float outer = BrushRadius();
  ForVerticesAlong(way, terrain.brushSize + 2, [&](int i, int j) {
    const TerrainVertex& vertex = terrain.grid[i][j];
    if (vertex.h != terrain.flattenHeight &&
        Reaches(way, {vertex.x - outer, vertex.x + outer}, {vertex.z - outer, vertex.z + outer}) &&
        IsDrawnCell(i, j)) {
      LevelVertex(i, j, terrain.flattenHeight);
      changed = true;
    }
  });
  return changed;
}

// A disc. How near a vertex comes to the level depends on how strong the brush got there in this
// stroke, not on how often it acted.
bool LevelFading(const BrushWay& way) {
  bool changed = false;
  ForVerticesAlong(way, terrain.brushSize + 2, [&, radius = BrushRadius()](int i, int j) {
    const TerrainVertex& vertex = terrain.grid[i][j];
    const float strength = GreatestStrength(terrain.brushEdge, way, vertex.x, vertex.z, radius);
    if (strength <= 0 || !IsDrawnCell(i, j)) return;
    FadedVertex& faded =
        terrain.stroke.faded.try_emplace(i * kGridCapacity + j, FadedVertex{vertex.h, 0})
            .first->second;
    if (strength <= faded.strength) return;
    faded.strength = strength;
    const float height = std::lerp(faded.height, terrain.flattenHeight, strength);
    if (height == vertex.h) return;
    LevelVertex(i, j, height);
    changed = true;
  });
  return changed;
}

}  // namespace

void UpdateFlattenBrush() {
  terrain.flattenCells.clear();
  if (!HasUsableTerrain() || terrain.tool != TerrainTool::Flatten || terrain.pick.missed) return;
  const auto act = IsSampling() ? SampleHeight : ShowFlattenBrush;
  ForVisibleCellsAround(terrain.pick.x, terrain.pick.z, terrain.brushSize + 2, act);
}

bool FlattenAlong(const BrushWay& way) {
  if (IsSampling()) {
    UpdateFlattenBrush();
    terrain.stroke.faded.clear();
  }
  if (IsSampling()) return false;
  KeepHeights(BlockAround(way, terrain.brushSize + 2));
  return HasFadingEdge() ? LevelFading(way) : LevelHard(way);
}

std::span<const Cell> BrushCells() { return terrain.flattenCells; }

std::array<float, 4> BrushColour() {
  if (terrain.flattenSampled && !editor.ctrlHeld) return {1, 0, 0, 1};
  return {0, 0, 1, 1};
}

}  // namespace mw
