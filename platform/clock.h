// Time since the program started.
#pragma once

#include <cstdint>

namespace mw {

// Milliseconds since an arbitrary moment before the first call, wrapping at 2^32.
std::uint32_t MillisecondsNow();

}  // namespace mw
