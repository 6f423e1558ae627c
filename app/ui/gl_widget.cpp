#include "app/ui/gl_widget.h"

#include <QEvent>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QPainter>
#include <QWindow>

#include "platform/native_window.h"

namespace mw {

GlWidget::GlWidget(QWidget* parent)
    : GlWidget(parent, ShowsOpenGlInChildWindows() ? Frames::kInOwnWindow : Frames::kPainted) {}

GlWidget::GlWidget(QWidget* parent, Frames frames) : QWidget(parent), frames_(frames) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_NoSystemBackground);
}

GlWidget::~GlWidget() {
  if (Surface() && context_) context_->makeCurrent(Surface());
  picture_.reset();
  context_.reset();
  delete window_;
}

QSize GlWidget::DeviceSize() const { return size() * devicePixelRatioF(); }

QSurface* GlWidget::Surface() const {
  if (offscreen_) return offscreen_.get();
  return window_.data();
}

void GlWidget::PlaceSurface() {
  if (frames_ == Frames::kPainted) {
    if (offscreen_) return;
    offscreen_ = std::make_unique<QOffscreenSurface>();
    offscreen_->create();
    return;
  }
  if (!window_) {
    window_ = new QWindow(window()->windowHandle());
    window_->setSurfaceType(QSurface::OpenGLSurface);
    window_->setFlags(Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus);
    window_->installEventFilter(this);
    window_->create();
    LetOpenGlDrawInto(window_->winId());
  }
  const QRect place(mapTo(window(), QPoint()), size());
  if (window_->geometry() != place) window_->setGeometry(place);
}

void GlWidget::showEvent(QShowEvent*) {
  PlaceSurface();
  if (window_) window_->show();
}

void GlWidget::hideEvent(QHideEvent*) {
  if (window_) window_->hide();
  painted_ = {};
}

void GlWidget::moveEvent(QMoveEvent*) {
  if (isVisible()) PlaceSurface();
}

void GlWidget::resizeEvent(QResizeEvent*) {
  if (isVisible()) PlaceSurface();
}

void GlWidget::paintEvent(QPaintEvent*) {
  if (frames_ == Frames::kInOwnWindow) return;
  if (painted_.size() != DeviceSize()) RequestFrame();
  QPainter(this).drawImage(rect(), painted_);
}

bool GlWidget::eventFilter(QObject* watched, QEvent* event) {
  if (watched == window_ && event->type() == QEvent::Expose) ShowFrame();
  return false;
}

bool GlWidget::MakeCurrent() {
  if (!Surface()) return false;
  if (!context_) {
    auto context = std::make_unique<QOpenGLContext>();
    if (!context->create()) return false;
    context_ = std::move(context);
  }
  if (!context_->makeCurrent(Surface())) return false;
  if (!picture_) MakePicture();
  return picture_->bind();
}

void GlWidget::MakePicture() {
  // Without alpha, since a level may draw any.
  picture_ = std::make_unique<QOpenGLFramebufferObject>(
      DeviceSize().expandedTo({1, 1}), QOpenGLFramebufferObject::CombinedDepthStencil,
      GL_TEXTURE_2D, GL_RGB8);
}

bool GlWidget::CanBeSeen() const {
  return isVisible() && Surface() && (offscreen_ || window_->isExposed()) &&
         window()->windowHandle()->isExposed();
}

void GlWidget::ShowFrame() {
  isFrameRequested_ = false;
  if (!CanBeSeen()) return;
  PlaceSurface();  // what is around the widget may have moved along with it
  if (!MakeCurrent()) return;
  if (picture_->size() != DeviceSize()) {
    MakePicture();
    if (!picture_->bind()) return;
  }
  DrawFrame();
  if (frames_ == Frames::kPainted) {
    painted_ = picture_->toImage();
    repaint();
  } else {
    QOpenGLFramebufferObject::blitFramebuffer(nullptr, picture_.get());
    context_->swapBuffers(window_);
  }
  Q_EMIT frameShown();
}

void GlWidget::RequestFrame() {
  if (isFrameRequested_) return;
  isFrameRequested_ = true;
  const auto show = [this] {
    if (isFrameRequested_) ShowFrame();
  };
  QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);
}

}  // namespace mw
