// The tools of the Terrain Mapper: which one is chosen and with what settings, the point under the
// cursor, and the brush of the sculpting tools. The selected points are in point_selection.h.
#pragma once

#include "terrain/terrain.h"

namespace mw {

inline constexpr int kMaxBrushSize = 9;       // cells; the smallest brush and range have 1
inline constexpr int kMaxSmoothingRange = 9;  // cells
inline constexpr int kMaxToolPower = 10;      // height units per second; the weakest has 1

// Every tool but Point Manipulation drops the point selection; the Road tool starts without points.
void SelectTool(TerrainTool tool);
void ToggleAutoSmoothing();
// Settings outside their range become the nearest one in it.
void SetSmoothingRange(int cells);
void SetBrushSize(int cells);
void SetPower(int power);

// Which settings the chosen tool heeds; the others cannot be changed on the toolbar.
bool UsesBrushSize(TerrainTool tool);
bool UsesPower(TerrainTool tool);

// Makes the point of the ground under view pixel (x, y) the pick point; with markPending the next
// terrain pass selects the vertex there. Nothing changes where the pixel shows no point.
void PickUnderCursor(int x, int y, bool markPending);

// One stroke of the brush at the pick point, as long as the current frame: Carving and Raising
// change heights by frameSeconds x power, Smoothing levels, Flatten lets the terrain pass act.
void ApplyBrush();
// Once per frame while the left button is held: ApplyBrush, but never more frame seconds than have
// gone by. (A frame counts as a hundredth of a second when it took less.)
void ApplyHeldBrush();

}  // namespace mw
