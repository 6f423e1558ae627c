// One frame of the 3D view, from the frame time to the overlay, and the view's GL state.
#pragma once

#include <cstdint>

namespace mw {

// With the view's context current: creates the terrain, sets the fixed GL state, clears once and
// selects the Terrain Mapper. Sets viewReady.
void CreateViewObjects();
// The picture's size in device pixels changed; a height of 0 counts as 1. Context current.
void ResizeView(int width, int height);
// Draws one frame into the current framebuffer; `now` in milliseconds. The caller swaps.
void RenderFrame(std::uint32_t now);
// Limits the camera and multiplies it onto the model-view matrix; what is drawn then is what the
// current projection shows.
void PlaceCamera();
// Draws the level as the current mode shows it into the current framebuffer, which is clear.
void DrawScene();
// Rubber band and material swatch over the scene, and the Mini-Map.
void DrawOverlay();
// Frees the view's objects and textures; context current.
void DestroyViewObjects();

}  // namespace mw
