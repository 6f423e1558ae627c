#include "app/ui/view_widget.h"

#include <GL/gl.h>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <cmath>

#include "app/frame.h"
#include "app/input.h"
#include "app/keys.h"
#include "app/session.h"
#include "app/ui/key_translation.h"
#include "app/ui/level_tree_drag.h"
#include "app/wheel.h"
#include "core/editor_state.h"
#include "platform/clock.h"
#include "resources/pictures.h"

namespace mw {
namespace {

MouseButton PressedButton(const QMouseEvent& event) {
  switch (event.button()) {
    case Qt::LeftButton:
      return MouseButton::Left;
    case Qt::MiddleButton:
      return MouseButton::Middle;
    case Qt::RightButton:
      return MouseButton::Right;
    default:
      return MouseButton::None;
  }
}

// The right button hides the middle one, and that the left one.
MouseButton DraggingButton(const QMouseEvent& event) {
  if (event.buttons() & Qt::RightButton) return MouseButton::Right;
  if (event.buttons() & Qt::MiddleButton) return MouseButton::Middle;
  if (event.buttons() & Qt::LeftButton) return MouseButton::Left;
  return MouseButton::None;
}

void TakeModifiers(Qt::KeyboardModifiers held) {
  SetModifiers(held & Qt::ControlModifier, held & Qt::ShiftModifier, held & Qt::AltModifier);
}

// The arrow of the picture points to its upper left corner.
const QCursor& PasteCursor() {
  constexpr int kSize = 24;
  static const QCursor cursor = [] {
    const QPixmap picture = Icon("paste_cursor").pixmap(kSize, kSize);
    return picture.isNull() ? QCursor(Qt::DragCopyCursor) : QCursor(picture, 1, 1);
  }();
  return cursor;
}

}  // namespace

ViewWidget::ViewWidget(QWidget* parent) : GlWidget(parent) {
  setObjectName("view");
  setAccessibleName("3D View");
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setContextMenuPolicy(Qt::PreventContextMenu);
  setAcceptDrops(true);
}

QSurfaceFormat ViewWidget::ContextFormat() {
  constexpr int kDepthBits = 24;
  QSurfaceFormat format;
  format.setRenderableType(QSurfaceFormat::OpenGL);
  format.setProfile(QSurfaceFormat::CompatibilityProfile);
  format.setDepthBufferSize(kDepthBits);
  format.setStencilBufferSize(0);
  format.setSamples(0);
  format.setSwapInterval(0);
  return format;
}

QPoint ViewWidget::DevicePixel(QPointF position) const {
  position *= devicePixelRatioF();
  return {static_cast<int>(std::floor(position.x())), static_cast<int>(std::floor(position.y()))};
}

void ViewWidget::DrawFrame() {
  if (!editor.viewReady) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    return;
  }
  if (projectedSize_ != DeviceSize()) {
    projectedSize_ = DeviceSize();
    ResizeView(projectedSize_.width(), projectedSize_.height());
  }
  RenderFrame(MillisecondsNow());
}

void ViewWidget::UpdateCursor() {
  if (showsPasteCursor_ == editor.pastePending) return;
  showsPasteCursor_ = editor.pastePending;
  setCursor(showsPasteCursor_ ? PasteCursor() : QCursor(Qt::ArrowCursor));
}

void ViewWidget::SendMouse(MouseButton button, MouseEvent kind, const QMouseEvent& event) {
  const QPoint pixel = DevicePixel(event.position());
  session.heldInput.leftButton = event.buttons() & Qt::LeftButton;
  session.heldInput.rightButton = event.buttons() & Qt::RightButton;
  TakeModifiers(event.modifiers());
  RouteMouse(button, kind, pixel.x(), pixel.y());
  UpdateCursor();
}

void ViewWidget::mousePressEvent(QMouseEvent* event) {
  SendMouse(PressedButton(*event), MouseEvent::Press, *event);
}

void ViewWidget::mouseReleaseEvent(QMouseEvent* event) {
  SendMouse(PressedButton(*event), MouseEvent::Release, *event);
}

void ViewWidget::mouseMoveEvent(QMouseEvent* event) {
  SendMouse(DraggingButton(*event), MouseEvent::Move, *event);
}

void ViewWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  SendMouse(PressedButton(*event), MouseEvent::DoubleClick, *event);
}

// What is less than a notch is kept for the next event. With Alt the turn comes as a sideways one.
void ViewWidget::wheelEvent(QWheelEvent* event) {
  const QPoint turn = event->angleDelta();
  wheelTurn_ += event->modifiers() & Qt::AltModifier ? turn.x() + turn.y() : turn.y();
  const int notches = wheelTurn_ / QWheelEvent::DefaultDeltasPerStep;
  wheelTurn_ %= QWheelEvent::DefaultDeltasPerStep;
  const QPoint pixel = DevicePixel(event->position());
  TakeModifiers(event->modifiers());
  if (notches != 0) RouteWheel(notches, pixel.x(), pixel.y());
  event->accept();
}

// Alt that is pressed while other keys move the camera belongs to them, and does not open the menu
// bar when it is released.
bool ViewWidget::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt && session.heldInput.keys.any()) {
    event->accept();
    return true;
  }
  return GlWidget::event(event);
}

bool ViewWidget::RouteKeyEvent(const QKeyEvent& event, bool down) {
  const int key = TranslateKey(event);
  if (key == kKeyNone) return false;
  // A held key repeats its downs; the ups between them count for the keys that step the water
  // level.
  const bool steps = key == kKeyPageUp || key == kKeyPageDown;
  if (!down && event.isAutoRepeat() && !steps) return true;
  session.heldInput.keys.set(static_cast<std::size_t>(key), down);
  RouteKey(key, down);
  return true;
}

void ViewWidget::keyPressEvent(QKeyEvent* event) {
  if (!RouteKeyEvent(*event, true)) event->ignore();
  UpdateCursor();
}

void ViewWidget::keyReleaseEvent(QKeyEvent* event) {
  if (!RouteKeyEvent(*event, false)) event->ignore();
}

void ViewWidget::focusOutEvent(QFocusEvent* event) {
  ForgetHeldInput();
  GlWidget::focusOutEvent(event);
}

// Wherever the mouse comes in: no move would follow an entry that is not accepted.
void ViewWidget::dragEnterEvent(QDragEnterEvent* event) {
  event->setAccepted(IsTreeItemDrag(*event));
}

void ViewWidget::dragMoveEvent(QDragMoveEvent* event) {
  // The Mini-Map lies on the view, but is not the view.
  if (IsTreeItemDrag(*event) && !childAt(event->position().toPoint())) {
    event->acceptProposedAction();
  } else {
    event->ignore();
  }
}

void ViewWidget::dropEvent(QDropEvent* event) {
  if (!IsTreeItemDrag(*event) || childAt(event->position().toPoint())) return;
  event->acceptProposedAction();
  const QPoint pixel = DevicePixel(event->position());
  AcceptTreeItemDrop(pixel.x(), pixel.y());
}

}  // namespace mw
