// Lets the shell's logic reach the windows: fills in the record of app/shell.h.
#pragma once

namespace mw {

class MainWindow;

// The window must outlive the connection.
void ConnectShell(MainWindow& window);
// No window is connected any more.
void DisconnectShell();

}  // namespace mw
