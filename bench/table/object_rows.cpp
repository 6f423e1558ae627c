// Frames with many static objects, against one display list per object.
#include <GL/gl.h>
#include <cstdio>
#include <string>
#include <vector>

#include "bench/plain/gl_context.h"
#include "bench/plain/object_scene.h"
#include "bench/plain/terrain_scene.h"
#include "bench/table/table.h"
#include "core/camera.h"
#include "data/mod_config.h"
#include "objects/object_hover.h"
#include "objects/object_render.h"

namespace mw::bench {
namespace {

constexpr int kObjects = 2000, kMeshes = 40, kTriangles = 300, kPerRow = 40;
constexpr float kMiddle = 512, kSpacing = 4;
constexpr int kWidth = 64, kHeight = 40;
// From above one corner: all objects are in view.
constexpr SceneCamera kOver{kMiddle, 120, kMiddle + 170, -30, 0};

// Side by side, their meshes mixed as in a level, each turned its own way.
void PlaceObjects() {
  const unsigned texture = MakeSideTexture();
  std::vector<int> entries;
  std::vector<MeshListId> lists;
  for (int mesh = 0; mesh < kMeshes; ++mesh) {
    const float radius = 1 + 0.02f * static_cast<float>(mesh);
    const MeshSurface ball = Ball(kTriangles, radius, texture);
    lists.push_back(MakeSceneMesh({&ball, 1}));
    entries.push_back(
        AddSceneEntry(MeshKind::StandardMesh, {-radius, 0, -radius}, {radius, 2 * radius, radius}));
  }
  for (int i = 0; i < kObjects; ++i) {
    const auto mesh = static_cast<std::size_t>(i * 7 % kMeshes);
    const float x = (static_cast<float>(i % kPerRow) - kPerRow / 2) * kSpacing;
    const float z = (static_cast<float>(i / kPerRow) - kPerRow / 2) * kSpacing;
    StaticObject& object =
        AddSceneObject(entries[mesh], lists[mesh], {MirrorX(kMiddle + x), 50, kMiddle + z});
    object.rotation = {static_cast<float>(i * 37 % 360), 0, 0};
  }
}

// A frame's share of them: with the search for the one under the mouse.
void DrawObjects() {
  FindHovered();
  DrawStaticObjects();
}

}  // namespace

void AddObjectRows() {
  if (!OpenTestGl(kWidth, kHeight)) {
    std::fprintf(stderr, "%s\n", TestGlError().c_str());
    return;
  }
  MakeLandscape(256);
  objectStore = ObjectStore{};
  objectStore.CursorPoint = {-1000, 0, 0};
  PlaceObjects();
  const auto time = [](auto draw) {
    BeginScene(kOver, kWidth, kHeight);
    glFinish();
    return Time([&] {
      draw();
      glFinish();
    });
  };
  for (const ViewMode mode : {ViewMode::DetailMesh, ViewMode::TexturedMesh}) {
    objectStore.viewMode = mode;
    const Times times = Compare(
        31, [&] { return time(DrawObjects); }, [&] { return time(plain::DrawStaticObjects); });
    const std::string name = mode == ViewMode::DetailMesh ? "detail" : "textured";
    AddTimes("frame of 2000 objects of 300 triangles, 64 x 40, " + name,
             "one display list per object", times, 1.0 / 3);
  }
  DeleteSceneMeshes();
  objectStore = ObjectStore{};
  RemoveLandscape();
}

}  // namespace mw::bench
