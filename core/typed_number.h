// Numbers as users type them: the whole text is a number, blanks around it allowed, or it is none.
// For dialogs; files of the game are read by the forgiving functions of text.h.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace mw {

// Decimal, with or without a sign; nothing for what a 32-bit integer cannot hold.
std::optional<std::int32_t> TypedInteger(std::string_view text);
// With a decimal point, whatever the locale, and with or without a sign and an exponent; nothing
// for what a float cannot hold.
std::optional<float> TypedFloat(std::string_view text);

}  // namespace mw
