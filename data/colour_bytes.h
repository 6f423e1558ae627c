// Colours of 0..1, as the game's scripts hold them, as the bytes in which the user chooses them.
#pragma once

#include <array>
#include <cstdint>

#include "data/mod_config.h"

namespace mw {

using ColourBytes = std::array<std::uint8_t, 3>;  // red, green, blue

// Cut, and limited to what a byte can hold. A colour that came from bytes gives the same bytes
// again, also after it was written into a script with six decimals.
ColourBytes BytesOf(const Floats3& colour);
Floats3 FloatsOf(const ColourBytes& colour);

}  // namespace mw
