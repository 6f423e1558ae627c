// The single steps of the terrain pass, for the pass itself and for those who draw its cells
// another way (the plain reference of tests and benchmarks).
#pragma once

#include <array>
#include <span>
#include <vector>

#include "terrain/brush_way.h"
#include "terrain/cell_draw_list.h"
#include "terrain/terrain.h"

namespace mw {

// Finds the cells in the brush of the Flatten tool at the pick point, where those are drawn; it
// takes the height of the one under the cursor when it has none yet, and while Ctrl is held.
void UpdateFlattenBrush();
// The Flatten tool levels a square of the cells that are drawn, at each place of its way. False
// when nothing was to be levelled.
bool FlattenAlong(const BrushWay& way);
std::span<const Cell> BrushCells();
// Red once a height was sampled, blue before and while Ctrl samples anew.
std::array<float, 4> BrushColour();

// The visible cells of the Terrain Mapper with brush, grid and point markers.
void DrawTerrainCells();
// A short line on every visible vertex, coloured by selection and smoothing weight.
void DrawPointMarkers(const CellMap& cells);
// The sphere around the pick point of the sculpting tools.
void DrawBrushSphere();
// The brush's edge on the ground around the pick point, of the same tools and of Flatten where the
// edge fades: then rings show how.
void DrawBrushOutline();
// A post at every pending road point, and the lines between their tops.
void DrawRoadPosts();

// Finds the visible cells in the brush of the Material Mapper.
void UpdateMaterialBrush();
std::span<const Cell> MaterialBrushCells();
// Hands over the cells that were painted since the last call.
std::vector<Cell> TakePaintedCells();
// The visible cells of the Material Mapper with their materials, brush and grid.
void DrawMaterialCells();
// The index that the lists know: materials above the last one show as "Default".
std::uint32_t ShownMaterial(int i, int j);

// Free what the steps keep in GL.
void ReleaseTerrainCells();
void ReleaseMaterialCells();
void ReleaseTerrainMarks();

}  // namespace mw
