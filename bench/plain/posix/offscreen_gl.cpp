#include "bench/plain/offscreen_gl.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

namespace mw {
namespace {

// It is not shut down at exit: the driver would be unloaded, and its last allocations would be
// taken for leaks.
class OffscreenGl {
 public:
  OffscreenGl() { created_ = Create(); }
  OffscreenGl(const OffscreenGl&) = delete;
  OffscreenGl& operator=(const OffscreenGl&) = delete;

  bool Resize(int newWidth, int newHeight) {
    if (!created_) return false;
    if (newWidth == width && newHeight == height) return MakeCurrent();
    const EGLint size[] = {EGL_WIDTH, newWidth, EGL_HEIGHT, newHeight, EGL_NONE};
    const EGLSurface fresh = eglCreatePbufferSurface(display_, config_, size);
    if (fresh == EGL_NO_SURFACE) return Fail("no offscreen surface");
    const EGLSurface old = surface_;
    surface_ = fresh;
    width = newWidth;
    height = newHeight;
    const bool current = MakeCurrent();
    if (old != EGL_NO_SURFACE) eglDestroySurface(display_, old);
    return current;
  }

  bool MakeCurrent() {
    if (surface_ == EGL_NO_SURFACE) return false;
    return eglMakeCurrent(display_, surface_, surface_, context_) || Fail("context not current");
  }

  int width = 0, height = 0;
  std::string error;

 private:
  // Mesa draws without any display server on its surfaceless platform; elsewhere the default
  // display has to do.
  bool OpenDisplay() {
    const auto getPlatformDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
        eglGetProcAddress("eglGetPlatformDisplayEXT"));
    if (getPlatformDisplay) {
      display_ = getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
      if (display_ != EGL_NO_DISPLAY && eglInitialize(display_, nullptr, nullptr)) return true;
    }
    display_ = eglGetDisplay(EGL_DEFAULT_DISPLAY);
    return display_ != EGL_NO_DISPLAY && eglInitialize(display_, nullptr, nullptr);
  }

  bool Create() {
    if (!OpenDisplay()) return Fail("no EGL display");
    if (!eglBindAPI(EGL_OPENGL_API)) return Fail("EGL without OpenGL");
    const EGLint wanted[] = {EGL_SURFACE_TYPE,
                             EGL_PBUFFER_BIT,
                             EGL_RENDERABLE_TYPE,
                             EGL_OPENGL_BIT,
                             EGL_RED_SIZE,
                             8,
                             EGL_GREEN_SIZE,
                             8,
                             EGL_BLUE_SIZE,
                             8,
                             EGL_DEPTH_SIZE,
                             24,
                             EGL_NONE};
    EGLint found = 0;
    if (!eglChooseConfig(display_, wanted, &config_, 1, &found) || found == 0)
      return Fail("no RGB8 configuration with 24-bit depth");
    context_ = eglCreateContext(display_, config_, EGL_NO_CONTEXT, nullptr);
    return context_ != EGL_NO_CONTEXT || Fail("no OpenGL context");
  }

  bool Fail(const char* what) {
    error = std::string("no offscreen OpenGL on this machine: ") + what;
    return false;
  }

  bool created_ = false;
  EGLDisplay display_ = EGL_NO_DISPLAY;
  EGLConfig config_ = nullptr;
  EGLContext context_ = EGL_NO_CONTEXT;
  EGLSurface surface_ = EGL_NO_SURFACE;
};

OffscreenGl& Offscreen() {
  static OffscreenGl gl;
  return gl;
}

}  // namespace

bool ResizeOffscreenGl(int width, int height) { return Offscreen().Resize(width, height); }

bool MakeOffscreenGlCurrent() { return Offscreen().MakeCurrent(); }

void* OffscreenGlFunction(const char* name) {
  return reinterpret_cast<void*>(eglGetProcAddress(name));
}

const std::string& OffscreenGlError() { return Offscreen().error; }

}  // namespace mw
