#include <GL/glu.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <vector>

#include "core/camera.h"
#include "core/editor_state.h"
#include "data/mod_config.h"
#include "terrain/brush_edge.h"
#include "terrain/gl_buffers.h"
#include "terrain/ground_ray.h"
#include "terrain/terrain.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_render.h"
#include "terrain/terrain_tools.h"

namespace mw {
namespace {

constexpr float kMarkerHeight = 0.4f, kRoadPostHeight = 10.0f;                      // world units
constexpr float kMarkerWidth = 10.0f, kRoadPostWidth = 20.0f, kSphereWidth = 2.0f;  // pixels
constexpr float kMarkerDot = 4.0f;                                                  // pixels
constexpr int kSphereSlices = 8, kSphereStacks = 4;
constexpr float kOutlineWidth = 2.0f;  // pixels
constexpr float kOutlineRaise = 0.1f;  // world units above the ground
// The depth of an outline is scaled by this, which brings it nearer to the camera in the depth
// buffer: ground that bends between two of its points would cover it otherwise.
constexpr double kOutlineDepth = 0.9999;

using MarkColour = std::array<std::uint8_t, 4>;

struct MarkVertex {
  float x, y, z;
  MarkColour colour;
};

struct MarkStore {
  std::vector<MarkVertex> vertices;  // kept so that no frame has to allocate
  unsigned buffer = 0;
  GLUquadric* sphere = nullptr;
};
MarkStore store;  // a cache: what GL holds of the marks

MarkColour MarkerColour(const TerrainVertex& vertex) {
  if (vertex.selected) return {255, 0, 0, 255};
  if (vertex.weight > 0 && terrain.autoSmoothing) {
    const float red = std::min(vertex.weight / terrain.smoothingRange, 1.0f);
    return {static_cast<std::uint8_t>(red * 255.0f + 0.5f), 255, 0, 255};
  }
  return {0, 0, 0, 255};
}

// A marker stands up from its vertex and leans against the view, so that it can also be seen from
// above.
void AddMarker(const TerrainVertex& vertex) {
  const Vector3& d = camera.direction;
  const float y = vertex.h * modConfig.HeightScale;
  const MarkColour colour = MarkerColour(vertex);
  store.vertices.push_back({vertex.x, y, vertex.z, colour});
  store.vertices.push_back({vertex.x - d.x * d.y, y + kMarkerHeight, vertex.z - d.z * d.y, colour});
}

// Straight from above the markers are seen end on and are as good as invisible, so that each needs
// a dot.
bool NeedDots() { return editor.cameraMode == CameraMode::TopDown; }

void DrawMarkVertices() {
  if (!store.buffer) glGenBuffers(1, &store.buffer);
  glBindBuffer(GL_ARRAY_BUFFER, store.buffer);
  glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(store.vertices.size() * sizeof(MarkVertex)),
               store.vertices.data(), GL_STREAM_DRAW);
  glEnableClientState(GL_VERTEX_ARRAY);
  glEnableClientState(GL_COLOR_ARRAY);
  glVertexPointer(3, GL_FLOAT, sizeof(MarkVertex), BufferOffset(offsetof(MarkVertex, x)));
  glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(MarkVertex),
                 BufferOffset(offsetof(MarkVertex, colour)));
  glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(store.vertices.size()));
  if (NeedDots()) {
    glPointSize(kMarkerDot);
    glDrawArrays(GL_POINTS, 0, static_cast<GLsizei>(store.vertices.size()));
  }
  glDisableClientState(GL_COLOR_ARRAY);
  glDisableClientState(GL_VERTEX_ARRAY);
  glBindBuffer(GL_ARRAY_BUFFER, 0);
}

// Calls act for first ... last, ending with those next to the middle.
template <typename Act>
void ForEachInwards(int first, int last, int middle, Act act) {
  for (int k = first; k < std::min(middle, last + 1); ++k) act(k);
  for (int k = last; k >= std::max(middle, first); --k) act(k);
}

bool SameUnit(float a, float b) { return std::trunc(a) == std::trunc(b); }

void Vertex(const Vector3& point) { glVertex3f(point.x, point.y, point.z); }

// Draws a point of a ring around the pick point. Where the ring leaves the level it follows the
// border, as there is no ground beyond.
void RingVertex(float radius, float angle) {
  const auto world = static_cast<float>(modConfig.WorldSize);
  const float x = std::clamp(terrain.pick.x + radius * std::cos(angle), 0.0f, world);
  const float z = std::clamp(terrain.pick.z + radius * std::sin(angle), 0.0f, world);
  glVertex3f(x, DrawnGroundHeight(x, z) + kOutlineRaise, z);
}

void DrawRing(float radius) {
  constexpr int kPointsPerCell = 8;  // of the radius: more than one for each cell that it crosses
  const int points = kPointsPerCell * std::max(terrain.brushSize, 2);
  const float step = 2 * std::numbers::pi_v<float> / static_cast<float>(points);
  glBegin(GL_LINE_LOOP);
  for (int k = 0; k < points; ++k) RingVertex(radius, static_cast<float>(k) * step);
  glEnd();
}

// From the core, where the brush is whole, outwards; each ring is as faint as the brush is there,
// but for the last one, which must still be seen.
void DrawFadingRings() {
  constexpr std::array kStrengths{1.0f, 2.0f / 3, 1.0f / 3, 0.0f};
  constexpr float kFaintest = 0.25f;
  glEnable(GL_BLEND);
  for (const float strength : kStrengths) {
    glColor4f(1, 1, 0, std::max(strength, kFaintest));
    DrawRing(RadiusOfStrength(terrain.brushEdge, strength, BrushRadius()));
  }
  glDisable(GL_BLEND);
}

Vector3 RoadPostFoot(const RoadPoint& point) {
  return {point.x, point.h * modConfig.HeightScale, point.z};
}

Vector3 RoadPostTop(const RoadPoint& point) {
  return RoadPostFoot(point) + Vector3{0, kRoadPostHeight, 0};
}

}  // namespace

// Markers leave no depth, so that those nearer to the camera have to come after those behind them.
void DrawPointMarkers(const CellMap& cells) {
  const ViewSquare& square = cells.Square();
  const Cell middle = CellOf(camera.position.x, camera.position.z);
  store.vertices.clear();
  ForEachInwards(square.ViewRowStart + 1, square.ViewRowEnd, middle.i, [&](int i) {
    ForEachInwards(square.ViewColStart, square.ViewColEnd - 1, middle.j, [&](int j) {
      if (cells.At(i, j) != 0) AddMarker(terrain.grid[i][j]);
    });
  });
  if (store.vertices.empty()) return;
  glLineWidth(kMarkerWidth);
  glDepthMask(GL_FALSE);
  DrawMarkVertices();
  glDepthMask(GL_TRUE);
}

// Like all marks the sphere leaves no depth, as tools that read the depth under the cursor have to
// find the ground.
void DrawBrushSphere() {
  if (SameUnit(camera.position.x, terrain.pick.x) || SameUnit(camera.position.y, terrain.pick.y) ||
      SameUnit(camera.position.z, terrain.pick.z))
    return;
  if (!store.sphere) store.sphere = gluNewQuadric();
  if (!store.sphere) return;
  glLineWidth(kSphereWidth);
  glColor4f(1, 0, 0, 1);
  gluQuadricDrawStyle(store.sphere, GLU_LINE);
  glDepthMask(GL_FALSE);
  glPushMatrix();
  glTranslatef(terrain.pick.x, terrain.pick.y, terrain.pick.z);
  gluSphere(store.sphere, BrushRadius(), kSphereSlices, kSphereStacks);
  glPopMatrix();
  glDepthMask(GL_TRUE);
}

// Like the sphere the outline leaves the depth of the ground as it is.
void DrawBrushOutline() {
  if (!HasUsableTerrain()) return;
  glLineWidth(kOutlineWidth);
  glColor4f(1, 1, 0, 1);
  glDepthMask(GL_FALSE);
  glDepthRange(0, kOutlineDepth);
  if (terrain.brushEdge == BrushEdge::Hard) {
    DrawRing(BrushRadius());
  } else {
    DrawFadingRings();
  }
  glDepthRange(0, 1);
  glDepthMask(GL_TRUE);
}

void DrawRoadPosts() {
  const int count = std::clamp(terrain.roadPointCount, 0, kMaxRoadPoints);
  glLineWidth(kRoadPostWidth);
  glColor4f(1, 0, 1, 1);
  glDepthMask(GL_FALSE);
  glBegin(GL_LINES);
  for (int k = 0; k < count; ++k) {
    const RoadPoint& point = terrain.roadPoints[static_cast<std::size_t>(k)];
    Vertex(RoadPostFoot(point));
    Vertex(RoadPostTop(point));
    if (k == 0) continue;
    Vertex(RoadPostTop(terrain.roadPoints[static_cast<std::size_t>(k - 1)]));
    Vertex(RoadPostTop(point));
  }
  glEnd();
  glDepthMask(GL_TRUE);
}

void ReleaseTerrainMarks() {
  if (store.buffer) glDeleteBuffers(1, &store.buffer);
  if (store.sphere) gluDeleteQuadric(store.sphere);
  store = MarkStore{};
}

}  // namespace mw
