// The terrain drawn the obvious way, cell by cell in immediate mode: the reference picture of the
// tests and the baseline of the benchmarks.
#pragma once

namespace mw::plain {

// The Terrain Mapper's cells with brush colours, steep cells, grid and point markers. The view
// square must be up to date.
void DrawTerrainModeCells();
// The Object Mapper's cells.
void DrawPlainCells();

}  // namespace mw::plain
