// How texts of paths and the system's own names become each other; posix/ and windows/ each have
// their own way.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace mw {

// The path that the bytes of a text spell, in UTF-8 where the system asks; never fails.
std::filesystem::path PathOfText(std::string_view text);
// A path of the system as a text, in UTF-8; never fails.
std::string TextOfPath(const std::filesystem::path& path);

// `name` in `folder` as it is spelled on disk: exactly, else in another case, else as given.
std::filesystem::path ExistingSpelling(const std::filesystem::path& folder,
                                       const std::filesystem::path& name);

}  // namespace mw
