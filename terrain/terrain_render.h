// Draws the terrain around the camera. The cells, their grid lines and colours are kept in buffers
// that follow every edit; a frame only chooses what is visible and draws each texture's cells with
// one call.
#pragma once

namespace mw {

inline constexpr float kViewSquareCells = 150.0f;  // width of the drawn square around the camera
inline constexpr float kCullMargin = -8.0f;        // world units outside the frustum still drawn

void SetTerrainBaseColour(int r, int g, int b, int a);  // 0 ... 255 each

// Steps 1 and 2 of every mode's frame: the view square, and the camera's height in its on-terrain
// mode.
void UpdateViewSquare();
// The whole pass of the Terrain Mapper: cells with brush colours and steep cells, grid, point
// markers, placed objects on request, water, brush sphere, road posts.
void RenderTerrainMode();
// The cells plainly, as the Object Mapper shows them: no brush, no steep colour, no markers.
void RenderPlainTerrain();
// The animated water plane at WaterLevel; advances its scroll.
void RenderWater();
// The same for the modes that work on the ground: what is drawn after it shows through it.
void RenderWaterOverGround();

// Vertices (rows i0 ... i1, columns j0 ... j1, inclusive) whose height changed: their part of the
// buffers is written again before the next frame. SetHeight calls it.
void MarkTerrainChanged(int i0, int j0, int i1, int j1);
// Everything changed (a grid was rebuilt).
void MarkAllTerrainChanged();
// Frees the GL buffers; the view's context must be current.
void ReleaseTerrainBuffers();

}  // namespace mw
