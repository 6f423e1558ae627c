// The program from its first check to its last clean-up.
#pragma once

#include <functional>

class QLabel;
class QOpenGLWidget;

namespace mw {

// How the platform layer learns of the widgets that it serves, and tells of the processes that it
// waits for.
struct PlatformConnections {
  std::function<void(QLabel* progress, QLabel* frameRate, QLabel* reading)> useStatusLabels;
  std::function<void(QOpenGLWidget*)> useViewContext;
  std::function<void(std::function<void(bool waiting)>)> observeProcessWaits;
};

// Needs the QApplication. Returns the exit code.
int RunEditor(const PlatformConnections& platform);

}  // namespace mw
