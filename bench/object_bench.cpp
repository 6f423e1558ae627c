// Frames with many static objects, drawn from buffers shared per mesh and grouped by mesh, and one
// display list call per object. Each ratio compares the two in the same run: how many times faster
// the program's own way is.
#include <GL/gl.h>
#include <benchmark/benchmark.h>
#include <cmath>
#include <vector>

#include "bench/plain/gl_context.h"
#include "bench/plain/object_scene.h"
#include "bench/plain/terrain_scene.h"
#include "compare.h"
#include "data/mod_config.h"
#include "objects/object_hover.h"
#include "objects/object_render.h"

namespace mw {
namespace {

constexpr int kObjects = 2000, kMeshes = 40;
constexpr float kMiddle = 512, kSpacing = 4;
// From above one corner: all objects are in view.
constexpr SceneCamera kOver{kMiddle, 120, kMiddle + 170, -30, 0};
// In the midst of them: most are out of view.
constexpr SceneCamera kAmong{kMiddle, 56, kMiddle, -5, 0};

struct Size {
  int width, height;
};
constexpr Size kSmall{64, 40}, kWindow{1280, 800};

// Objects side by side, their meshes mixed as in a level, each turned its own way.
void PlaceObjects(int triangles) {
  static const unsigned texture = MakeSideTexture();
  DeleteSceneMeshes();
  objectStore = ObjectStore{};
  objectStore.CursorPoint = {-1000, 0, 0};
  std::vector<int> entries;
  std::vector<MeshListId> lists;
  for (int mesh = 0; mesh < kMeshes; ++mesh) {
    const float radius = 1 + 0.02f * static_cast<float>(mesh);
    const MeshSurface ball = Ball(triangles, radius, texture);
    lists.push_back(MakeSceneMesh({&ball, 1}));
    entries.push_back(
        AddSceneEntry(MeshKind::StandardMesh, {-radius, 0, -radius}, {radius, 2 * radius, radius}));
  }
  constexpr int kPerRow = 40;
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

void CompareFrames(benchmark::State& state, const Size& size, const SceneCamera& from) {
  if (!OpenTestGl(size.width, size.height)) {
    state.SkipWithError(TestGlError().c_str());
    return;
  }
  MakeLandscape(256);
  PlaceObjects(static_cast<int>(state.range(1)));
  objectStore.viewMode = static_cast<ViewMode>(state.range(0));
  const auto time = [&](auto draw) {
    BeginScene(from, size.width, size.height);
    glFinish();
    return Seconds(draw);
  };
  Compare(
      state, [&] { return time(DrawObjects); }, [&] { return time(plain::DrawStaticObjects); });
}

void AllInView(benchmark::State& state) { CompareFrames(state, kSmall, kOver); }
void AllInLargeView(benchmark::State& state) { CompareFrames(state, kWindow, kOver); }
void AmongThem(benchmark::State& state) { CompareFrames(state, kWindow, kAmong); }

// With few triangles the time is that of the calls, with many that of the triangles themselves,
// which no way of calling makes faster.
void Meshes(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"viewMode", "triangles"})->UseManualTime()->Iterations(40);
  for (const ViewMode mode : {ViewMode::DetailMesh, ViewMode::TexturedMesh}) {
    for (const int triangles : {12, 300}) bench->Args({static_cast<int>(mode), triangles});
  }
}
BENCHMARK(AllInView)->Apply(Meshes);
BENCHMARK(AllInLargeView)->Apply(Meshes);
BENCHMARK(AmongThem)->Apply(Meshes);

}  // namespace
}  // namespace mw
