// The dialog that asks how many bits a sample of the exchanged height map has.
#pragma once

#include <optional>

#include "terrain/height_exchange.h"

class QWidget;

namespace mw {

// Runs the dialog with this title over `owner`, which may be null. Nothing when the user cancels.
std::optional<SampleBits> SampleBitsDialog(QWidget* owner, const char* title);

}  // namespace mw
