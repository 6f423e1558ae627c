#include "platform/native_window.h"

namespace mw {

void LetOpenGlDrawInto(std::uintptr_t) {}

bool ShowsOpenGlInChildWindows() { return true; }

}  // namespace mw
