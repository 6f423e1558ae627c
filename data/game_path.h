// Which member of an archive a path of the game means, and which archive is a patch.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace mw {

// Longest path that names a game file. Longer ones are refused, never cut: two members could become
// one.
inline constexpr std::size_t kMaxGamePath = 255;

// The member name (with `\`) that `path` means: without the game folder, and without the current
// mod's, the open level's or the base mod's folder. Nothing when it is longer than kMaxGamePath.
std::optional<std::string> NormalGamePath(std::string_view path);

// Whether the name, without an extension, ends with an underscore and three digits, as a patch
// archive's does.
bool IsNumberedArchive(std::string_view name);

}  // namespace mw
