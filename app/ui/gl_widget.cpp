#include "app/ui/gl_widget.h"

#include <QEvent>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QWindow>

#include "platform/native_window.h"

namespace mw {

GlWidget::GlWidget(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_NoSystemBackground);
}

GlWidget::~GlWidget() {
  if (window_ && context_) context_->makeCurrent(window_);
  picture_.reset();
  context_.reset();
  delete window_;
}

QSize GlWidget::DeviceSize() const { return size() * devicePixelRatioF(); }

void GlWidget::PlaceWindow() {
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
  PlaceWindow();
  window_->show();
}

void GlWidget::hideEvent(QHideEvent*) {
  if (window_) window_->hide();
}

void GlWidget::moveEvent(QMoveEvent*) {
  if (isVisible()) PlaceWindow();
}

void GlWidget::resizeEvent(QResizeEvent*) {
  if (isVisible()) PlaceWindow();
}

void GlWidget::paintEvent(QPaintEvent*) {}

bool GlWidget::eventFilter(QObject* watched, QEvent* event) {
  if (watched == window_ && event->type() == QEvent::Expose) ShowFrame();
  return false;
}

bool GlWidget::MakeCurrent() {
  if (!window_) return false;
  if (!context_) {
    auto context = std::make_unique<QOpenGLContext>();
    if (!context->create()) return false;
    context_ = std::move(context);
  }
  if (!context_->makeCurrent(window_)) return false;
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
  return isVisible() && window_ && window_->isExposed() && window()->windowHandle()->isExposed();
}

void GlWidget::ShowFrame() {
  isFrameRequested_ = false;
  if (!CanBeSeen()) return;
  PlaceWindow();  // what is around the widget may have moved along with it
  if (!MakeCurrent()) return;
  if (picture_->size() != DeviceSize()) {
    MakePicture();
    if (!picture_->bind()) return;
  }
  DrawFrame();
  QOpenGLFramebufferObject::blitFramebuffer(nullptr, picture_.get());
  context_->swapBuffers(window_);
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
