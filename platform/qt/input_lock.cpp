#include "platform/qt/input_lock.h"

#include <QCoreApplication>
#include <QEvent>

namespace mw {
namespace {

int heldLocks = 0;

}  // namespace

InputLock::InputLock() {
  ++heldLocks;
  QCoreApplication::instance()->installEventFilter(this);
}

InputLock::~InputLock() { --heldLocks; }

bool InputLock::IsHeld() { return heldLocks > 0; }

bool InputLock::eventFilter(QObject*, QEvent* event) {
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
      event->ignore();
      return true;
    default:
      return false;
  }
}

}  // namespace mw
