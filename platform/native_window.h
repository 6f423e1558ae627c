// What a window needs of the system beyond Qt; posix/ and windows/ each have their own.
#pragma once

#include <cstdint>

namespace mw {

// Readies a child window that lets input through to be drawn into by OpenGL, once it is created and
// before it is shown; `window` is the system's handle of it. Windows would blend it with what is
// below, and may not show OpenGL in it then. That input goes past it is Qt's doing, not the
// blending's.
void LetOpenGlDrawInto(std::uintptr_t window);

// Whether OpenGL is seen in a window inside of another one. Under Wine it is not: up to its version
// 8.0 at least, nothing of what is drawn into such a window is copied into the one around it.
bool ShowsOpenGlInChildWindows();

}  // namespace mw
