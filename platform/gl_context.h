// The OpenGL context of the 3D view, as the code that draws and loads textures sees it.
#pragma once

#include <string_view>

namespace mw {

// Makes the view's context current on this thread. False when there is none (before the view
// exists, or in a program without a window); GL must not be called then.
bool MakeViewContextCurrent();
// Whether the context has the extension. "WGL_EXT_swap_control" counts as present where the
// platform can set a swap interval.
bool HasGlExtension(std::string_view name);
// The address of a GL function, or null.
void* GlFunction(const char* name);

}  // namespace mw
