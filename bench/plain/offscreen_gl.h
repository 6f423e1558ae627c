// The offscreen context of gl_context.h itself; posix/ and windows/ each have their own.
#pragma once

#include <string>

namespace mw {

// Makes it when it is first asked for, and current, with a surface of this size in pixels.
bool ResizeOffscreenGl(int width, int height);
bool MakeOffscreenGlCurrent();
// The address of a GL function, or null.
void* OffscreenGlFunction(const char* name);
// Why there is none.
const std::string& OffscreenGlError();

}  // namespace mw
