// The painted grid of the Surface Map Assignments dialog: the level's tiles and which of them are
// assigned.
#pragma once

#include <QImage>
#include <QWidget>

namespace mw {

class SurfaceGrid : public QWidget {
  Q_OBJECT

 public:
  explicit SurfaceGrid(QWidget* parent = nullptr);

  void ShowMap(bool shown);
  // Paints the table as it is now.
  void Refresh();

 signals:
  // A tile was assigned or freed by a click.
  void toggled();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  QImage Picture() const;

  bool mapShown_ = false;
};

}  // namespace mw
