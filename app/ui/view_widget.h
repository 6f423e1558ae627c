// The 3D view: the widget that the level is drawn in. It hands its mouse and key events to the
// input routing and keeps the record of what is held down.
#pragma once

#include <QSurfaceFormat>

#include "app/input.h"
#include "app/ui/gl_widget.h"

class QKeyEvent;

namespace mw {

class ViewWidget : public GlWidget {
 public:
  explicit ViewWidget(QWidget* parent);

  // What the view's context needs; to be made the default format before the application starts.
  static QSurfaceFormat ContextFormat();

  // A key event of the view or of the main window itself. False for a key without meaning.
  static bool RouteKeyEvent(const QKeyEvent& event, bool down);

 protected:
  void DrawFrame() override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  // Items of the level tree may be dropped here.
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  // Tab is a key of the editor here.
  bool focusNextPrevChild(bool) override { return false; }

 private:
  // The pixel of the picture under a position in the widget.
  QPoint DevicePixel(QPointF position) const;
  // Shows the paste cursor while a paste is pending.
  void UpdateCursor();
  void SendMouse(MouseButton button, MouseEvent kind, const QMouseEvent& event);

  bool showsPasteCursor_ = false;
  int wheelTurn_ = 0;    // in eighths of a degree, less than a notch
  QSize projectedSize_;  // device pixels that the projection is set for
};

}  // namespace mw
