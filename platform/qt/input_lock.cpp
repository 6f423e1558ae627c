#include "platform/qt/input_lock.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

#include "platform/qt/desktop.h"

namespace mw {

InputLock::InputLock(const QWidget* freeWindow) : freeWindow_(freeWindow) {
  ++desktop.heldInputLocks;
  QCoreApplication::instance()->installEventFilter(this);
}

InputLock::~InputLock() { --desktop.heldInputLocks; }

bool InputLock::IsHeld() { return desktop.heldInputLocks > 0; }

// Events come to the native window first, then to a widget of it.
bool InputLock::IsFree(const QObject* watched) const {
  if (watched->isWidgetType()) {
    return static_cast<const QWidget*>(watched)->window() == freeWindow_;
  }
  return watched == freeWindow_->windowHandle();
}

bool InputLock::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Close:
      if (IsFree(watched)) return false;
      event->ignore();
      return true;
    default:
      return false;
  }
}

}  // namespace mw
