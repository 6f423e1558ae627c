// The painted grid of the level's tiles: which of them are assigned, in the Surface Map Assignments
// dialog, and which are selected for shadows, in the Generate Terrain Shadows dialog.
#pragma once

#include <QImage>
#include <QWidget>

class QPainter;

namespace mw {

class SurfaceGrid : public QWidget {
  Q_OBJECT

 public:
  explicit SurfaceGrid(QWidget* parent = nullptr);

  void ShowMap(bool shown);
  // Paints the table as it is now.
  void Refresh();

 Q_SIGNALS:
  // A tile was switched by a click.
  void toggled();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  // What a click on a cell does; false when it did nothing.
  virtual bool Toggle(int column, int row);
  // Whether an assigned tile shows a mark.
  virtual bool IsMarked(int column, int row) const;
  // The grid in words.
  virtual QString Description() const;

 private:
  void PaintCell(QPainter& painter, int column, int row) const;
  QImage Picture() const;

  bool mapShown_ = false;
};

}  // namespace mw
