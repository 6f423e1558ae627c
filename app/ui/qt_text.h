// Texts of the program's logic, and names of the game's files, as Qt texts.
#pragma once

#include <QString>
#include <string_view>

#include "core/readable_text.h"

namespace mw {

inline QString FromText(std::string_view text) {
  return QString::fromStdString(ReadableText(text));
}

}  // namespace mw
