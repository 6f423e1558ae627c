// Names of members: which ones a pattern means, and where on disk one may be written.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/archive.h"

namespace mw {

// `*` stands for any text, `?` for one character; without regard to case, `\` counts as `/`.
bool MatchesPattern(std::string_view name, std::string_view pattern);
// The members that match one of the patterns, all of them when there is none; in the order of
// names.
std::vector<std::string> MatchingMembers(const Archive& archive,
                                         const std::vector<std::string>& patterns);
// The name as a path below a folder, or nothing when it could lead out of it or names no file: an
// absolute name, one with "..", with an empty part, or with a character that some system takes for
// something else.
std::optional<std::filesystem::path> PathBelow(std::string_view member);

}  // namespace mw
