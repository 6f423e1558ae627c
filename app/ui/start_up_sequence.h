// The program from its first check to its last clean-up.
#pragma once

#include <functional>

class QLabel;
class QOpenGLWidget;

namespace mw {

// How the platform layer learns of the widgets that it serves.
struct PlatformConnections {
  std::function<void(QLabel* progress, QLabel* frameRate)> useStatusLabels;
  std::function<void(QOpenGLWidget*)> useViewContext;
};

// Needs the QApplication. Returns the exit code.
int RunEditor(const PlatformConnections& platform);

}  // namespace mw
