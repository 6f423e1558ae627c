#include "support/comma_locale.h"

#include <clocale>

namespace mw {

bool UseCommaLocale(const std::filesystem::path&) {
  return std::setlocale(LC_ALL, "German_Germany.1252") != nullptr;
}

}  // namespace mw
