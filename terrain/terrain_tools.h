// The tools of the Terrain Mapper: which one is chosen and with what settings, the point under the
// cursor, and what the brush of the sculpting tools does. The held button is in brush_stroke.h, the
// selected points are in point_selection.h.
#pragma once

#include <array>
#include <optional>

#include "terrain/brush_way.h"
#include "terrain/terrain.h"
#include "terrain/terrain_controls.h"

namespace mw {

inline constexpr int kMaxBrushSize = 9;       // cells; the smallest brush and range have 1
inline constexpr int kMaxSmoothingRange = 9;  // cells
inline constexpr int kMaxToolPower = 10;      // height units per second; the weakest has 1

inline constexpr std::array kBrushEdgeNames{"Hard", "Smooth", "Linear"};  // by BrushEdge

// Every tool but Point Manipulation drops the point selection; the Road tool starts without points.
void SelectTool(TerrainTool tool);
void ToggleAutoSmoothing();
// The tool that a button of the mapper's toolbar chooses, if it chooses one.
std::optional<TerrainTool> ToolOf(TerrainControl control);
// Buttons of the toolbar, and what has a key like one: chooses the button's tool, switches
// auto-smoothing, or goes on to the next edge of the brush. Other controls do nothing here.
void PressTerrainControl(TerrainControl control);
// Settings outside their range become the nearest one in it.
void SetSmoothingRange(int cells);
void SetBrushSize(int cells);
void SetPower(int power);
void SetBrushEdge(BrushEdge edge);

// World units from the middle of the chosen tool's brush to its edge; for Flatten, whose brush is a
// square with a hard edge, half its side.
float BrushRadius();

// Which settings the chosen tool heeds; the others cannot be changed on the toolbar.
bool UsesBrushSize(TerrainTool tool);
bool UsesPower(TerrainTool tool);

// The tools that act while the left button is held.
bool IsBrush(TerrainTool tool);

// Makes the point of the ground under view pixel (x, y) the pick point; where there is none the
// pick counts as missed, and the tools rest.
void PickUnderCursor(int x, int y);

// One action of the brush on its way: Carving and Raising change heights by seconds x power, spread
// over the way; Smoothing makes one pass, Flatten levels. Ends with the pick point on the ground.
void BrushAlong(const BrushWay& way, float seconds);

}  // namespace mw
