// Gives the shell's operations for whole levels to their dialogs and steps. Called at start-up.
#pragma once

class QWidget;

namespace mw {

// New Level, Test This Level and Level Statistics; their dialogs open over `owner`.
void ConnectLevelOperations(QWidget& owner);

}  // namespace mw
