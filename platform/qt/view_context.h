// Which widget's OpenGL context is "the view's context" of platform/gl_context.h.
#pragma once

class QOpenGLWidget;

namespace mw {

void UseViewContext(QOpenGLWidget* view);

// Painting another widget or running a dialog may make another context current. One of these puts
// the view's context back at its end, if it was current at its start.
class ViewContextKeeper {
 public:
  ViewContextKeeper();
  ~ViewContextKeeper();
  ViewContextKeeper(const ViewContextKeeper&) = delete;
  ViewContextKeeper& operator=(const ViewContextKeeper&) = delete;

 private:
  bool wasCurrent_;
};

// Whether the view is being painted right now.
bool IsViewPainting();

}  // namespace mw
