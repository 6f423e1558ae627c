// Which widget's OpenGL context is "the view's context" of platform/gl_context.h.
#pragma once

#include <functional>

class QWidget;

namespace mw {

// `makeCurrent` tells whether the view's context is current then; it is not called once the view is
// gone.
void UseViewContext(QWidget* view, std::function<bool()> makeCurrent);

}  // namespace mw
