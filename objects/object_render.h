// Drawing of static objects in the 3D view, and of the mesh that the Object Browser turns.
#pragma once

namespace mw {

// All visible objects in the current frame.
void DrawStaticObjects();
// The static objects, if any are to be shown, and the entities. Finds what is hovered and names it
// in the status bar.
void DrawObjectModeScene();
// The Object Browser's mesh instead of the level, turned on by the time of the last frame.
void DrawBrowserPreview();

}  // namespace mw
