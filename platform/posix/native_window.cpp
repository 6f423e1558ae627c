#include "platform/native_window.h"

namespace mw {

void LetOpenGlDrawInto(std::uintptr_t) {}

}  // namespace mw
