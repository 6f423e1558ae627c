#include "terrain/world_point.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include "core/camera.h"
#include "platform/gl_context.h"

namespace mw {
namespace {

struct Viewport {
  GLint x = 0, y = 0, width = 0, height = 0;
};

Viewport CurrentViewport() {
  GLint values[4] = {};
  glGetIntegerv(GL_VIEWPORT, values);
  return {values[0], values[1], values[2], values[3]};
}

struct EyePoint {
  double x = 0, y = 0, z = 0;
};

// The point of the camera's own frame that window pixel (x, y), counted from the bottom, shows.
std::optional<EyePoint> UnprojectPixel(int x, int y) {
  GLint viewport[4];
  GLdouble modelView[16], projection[16];
  glGetIntegerv(GL_VIEWPORT, viewport);
  glGetDoublev(GL_MODELVIEW_MATRIX, modelView);
  glGetDoublev(GL_PROJECTION_MATRIX, projection);
  GLfloat depth = 1;
  glReadPixels(x, y, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
  EyePoint point;
  if (!gluUnProject(x, y, depth, modelView, projection, viewport, &point.x, &point.y, &point.z))
    return std::nullopt;
  return point;
}

}  // namespace

std::optional<Vector3> WorldPointUnderCursor(int x, int y) {
  if (!MakeViewContextCurrent()) return std::nullopt;
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();  // what follows works in the camera's own frame
  const Viewport viewport = CurrentViewport();
  if (x < 0 || y < 0 || x >= viewport.width || y >= viewport.height) return std::nullopt;
  const auto eye = UnprojectPixel(x, viewport.height - y - 1);
  if (!eye) return std::nullopt;
  return camera.ToWorld(eye->x, eye->y, eye->z);
}

}  // namespace mw
