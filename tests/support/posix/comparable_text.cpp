#include "support/golden.h"

namespace mw {

std::string ComparableText(std::string_view text) { return std::string(text); }

}  // namespace mw
