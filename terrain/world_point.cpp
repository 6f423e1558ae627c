#include "terrain/world_point.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include "core/camera.h"
#include "platform/gl_context.h"

namespace mw {
namespace {

struct EyePoint {
  double x = 0, y = 0, z = 0;
};

// The point of the camera's own frame that the view pixel shows; the model-view matrix is the
// identity.
std::optional<EyePoint> UnprojectPixel(int x, int y) {
  GLint viewport[4] = {};
  GLdouble modelView[16], projection[16];
  glGetIntegerv(GL_VIEWPORT, viewport);
  glGetDoublev(GL_MODELVIEW_MATRIX, modelView);
  glGetDoublev(GL_PROJECTION_MATRIX, projection);
  const GLint width = viewport[2], height = viewport[3];
  if (x < 0 || y < 0 || x >= width || y >= height) return std::nullopt;
  const int fromBottom = height - y - 1;
  GLfloat depth = 1;
  glReadPixels(x, fromBottom, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
  EyePoint point;
  if (!gluUnProject(x, fromBottom, depth, modelView, projection, viewport, &point.x, &point.y,
                    &point.z))
    return std::nullopt;
  return point;
}

}  // namespace

std::optional<Vector3> WorldPointUnderCursor(int x, int y) {
  if (!MakeViewContextCurrent()) return std::nullopt;
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();  // what follows works in the camera's own frame
  const auto eye = UnprojectPixel(x, y);
  if (!eye) return std::nullopt;
  return camera.ToWorld(eye->x, eye->y, eye->z);
}

}  // namespace mw
