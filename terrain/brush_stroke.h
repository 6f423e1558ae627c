// A stroke of the Terrain Mapper's brush, from the press of the left button to its release: it acts
// by time, at any frame rate, and leaves no gaps however fast the mouse moves. Used by the shell.
#pragma once

#include <cstdint>

namespace mw {

// At the pick point of terrain_render.h: pressed there, moved on to it, held for one more frame,
// and released. The brush acts once where it is pressed and then by time, wherever the picks lead
// it; what comes between two frames, or before the first, counts as well. `now` in milliseconds.
void PressBrush(std::uint32_t now);
void MoveBrush();
void HoldBrush(std::uint32_t now);
void ReleaseBrush(std::uint32_t now);
// The next pick point is a new place, no way leads there.
void LiftBrush();

}  // namespace mw
