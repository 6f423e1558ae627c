#include "platform/gl_context.h"

#include <QByteArray>
#include <QOpenGLContext>
#include <algorithm>
#include <array>

#include "platform/qt/desktop.h"
#include "platform/qt/view_context.h"

namespace mw {
namespace {

constexpr std::string_view kSwapControl = "WGL_EXT_swap_control";
// The functions that set a swap interval, by window system.
constexpr std::array kSwapIntervalFunctions{"wglSwapIntervalEXT", "glXSwapIntervalEXT",
                                            "glXSwapIntervalMESA", "glXSwapIntervalSGI",
                                            "eglSwapInterval"};

QOpenGLContext* ViewContext() { return desktop.view ? desktop.view->context() : nullptr; }

bool IsViewContextCurrent() {
  return ViewContext() && QOpenGLContext::currentContext() == ViewContext();
}

bool CanSetSwapInterval() {
  return std::any_of(kSwapIntervalFunctions.begin(), kSwapIntervalFunctions.end(), GlFunction);
}

}  // namespace

void UseViewContext(QOpenGLWidget* view) { desktop.view = view; }

ViewContextKeeper::ViewContextKeeper() : wasCurrent_(IsViewContextCurrent()) {}

ViewContextKeeper::~ViewContextKeeper() {
  if (wasCurrent_) MakeViewContextCurrent();
}

bool IsViewPainting() {
  return desktop.view && desktop.view->testAttribute(Qt::WA_WState_InPaintEvent);
}

bool MakeViewContextCurrent() {
  if (!ViewContext()) return false;
  desktop.view->makeCurrent();
  return IsViewContextCurrent();
}

bool HasGlExtension(std::string_view name) {
  if (!ViewContext()) return false;
  if (name == kSwapControl) return CanSetSwapInterval();
  return ViewContext()->hasExtension(QByteArray(name.data(), static_cast<qsizetype>(name.size())));
}

void* GlFunction(const char* name) {
  return ViewContext() ? reinterpret_cast<void*>(ViewContext()->getProcAddress(name)) : nullptr;
}

}  // namespace mw
