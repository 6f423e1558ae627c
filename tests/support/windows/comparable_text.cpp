#include <algorithm>
#include <regex>

#include "support/golden.h"

namespace mw {

std::string ComparableText(std::string_view text) {
  std::string comparable(text);
  std::ranges::replace(comparable, '\\', '/');
  // A drive in front of whole paths, and no permission to execute.
  return std::regex_replace(comparable, std::regex("\\b[A-Z]:(?=/)|, executable(?=\\n)"), "");
}

}  // namespace mw
