#include "bench/plain/gl_context.h"

#include <GL/gl.h>
#include <algorithm>
#include <cstdlib>

#include "bench/plain/offscreen_gl.h"
#include "platform/scripted/script.h"

namespace mw {
namespace {

int surfaceWidth = 0, surfaceHeight = 0;

}  // namespace

bool OpenTestGl(int width, int height) {
  if (!ResizeOffscreenGl(width, height)) return false;
  surfaceWidth = width;
  surfaceHeight = height;
  scripted::script.makeContextCurrent = MakeOffscreenGlCurrent;
  scripted::script.glFunction = OffscreenGlFunction;
  glViewport(0, 0, width, height);
  return true;
}

const std::string& TestGlError() { return OffscreenGlError(); }

DrawnPicture ReadPicture() {
  const std::size_t rowBytes = static_cast<std::size_t>(surfaceWidth) * 3;
  DrawnPicture picture{surfaceWidth, surfaceHeight, {}};
  picture.rgb.resize(rowBytes * static_cast<std::size_t>(surfaceHeight));
  glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  for (int row = 0; row < surfaceHeight; ++row) {
    std::uint8_t* const out = picture.rgb.data() + static_cast<std::size_t>(row) * rowBytes;
    glReadPixels(0, surfaceHeight - 1 - row, surfaceWidth, 1, GL_RGB, GL_UNSIGNED_BYTE, out);
  }
  glPopClientAttrib();
  return picture;
}

std::size_t DifferentPixels(const DrawnPicture& a, const DrawnPicture& b, int tolerance) {
  if (a.width != b.width || a.height != b.height) return std::max(a.rgb.size(), b.rgb.size()) / 3;
  std::size_t different = 0;
  for (std::size_t pixel = 0; pixel < a.rgb.size(); pixel += 3) {
    int largest = 0;
    for (std::size_t channel = pixel; channel < pixel + 3; ++channel)
      largest = std::max(largest, std::abs(a.rgb[channel] - b.rgb[channel]));
    if (largest > tolerance) ++different;
  }
  return different;
}

}  // namespace mw
