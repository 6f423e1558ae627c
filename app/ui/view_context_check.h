// Finds out at start-up whether the 3D view will get its OpenGL context, before a window is made
// that cannot do without one.
#pragma once

namespace mw {

// Tries the steps that lead to the context and shows a message for each that fails. True when none
// does.
bool CheckViewContext();

}  // namespace mw
