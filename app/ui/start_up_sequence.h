// The program from its first check to its last clean-up.
#pragma once

#include <functional>
#include <string>

class QLabel;
class QWidget;

namespace mw {

// How the platform layer learns of the widgets that it serves, and tells of the processes that it
// waits for.
struct PlatformConnections {
  std::function<void(QLabel* progress, QLabel* frameRate, QLabel* reading)> useStatusLabels;
  std::function<void(QWidget* view, std::function<bool()> makeCurrent)> useViewContext;
  std::function<void(std::function<void(bool waiting)>)> observeProcessWaits;
};

// Needs the QApplication. Opens `level`, the archive of a level, where that is given; else the user
// chooses. Returns the exit code.
int RunEditor(const PlatformConnections& platform, const std::string& level);

}  // namespace mw
