// The Mini-Map's window inside the 3D view, with the height field's picture below its title bar.
// Clicking and dragging in the picture moves the camera; the title bar moves the window, and the
// cross at its end closes it. The widgets take the mouse only and paint nothing: the view draws
// them with its frames.
#pragma once

#include <QWidget>

namespace mw {

class GlWidget;

class MiniMapWindow : public QWidget {
 public:
  explicit MiniMapWindow(GlWidget* view);
  ~MiniMapWindow() override;

  // Size, place and whether it is there at all, from session.miniMapLook.
  void ShowAsWanted();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QRect TitleBar() const;
  // Moves the window, but not out of the view.
  void MoveInView(const QPoint& topLeft);
  // Tell the view's drawing where the window is, and what it looks like.
  void ShowPlace();
  void ShowLook();

  GlWidget* const view_;
  QWidget* picture_;
  QWidget* cross_;
  bool draggedByTitle_ = false;
  QPoint grabbedAt_;  // within the window
};

}  // namespace mw
