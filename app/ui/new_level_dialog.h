// The "New Level" dialog: name, size, game rules and options of a level that is to be created.
#pragma once

#include <optional>

#include "app/new_level.h"

class QWidget;

namespace mw {

// Runs the dialog over `owner`, which may be null. Nothing when the user cancels.
std::optional<NewLevelChoices> RunNewLevelDialog(QWidget* owner);

}  // namespace mw
