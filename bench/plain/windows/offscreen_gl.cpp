#include "bench/plain/offscreen_gl.h"

namespace mw {

bool ResizeOffscreenGl(int, int) { return false; }

bool MakeOffscreenGlCurrent() { return false; }

void* OffscreenGlFunction(const char*) { return nullptr; }

const std::string& OffscreenGlError() {
  static const std::string reason = "Windows has OpenGL for windows only, and tests have none";
  return reason;
}

}  // namespace mw
