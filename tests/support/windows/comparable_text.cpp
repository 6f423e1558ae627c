#include <algorithm>
#include <regex>

#include "support/golden.h"

namespace mw {

std::string ComparableText(std::string_view text) {
  std::string comparable(text);
  std::ranges::replace(comparable, '\\', '/');
  return std::regex_replace(comparable, std::regex("\\b[A-Z]:/"), "/");
}

}  // namespace mw
