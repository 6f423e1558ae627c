// Keeps the 3D view drawing: while the main window is active and no dialog is open, one frame
// follows another whenever no event waits; otherwise, and while the program waits for a process,
// nothing runs at all.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

class QWidget;

namespace mw {

class FrameLoop : public QObject {
 public:
  // The window must outlive the loop. It is at rest until Start. `requestFrame` asks for a frame
  // and draws none itself: what waits for events within an event would wait for the drawing, too.
  FrameLoop(QWidget* mainWindow, std::function<void()> requestFrame);

  void Start();
  // Rests until as many calls with false have come as with true.
  void Rest(bool rest);
  bool IsRunning() const { return turns_.isActive(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void RunOrRest();

  QWidget* mainWindow_;
  QTimer turns_;  // fires when the event queue is empty
  bool started_ = false;
  int rests_ = 0;
};

// Whether the user works in this window itself, not in a dialog or another program.
bool IsWindowInUse(const QWidget* window);

}  // namespace mw
