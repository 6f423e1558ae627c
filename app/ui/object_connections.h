// Gives the objects house its windows: level tree, toolbar and property sheets. Called at start-up.
#pragma once

namespace mw {

class MainWindow;

// Builds the tree. The window must outlive the connection.
void ConnectObjectWindows(MainWindow& window);
// Back to the harmless defaults.
void DisconnectObjectWindows();

}  // namespace mw
