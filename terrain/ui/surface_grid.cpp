#include "terrain/ui/surface_grid.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "data/mod_config.h"
#include "terrain/mini_map_picture.h"
#include "terrain/surface_assignments.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr int kGridSide = 256, kCellSide = kGridSide / kMaxTiles;  // pixels
constexpr QPoint kTextPlace(4, 2);                                 // in a cell
constexpr int kTextSize = 11;                                      // pixels
constexpr int kMarkSide = 16;                                      // pixels
const QColor kOffsetLineColour(255, 220, 60), kMarkColour(255, 255, 0);

QColor ColourOf(AssignmentCell::State state) {
  switch (state) {
    case AssignmentCell::State::Assigned:
      return {115, 210, 100};
    case AssignmentCell::State::Free:
      return {115, 111, 200};
    case AssignmentCell::State::OutsideLevel:
      return Qt::black;
    case AssignmentCell::State::BeforeOffset:
      return {215, 110, 100};
  }
  return Qt::black;
}

void PaintLines(QPainter& painter) {
  painter.setPen(Qt::black);
  for (int line = kCellSide; line < kGridSide; line += kCellSide) {
    painter.drawLine(line, 0, line, kGridSide - 1);
    painter.drawLine(0, line, kGridSide - 1, line);
  }
  painter.drawRect(0, 0, kGridSide - 1, kGridSide - 1);
}

// Where the tiles begin: left and below of the lines there are none. Offsets that no grid has draw
// no line.
void PaintOffsets(QPainter& painter) {
  const auto isInGrid = [](int offset) { return offset >= 0 && offset < kMaxTiles; };
  painter.setPen(kOffsetLineColour);
  if (isInGrid(modConfig.TexOffsetX)) {
    const int x = kCellSide * modConfig.TexOffsetX;
    painter.drawLine(x, 0, x, kGridSide - 1);
  }
  if (isInGrid(modConfig.TexOffsetY)) {
    const int y = kGridSide - 1 - kCellSide * modConfig.TexOffsetY;
    painter.drawLine(0, y, kGridSide - 1, y);
  }
}

// The Mini-Map's picture brightens what is below it, bit by bit.
void PaintMap(QPainter& painter) {
  const QImage grey(terrain.miniMap.grey.data(), kMiniMapSize, kMiniMapSize, kMiniMapSize,
                    QImage::Format_Grayscale8);
  painter.setCompositionMode(QPainter::RasterOp_SourceOrDestination);
  painter.drawImage(QRect(0, 0, kGridSide, kGridSide), grey.convertToFormat(QImage::Format_RGB32));
}

}  // namespace

SurfaceGrid::SurfaceGrid(QWidget* parent) : QWidget(parent) {
  setFixedSize(kGridSide, kGridSide);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAccessibleName("Surface Tiles");
  setAccessibleDescription(SurfaceGrid::Description());
}

void SurfaceGrid::ShowMap(bool shown) {
  mapShown_ = shown;
  update();
}

void SurfaceGrid::Refresh() {
  setAccessibleDescription(Description());
  update();
}

bool SurfaceGrid::Toggle(int column, int row) { return ToggleAssignment(column, row); }

bool SurfaceGrid::IsMarked(int, int) const { return false; }

QString SurfaceGrid::Description() const { return QString::fromStdString(DescribeAssignments()); }

// Grid rows run from the bottom.
void SurfaceGrid::PaintCell(QPainter& painter, int column, int row) const {
  const QRect place(column * kCellSide, (kMaxTiles - 1 - row) * kCellSide, kCellSide, kCellSide);
  const AssignmentCell cell = AssignmentCellAt(column, row);
  painter.fillRect(place, ColourOf(cell.state));
  if (cell.state != AssignmentCell::State::Assigned) return;
  if (IsMarked(column, row)) {
    painter.fillRect(place.left(), place.bottom() + 1 - kMarkSide, kMarkSide, kMarkSide,
                     kMarkColour);
  }
  painter.setPen(Qt::white);
  painter.drawText(place.translated(kTextPlace), Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip,
                   QString("%1x%2").arg(cell.tileRow).arg(cell.tileColumn));
}

QImage SurfaceGrid::Picture() const {
  const qreal ratio = devicePixelRatioF();
  const int side = static_cast<int>(std::lround(kGridSide * ratio));
  QImage picture(side, side, QImage::Format_RGB32);
  picture.setDevicePixelRatio(ratio);
  QPainter painter(&picture);
  QFont small = font();
  small.setPixelSize(kTextSize);
  painter.setFont(small);
  for (int column = 0; column < kMaxTiles; ++column) {
    for (int row = 0; row < kMaxTiles; ++row) PaintCell(painter, column, row);
  }
  PaintLines(painter);
  PaintOffsets(painter);
  if (mapShown_) PaintMap(painter);
  return picture;
}

void SurfaceGrid::paintEvent(QPaintEvent*) { QPainter(this).drawImage(rect(), Picture()); }

void SurfaceGrid::mousePressEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  if (event->button() != Qt::LeftButton || !rect().contains(at)) return;
  if (!Toggle(at.x() / kCellSide, (kGridSide - 1 - at.y()) / kCellSide)) return;
  Refresh();
  Q_EMIT toggled();
}

}  // namespace mw
