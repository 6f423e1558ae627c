#include "tools/archive/member_names.h"

#include <algorithm>

#include "core/text.h"

namespace mw {
namespace {

bool IsSafePart(std::string_view part) {
  constexpr std::string_view kTaken = ":\\\"<>|?*";
  return !part.empty() && part != "." && part != ".." && std::ranges::none_of(part, [&](char c) {
    return static_cast<unsigned char>(c) < ' ' || kTaken.find(c) != std::string_view::npos;
  });
}

}  // namespace

bool MatchesPattern(std::string_view name, std::string_view pattern) {
  const auto folded = [](char c) { return LowerByte(c == '\\' ? '/' : c); };
  std::size_t at = 0, in = 0;
  // Where the last star stood, and how far it has reached: on a mismatch it takes one more.
  std::size_t star = std::string_view::npos, reached = 0;
  while (at < name.size()) {
    if (in < pattern.size() && pattern[in] == '*') {
      star = in++;
      reached = at;
    } else if (in < pattern.size() &&
               (pattern[in] == '?' || folded(pattern[in]) == folded(name[at]))) {
      ++in;
      ++at;
    } else if (star != std::string_view::npos) {
      in = star + 1;
      at = ++reached;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', in) == std::string_view::npos;
}

std::vector<std::string> MatchingMembers(const Archive& archive,
                                         const std::vector<std::string>& patterns) {
  std::vector<std::string> names;
  for (const auto& [name, entry] : archive.Entries()) {
    if (patterns.empty() ||
        std::ranges::any_of(patterns, [&name = name](const std::string& pattern) {
          return MatchesPattern(name, pattern);
        })) {
      names.emplace_back(name);
    }
  }
  return names;
}

std::optional<std::filesystem::path> PathBelow(std::string_view member) {
  std::filesystem::path path;
  for (std::size_t begin = 0; begin <= member.size();) {
    const std::size_t end = std::min(member.find('/', begin), member.size());
    const std::string_view part = member.substr(begin, end - begin);
    if (!IsSafePart(part)) return std::nullopt;
    path /= part;
    begin = end + 1;
  }
  return path;
}

}  // namespace mw
