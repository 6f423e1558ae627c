// What the mouse wheel does over the 3D view, and the steps of the brush that it shares with keys.
#pragma once

namespace mw {

// The wheel was turned by so many notches, away from the user when positive, with the mouse at view
// pixel (x, y). With Ctrl it changes the brush's size, with Shift its power, without both it moves
// the camera: from above to or from what the mouse is on, else along the view. Nothing happens when
// RouteMouse would do nothing.
void RouteWheel(int notches, int x, int y);

// The brush of the current mode gets larger or smaller by so many steps, as far as it can.
void StepBrushSize(int steps);
// The same for the power of the Terrain Mapper's tools.
void StepPower(int steps);

}  // namespace mw
