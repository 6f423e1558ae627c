// The sizes in pixels of icons that are built into the program as pictures, where it comes without
// a reader of drawings.
#pragma once

namespace mw {

inline constexpr int kDrawnIconSizes[] = {16, 20, 24, 32, 40, 48, 64, 128, 256};

}  // namespace mw
