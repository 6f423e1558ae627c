// Texts of the program's logic as Qt texts.
#pragma once

#include <QString>
#include <string_view>

namespace mw {

inline QString FromText(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace mw
