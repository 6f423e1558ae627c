// Included before everything else on Windows: a path that is made of bytes is made of UTF-8, as it
// is given back, and as it is on other systems. The C++ library of the compiler would take the
// bytes for those of the C locale and make nonsense of all that is not ASCII.
#pragma once

#ifdef __cplusplus
#include <filesystem>
#include <string>

namespace mw {
// What is no UTF-8 becomes the replacement character.
std::wstring WideText(const char* begin, const char* end);
}  // namespace mw

namespace std::filesystem {

template <>
inline auto path::_S_convert<char>(const char* begin, const char* end) {
  return mw::WideText(begin, end);
}

}  // namespace std::filesystem
#endif
