// Gives the shell's operations on the whole height field to the random terrain generator and the
// height-map exchange. Called at start-up.
#pragma once

class QWidget;

namespace mw {

// Their dialogs open over `owner`, which must outlive the operations.
void ConnectHeightOperations(QWidget& owner);

}  // namespace mw
