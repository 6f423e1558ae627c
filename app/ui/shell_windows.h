// Lets the shell's logic reach the windows: fills in the record of app/shell.h.
#pragma once

namespace mw {

class MainWindow;

// The window must outlive the connection.
void ConnectShell(MainWindow& window);
// Back to the harmless defaults.
void DisconnectShell();

}  // namespace mw
