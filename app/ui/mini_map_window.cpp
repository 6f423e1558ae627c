#include "app/ui/mini_map_window.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "app/mini_map.h"

namespace mw {

// The picture, one pixel of the height field per pixel of the widget.
class MiniMapPictureWidget : public QWidget {
 public:
  explicit MiniMapPictureWidget(QWidget* parent) : QWidget(parent) {
    setObjectName("miniMapPicture");
    setAccessibleName("Mini-Map");
    setFixedSize(kMiniMapSize, kMiniMapSize);
    setAttribute(Qt::WA_OpaquePaintEvent);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    PaintMiniMap(pixels_);
    const QImage image(pixels_.data(), kMiniMapSize, kMiniMapSize, kMiniMapSize * 3,
                       QImage::Format_RGB888);
    QPainter(this).drawImage(rect(), image);
  }
  void mousePressEvent(QMouseEvent* event) override { MoveCamera(*event); }
  void mouseMoveEvent(QMouseEvent* event) override { MoveCamera(*event); }

 private:
  static void MoveCamera(const QMouseEvent& event) {
    if (!(event.buttons() & Qt::LeftButton)) return;
    const QPoint pixel = event.position().toPoint();
    MoveCameraToMiniMapPixel(pixel.x(), pixel.y());
  }

  MiniMapPixels pixels_{};
};

namespace {

constexpr int kTitleHeight = 18, kBorder = 1;
constexpr QPoint kFirstPlace(6, 6);  // in the view

}  // namespace

MiniMapWindow::MiniMapWindow(QWidget* view)
    : QWidget(view), picture_(new MiniMapPictureWidget(this)) {
  setObjectName("miniMap");
  setWindowTitle("Mini-Map");
  setProperty("controlId", 159);
  setFixedSize(kMiniMapSize + 2 * kBorder, kMiniMapSize + kTitleHeight + 2 * kBorder);
  picture_->move(kBorder, kBorder + kTitleHeight);
  // Opaque, so that its painting does not draw the level anew; and nothing that happens here
  // reaches the view, which keeps the keyboard.
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_NoMousePropagation);
  setFocusPolicy(Qt::NoFocus);
  setContextMenuPolicy(Qt::PreventContextMenu);
  setCursor(Qt::ArrowCursor);
  view->installEventFilter(this);
  move(kFirstPlace);
}

void MiniMapWindow::Invalidate() { picture_->update(); }

QRect MiniMapWindow::TitleBar() const {
  return QRect(kBorder, kBorder, width() - 2 * kBorder, kTitleHeight);
}

void MiniMapWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Shadow));
  painter.fillRect(TitleBar(), palette().color(QPalette::Active, QPalette::Highlight));
  QFont font = painter.font();
  font.setPixelSize(kTitleHeight - 6);
  painter.setFont(font);
  painter.setPen(palette().color(QPalette::Active, QPalette::HighlightedText));
  painter.drawText(TitleBar().adjusted(5, 0, 0, 0), Qt::AlignVCenter, windowTitle());
}

void MiniMapWindow::mousePressEvent(QMouseEvent* event) {
  grabbedAt_ = event->position().toPoint();
  draggedByTitle_ = event->button() == Qt::LeftButton && TitleBar().contains(grabbedAt_);
}

void MiniMapWindow::mouseMoveEvent(QMouseEvent* event) {
  if (draggedByTitle_ && event->buttons() & Qt::LeftButton) {
    MoveInView(mapToParent(event->position().toPoint()) - grabbedAt_);
  }
}

bool MiniMapWindow::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize) MoveInView(pos());
  return false;
}

void MiniMapWindow::MoveInView(const QPoint& topLeft) {
  const QSize room = parentWidget()->size() - size();
  move(std::clamp(topLeft.x(), 0, std::max(room.width(), 0)),
       std::clamp(topLeft.y(), 0, std::max(room.height(), 0)));
}

}  // namespace mw
