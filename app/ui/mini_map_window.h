// The Mini-Map: a small titled window inside the 3D view that shows the height field with the
// camera's marker. Clicking and dragging in its picture moves the camera; its title bar moves the
// window.
#pragma once

#include <QWidget>

namespace mw {

class MiniMapPictureWidget;

class MiniMapWindow : public QWidget {
 public:
  explicit MiniMapWindow(QWidget* view);

  // Marks the picture for repainting.
  void Invalidate();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QRect TitleBar() const;
  // Moves the window, but not out of the view.
  void MoveInView(const QPoint& topLeft);

  MiniMapPictureWidget* picture_;
  bool draggedByTitle_ = false;
  QPoint grabbedAt_;  // within the window
};

}  // namespace mw
