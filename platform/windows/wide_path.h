// Texts and paths for the calls of Windows, which take UTF-16.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace mw {

// What is no UTF-8 becomes the replacement character; so does half of a pair on the way back.
std::wstring WideText(std::string_view text);
std::string Utf8Text(std::wstring_view text);

// A path for a call of Windows: whole, and in the form that has no limit of 260 characters.
std::wstring WidePath(const std::filesystem::path& path);

}  // namespace mw
