// A widget that OpenGL draws into. Its frames are shown in a window of their own that lies on the
// widget and lets all input through: they go to the display without a picture of the window around
// it, and that is painted without a frame. Where such a window is not seen the widget paints them.
#pragma once

#include <QImage>
#include <QPointer>
#include <QWidget>
#include <memory>

class QOpenGLContext;
class QOpenGLFramebufferObject;
class QOffscreenSurface;
class QSurface;

namespace mw {

class GlWidget : public QWidget {
  Q_OBJECT

 public:
  enum class Frames { kInOwnWindow, kPainted };

  // Chooses what is seen on this system.
  explicit GlWidget(QWidget* parent);
  GlWidget(QWidget* parent, Frames frames);
  ~GlWidget() override;

  // Makes the context current; it has the default format and is created by the first call, for
  // which the widget must have been shown. What is drawn then goes into the widget's picture, and
  // the depth of its last frame can be read. False when there is no context.
  bool MakeCurrent();
  // In pixels of the picture.
  QSize DeviceSize() const;

  // Draws a frame and shows it, if the widget can be seen.
  void ShowFrame();
  // Does so when the event loop comes to it; once, however often it is asked until then.
  void RequestFrame();

 Q_SIGNALS:
  void frameShown();

 protected:
  // With the context current.
  virtual void DrawFrame() = 0;

  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  // The window's.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Where the widget is; makes what the context draws on, if it is not there.
  void PlaceSurface();
  QSurface* Surface() const;
  bool CanBeSeen() const;
  // As large as the widget is now.
  void MakePicture();

  const Frames frames_;
  QPointer<QWindow> window_;                      // of kInOwnWindow; belongs to the one around it
  std::unique_ptr<QOffscreenSurface> offscreen_;  // of kPainted
  QImage painted_;                                // of kPainted: the last frame
  std::unique_ptr<QOpenGLContext> context_;
  // What frames are drawn into: of the window both colours and depth are lost once it is shown.
  std::unique_ptr<QOpenGLFramebufferObject> picture_;
  bool isFrameRequested_ = false;
};

}  // namespace mw
