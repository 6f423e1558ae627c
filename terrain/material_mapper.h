// The Material Mapper: a square brush that paints ground materials where the mouse points, filling,
// and the mode's picture. Its settings are in the materialMapper record. Used by the shell and by
// the mode's toolbar.
#pragma once

#include "terrain/brush_way.h"

namespace mw {

inline constexpr int kMaxMaterialBrushSize = 9;  // the smallest has 1

// The point of the ground under view pixel (x, y) becomes the brush's; where there is none the
// brush is gone until there is one again. While painting is on, the way there is painted.
void PickMaterialPoint(int x, int y);
// The cells in the brush become the current material: at once where painting starts, and then
// wherever the picks lead.
void StartPainting();
void StopPainting();
// The next pick is a new place, no way leads there.
void LiftMaterialBrush();
// What painting does on a way of the brush: visible cells become the current material.
void PaintAlong(const BrushWay& way);

// Settings outside their range become the nearest one in it.
void SetMaterialBrushSize(int size);  // paints 2 size - 1 cells per side
void SetCurrentMaterial(int material);
void ToggleSurfaceView();

// Every cell of the level becomes the current material, after a question.
void FillWithMaterial();

// The mode's whole frame: the cells with their materials, the brush in red, grid, placed
// objects on request, water.
void RenderMaterialMode();

}  // namespace mw
