#include "platform/gl_context.h"

#include <QByteArray>
#include <QOpenGLContext>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/qt/desktop.h"
#include "platform/qt/view_context.h"

namespace mw {
namespace {

constexpr std::string_view kSwapControl = "WGL_EXT_swap_control";
// The functions that set a swap interval, by window system.
constexpr std::array kSwapIntervalFunctions{"wglSwapIntervalEXT", "glXSwapIntervalEXT",
                                            "glXSwapIntervalMESA", "glXSwapIntervalSGI",
                                            "eglSwapInterval"};

// Current, or null. There is no other context that could be current, and what is drawn into stays.
QOpenGLContext* ViewContext() {
  if (!QOpenGLContext::currentContext()) MakeViewContextCurrent();
  return QOpenGLContext::currentContext();
}

bool CanSetSwapInterval() {
  return std::any_of(kSwapIntervalFunctions.begin(), kSwapIntervalFunctions.end(), GlFunction);
}

}  // namespace

void UseViewContext(QWidget* view, std::function<bool()> makeCurrent) {
  desktop.view = view;
  desktop.makeViewContextCurrent = std::move(makeCurrent);
}

bool MakeViewContextCurrent() { return desktop.view && desktop.makeViewContextCurrent(); }

bool HasGlExtension(std::string_view name) {
  QOpenGLContext* const context = ViewContext();
  if (!context) return false;
  if (name == kSwapControl) return CanSetSwapInterval();
  return context->hasExtension(QByteArray(name.data(), static_cast<qsizetype>(name.size())));
}

void* GlFunction(const char* name) {
  QOpenGLContext* const context = ViewContext();
  return context ? reinterpret_cast<void*>(context->getProcAddress(name)) : nullptr;
}

}  // namespace mw
