#include <algorithm>

#include "support/golden.h"

namespace mw {

std::string ComparableText(std::string_view text) {
  std::string comparable(text);
  std::ranges::replace(comparable, '\\', '/');
  return comparable;
}

}  // namespace mw
