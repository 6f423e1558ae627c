// Draws the terrain around the camera. The cells, their grid lines and colours are kept in buffers
// that follow every edit; a frame only chooses what is visible and draws each texture's cells with
// one call.
#pragma once

namespace mw {

inline constexpr float kViewSquareCells = 150.0f;  // width of the drawn square around the camera
inline constexpr float kCullMargin = -8.0f;        // world units outside the frustum still drawn

void SetTerrainBaseColour(int r, int g, int b, int a);  // 0 ... 255 each

// Every mode's frame begins with it: sets the view square, and the camera's height in its
// on-terrain mode.
void UpdateViewSquare();
// Draws the whole pass of the Terrain Mapper: cells with brush colours and steep cells, grid, point
// markers, placed objects on request, water, brush sphere, road posts.
void RenderTerrainMode();
// Draws the cells plainly, as the Object Mapper shows them: no brush, no steep colour, no markers.
void RenderPlainTerrain();
// Draws the animated water plane at WaterLevel, and moves its texture on by one step.
void RenderWater();
// Draws the same water for the modes that work on the ground: what is drawn after it shows through.
void RenderWaterOverGround();

// Tells that the heights of the vertices in rows i0 ... i1 and columns j0 ... j1 (inclusive)
// changed: their part of the buffers is written again before the next frame. SetHeight calls it.
void MarkTerrainChanged(int i0, int j0, int i1, int j1);
// Tells that every height may have changed, as after building or loading a grid.
void MarkAllTerrainChanged();
// Frees the GL buffers; the view's context must be current.
void ReleaseTerrainBuffers();

}  // namespace mw
