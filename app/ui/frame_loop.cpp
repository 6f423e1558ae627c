#include "app/ui/frame_loop.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <utility>

#include "app/status_reading.h"
#include "platform/clock.h"

namespace mw {

FrameLoop::FrameLoop(QWidget* mainWindow, std::function<void()> requestFrame)
    : mainWindow_(mainWindow) {
  turns_.setInterval(0);
  connect(&turns_, &QTimer::timeout, this, [requestFrame = std::move(requestFrame)] {
    UpdateStatusReading(MillisecondsNow());
    requestFrame();
  });
  mainWindow->installEventFilter(this);
}

void FrameLoop::Start() {
  started_ = true;
  RunOrRest();
}

void FrameLoop::Rest(bool rest) {
  rests_ += rest ? 1 : -1;
  RunOrRest();
}

bool FrameLoop::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::ActivationChange:
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
    case QEvent::WindowBlocked:
    case QEvent::WindowUnblocked:
    case QEvent::WindowStateChange:
    case QEvent::Show:
    case QEvent::Hide:
      // The state that the event tells of is complete once it has been handled.
      QMetaObject::invokeMethod(this, &FrameLoop::RunOrRest, Qt::QueuedConnection);
      break;
    default:
      break;
  }
  return false;
}

void FrameLoop::RunOrRest() {
  if (started_ && rests_ == 0 && IsWindowInUse(mainWindow_)) {
    if (!turns_.isActive()) turns_.start();
  } else {
    turns_.stop();
  }
}

bool IsWindowInUse(const QWidget* window) {
  return QApplication::activeWindow() == window && !QApplication::activeModalWidget() &&
         window->isVisible() && !window->isMinimized();
}

}  // namespace mw
