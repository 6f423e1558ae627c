// Windows' own library has OpenGL 1.1. What the program calls of 1.5 stands here under its name and
// goes on to the driver, which tells the addresses once a context is current.
#include <GL/gl.h>
#include <GL/glext.h>

#include "platform/gl_context.h"

namespace {

// A function of the driver, asked for at the first call. The program has one view, and so one
// context; before it draws it makes sure that this context has OpenGL 1.5.
template <typename Function>
class EntryPoint {
 public:
  explicit EntryPoint(const char* name) : name_(name) {}

  template <typename... Arguments>
  auto operator()(Arguments... arguments) {
    if (!function_) function_ = reinterpret_cast<Function>(mw::GlFunction(name_));
    return function_(arguments...);
  }

 private:
  const char* name_;
  Function function_ = nullptr;
};

EntryPoint<PFNGLBINDBUFFERPROC> bindBuffer("glBindBuffer");
EntryPoint<PFNGLBUFFERDATAPROC> bufferData("glBufferData");
EntryPoint<PFNGLBUFFERSUBDATAPROC> bufferSubData("glBufferSubData");
EntryPoint<PFNGLDELETEBUFFERSPROC> deleteBuffers("glDeleteBuffers");
EntryPoint<PFNGLGENBUFFERSPROC> genBuffers("glGenBuffers");
EntryPoint<PFNGLISBUFFERPROC> isBuffer("glIsBuffer");

}  // namespace

extern "C" {

void APIENTRY glBindBuffer(GLenum target, GLuint buffer) { bindBuffer(target, buffer); }

void APIENTRY glBufferData(GLenum target, GLsizeiptr size, const void* data, GLenum usage) {
  bufferData(target, size, data, usage);
}

void APIENTRY glBufferSubData(GLenum target, GLintptr offset, GLsizeiptr size, const void* data) {
  bufferSubData(target, offset, size, data);
}

void APIENTRY glDeleteBuffers(GLsizei count, const GLuint* buffers) {
  deleteBuffers(count, buffers);
}

void APIENTRY glGenBuffers(GLsizei count, GLuint* buffers) { genBuffers(count, buffers); }

GLboolean APIENTRY glIsBuffer(GLuint buffer) { return isBuffer(buffer); }
}
