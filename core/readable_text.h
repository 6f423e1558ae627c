// Names from the game's files as text to be shown. The files hold bytes; what reads and writes them
// keeps these as they are.
#pragma once

#include <string>
#include <string_view>

namespace mw {

// UTF-8. What is UTF-8 already stays; of the rest every byte is a letter of Windows-1252, which
// older tools wrote. Bytes that are none there either become U+FFFD.
std::string ReadableText(std::string_view bytes);

}  // namespace mw
