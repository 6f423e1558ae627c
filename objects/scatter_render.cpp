#include <GL/gl.h>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/editor_state.h"
#include "data/mod_config.h"
#include "objects/object_store.h"
#include "objects/scatter.h"
#include "terrain/ground_ray.h"
#include "terrain/terrain.h"

namespace mw {

void DrawScatterBrush() {
  constexpr float kWidth = 2;         // pixels
  constexpr float kRaise = 0.1f;      // world units above the ground
  constexpr double kNearer = 0.9999;  // of the depth: the ground bends between two points
  constexpr int kPointsPerSize = 32;
  const auto& place = objectStore.scatter.brush.place;
  if (objectStore.tool != ObjectTool::Scatter || !place || !HasUsableTerrain()) return;
  const int points = kPointsPerSize * objectStore.scatter.brush.size;
  const float step = 2 * std::numbers::pi_v<float> / static_cast<float>(points);
  const auto world = static_cast<float>(modConfig.WorldSize);
  glDisable(GL_TEXTURE_2D);
  glLineWidth(kWidth);
  glColor4f(1, editor.ctrlHeld ? 0.3f : 1, 0, 1);
  glDepthMask(GL_FALSE);
  glDepthRange(0, kNearer);
  glBegin(GL_LINE_LOOP);
  for (int k = 0; k < points; ++k) {
    const float angle = static_cast<float>(k) * step;
    const float x = std::clamp(place->x + ScatterRadius() * std::cos(angle), 0.0f, world);
    const float z = std::clamp(place->z + ScatterRadius() * std::sin(angle), 0.0f, world);
    glVertex3f(x, DrawnGroundHeight(x, z) + kRaise, z);
  }
  glEnd();
  glDepthRange(0, 1);
  glDepthMask(GL_TRUE);
}

}  // namespace mw
