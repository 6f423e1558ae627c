// The Material Mapper: a square brush that paints ground materials where the mouse points, filling,
// and the mode's picture. Its settings are in the materialMapper record. Used by the shell and by
// the mode's toolbar.
#pragma once

namespace mw {

inline constexpr int kMaxMaterialBrushSize = 9;  // the smallest has 1

// The point of the ground under view pixel (x, y) becomes the brush's. Nothing changes where the
// pixel shows no point.
void PickMaterialPoint(int x, int y);
// While it is on, each frame gives the cells in the brush the current material.
void SetPainting(bool on);

// Settings outside their range become the nearest one in it.
void SetMaterialBrushSize(int size);  // paints 2 size - 1 cells per side
void SetCurrentMaterial(int material);
void ToggleSurfaceView();

// Every cell of the level becomes the current material, after a question.
void FillWithMaterial();

// The mode's whole frame: painting, the cells with their materials, the brush in red, grid, placed
// objects on request, water.
void RenderMaterialMode();

}  // namespace mw
