// What a window needs of the system beyond Qt; posix/ and windows/ each have their own.
#pragma once

#include <cstdint>

namespace mw {

// Readies a child window that lets input through to be drawn into by OpenGL, once it is created and
// before it is shown; `window` is the system's handle of it. Windows would blend it with what is
// below, and may not show OpenGL in it then. That input goes past it is Qt's doing, not the
// blending's.
void LetOpenGlDrawInto(std::uintptr_t window);

}  // namespace mw
