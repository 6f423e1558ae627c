// Drawing of static objects in the 3D view, and of the mesh that the Object Browser turns.
#pragma once

namespace mw {

// All visible objects in the current frame; finds the hovered one and shows its name.
void DrawStaticObjects();
// Finds the hovered one without a frame.
void FindHoveredObject();
// The static objects, if any are to be shown, and the entities.
void DrawObjectModeScene();
// The Object Browser's mesh instead of the level, turned on by the time of the last frame.
void DrawBrowserPreview();

}  // namespace mw
