// The Material Mapper's ground drawn the obvious way, cell by cell in immediate mode: the reference
// picture of the tests and the baseline of the benchmarks.
#pragma once

namespace mw::plain {

// The cells with brush, icons or surface pictures, and grid. The view square must be up
// to date.
void DrawMaterialModeCells();

}  // namespace mw::plain
