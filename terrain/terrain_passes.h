// The single steps of the terrain pass, for the pass itself and for those who draw its cells
// another way (the plain reference of tests and benchmarks).
#pragma once

#include <array>
#include <span>

#include "terrain/cell_draw_list.h"
#include "terrain/terrain.h"

namespace mw {

// Red, green, blue, alpha, 0 ... 1.
const std::array<float, 4>& TerrainBaseColour();

// Lets a pending pick and the Flatten tool act on the cells around the pick point, where those are
// drawn. Remembers which cells lie in the brush.
void ApplyTerrainEffects();
std::span<const Cell> BrushCells();
// Red once a height was sampled, blue before and while Ctrl samples anew.
std::array<float, 4> BrushColour();

// The visible cells of the Terrain Mapper with brush, grid and point markers.
void DrawTerrainCells();
// A short line on every visible vertex, coloured by selection and smoothing weight.
void DrawPointMarkers(const CellMap& cells);
// The sphere around the pick point of the sculpting tools.
void DrawBrushSphere();
// The brush's edge on the ground around the pick point, of the same tools.
void DrawBrushOutline();
// A post at every pending road point, and the lines between their tops.
void DrawRoadPosts();

// Paints while the button is held: acts on the visible cells in the brush of the Material Mapper,
// which are then known.
void ApplyMaterialBrush();
std::span<const Cell> MaterialBrushCells();
// The visible cells of the Material Mapper with their materials, brush and grid.
void DrawMaterialCells();
// The index that the lists know: materials above the last one show as "Default".
std::uint32_t ShownMaterial(int i, int j);

// Free what the steps keep in GL.
void ReleaseTerrainCells();
void ReleaseMaterialCells();
void ReleaseTerrainMarks();

}  // namespace mw
