#include "app/ui/mini_map_window.h"

#include <QEvent>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cstring>

#include "app/commands.h"
#include "app/mini_map.h"
#include "app/mini_map_look.h"
#include "app/session.h"
#include "app/ui/gl_widget.h"

namespace mw {
namespace {

constexpr int kTitleHeight = 18, kBorder = 1;

int Enlargement() { return static_cast<int>(session.miniMapLook.size); }

// The place of the picture.
class MiniMapPictureWidget : public QWidget {
 public:
  explicit MiniMapPictureWidget(QWidget* parent) : QWidget(parent) {
    setObjectName("miniMapPicture");
    setAccessibleName("Mini-Map");
  }

 protected:
  void mousePressEvent(QMouseEvent* event) override { MoveCamera(*event); }
  void mouseMoveEvent(QMouseEvent* event) override { MoveCamera(*event); }

 private:
  static void MoveCamera(const QMouseEvent& event) {
    if (!(event.buttons() & Qt::LeftButton)) return;
    const QPointF pixel = event.position() / Enlargement();
    MoveCameraToMiniMapPixel(static_cast<int>(pixel.x()), static_cast<int>(pixel.y()));
  }
};

// At the end of the title bar.
class MiniMapCross : public QWidget {
 public:
  explicit MiniMapCross(QWidget* parent) : QWidget(parent) {
    setObjectName("miniMapCross");
    setAccessibleName("Close Mini-Map");
    setToolTip("Close Mini-Map (Ctrl-M)");
    setFixedSize(kTitleHeight, kTitleHeight);
  }

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton) RunCommand(kCommandMiniMap);
  }
};

std::vector<std::uint8_t> PackedPixels(const QImage& image) {
  const auto rowBytes = static_cast<std::size_t>(image.width()) * 3;
  std::vector<std::uint8_t> pixels(rowBytes * static_cast<std::size_t>(image.height()));
  for (int y = 0; y < image.height(); ++y) {
    std::memcpy(&pixels[static_cast<std::size_t>(y) * rowBytes], image.constScanLine(y), rowBytes);
  }
  return pixels;
}

}  // namespace

MiniMapWindow::MiniMapWindow(GlWidget* view)
    : QWidget(view),
      view_(view),
      picture_(new MiniMapPictureWidget(this)),
      cross_(new MiniMapCross(this)) {
  setObjectName("miniMap");
  setWindowTitle("Mini-Map");
  setProperty("controlId", 159);
  picture_->move(kBorder, kBorder + kTitleHeight);
  // Nothing that happens here reaches the view, which keeps the keyboard.
  setAttribute(Qt::WA_NoMousePropagation);
  setFocusPolicy(Qt::NoFocus);
  setContextMenuPolicy(Qt::PreventContextMenu);
  setCursor(Qt::ArrowCursor);
  view->installEventFilter(this);
  ShowAsWanted();
}

MiniMapWindow::~MiniMapWindow() { session.miniMapWindow = {}; }

void MiniMapWindow::ShowAsWanted() {
  const MiniMapLook& look = session.miniMapLook;
  const int side = kMiniMapSize * Enlargement();
  picture_->setFixedSize(side, side);
  setFixedSize(side + 2 * kBorder, side + kTitleHeight + 2 * kBorder);
  cross_->move(TitleBar().right() + 1 - cross_->width(), TitleBar().top());
  if (view_->isVisible()) {
    MoveInView({look.left, look.top});
  } else {  // which has its size only when it is shown
    move(look.left, look.top);
  }
  setVisible(look.shown);
  ShowLook();
}

QRect MiniMapWindow::TitleBar() const {
  return QRect(kBorder, kBorder, width() - 2 * kBorder, kTitleHeight);
}

void MiniMapWindow::ShowPlace() {
  const QPoint place = (QPointF(pos()) * devicePixelRatioF()).toPoint();
  session.miniMapWindow.left = place.x();
  session.miniMapWindow.top = place.y();
  view_->RequestFrame();
}

void MiniMapWindow::ShowLook() {
  if (!session.miniMapLook.shown) {
    session.miniMapWindow = {};
    view_->RequestFrame();
    return;
  }
  const qreal ratio = devicePixelRatioF();
  QImage image((QSizeF(size()) * ratio).toSize(), QImage::Format_RGB888);
  image.setDevicePixelRatio(ratio);
  QPainter painter(&image);
  painter.fillRect(rect(), palette().color(QPalette::Shadow));
  painter.fillRect(TitleBar(), palette().color(QPalette::Active, QPalette::Highlight));
  QFont font = this->font();
  font.setPixelSize(kTitleHeight - 6);
  painter.setFont(font);
  painter.setPen(palette().color(QPalette::Active, QPalette::HighlightedText));
  painter.drawText(TitleBar().adjusted(5, 0, 0, 0), Qt::AlignVCenter, windowTitle());
  painter.setRenderHint(QPainter::Antialiasing);
  constexpr int kCrossMargin = 6;
  const QRectF cross =
      QRectF(cross_->geometry()).adjusted(kCrossMargin, kCrossMargin, -kCrossMargin, -kCrossMargin);
  painter.setPen(QPen(palette().color(QPalette::Active, QPalette::HighlightedText), 1.5));
  painter.drawLine(cross.topLeft(), cross.bottomRight());
  painter.drawLine(cross.topRight(), cross.bottomLeft());
  painter.end();
  session.miniMapWindow.width = image.width();
  session.miniMapWindow.height = image.height();
  const QPoint picture = (QPointF(picture_->pos()) * ratio).toPoint();
  session.miniMapWindow.pictureLeft = picture.x();
  session.miniMapWindow.pictureTop = picture.y();
  session.miniMapWindow.pictureSize = qRound(picture_->width() * ratio);
  session.miniMapWindow.pixels = PackedPixels(image);
  session.miniMapWindow.changed = true;
  ShowPlace();
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

void MiniMapWindow::mouseReleaseEvent(QMouseEvent*) {
  if (draggedByTitle_) PlaceMiniMap(x(), y());
  draggedByTitle_ = false;
}

void MiniMapWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) ShowLook();
  QWidget::changeEvent(event);
}

bool MiniMapWindow::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::Resize:  // where there is room again it goes back to its place
      MoveInView({session.miniMapLook.left, session.miniMapLook.top});
      break;
    case QEvent::ScreenChangeInternal:  // to one of another scale, perhaps
      ShowLook();
      break;
    default:
      break;
  }
  return false;
}

void MiniMapWindow::MoveInView(const QPoint& topLeft) {
  const QSize room = view_->size() - size();
  move(std::clamp(topLeft.x(), 0, std::max(room.width(), 0)),
       std::clamp(topLeft.y(), 0, std::max(room.height(), 0)));
  ShowPlace();
}

}  // namespace mw
