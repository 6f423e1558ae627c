// Frames of the Material Mapper over a Medium level, drawn from kept buffers and cell by cell. Each
// ratio compares two ways in the same run: how many times faster the program's own way is.
#include <GL/gl.h>
#include <benchmark/benchmark.h>
#include <cstdint>

#include "bench/plain/gl_context.h"
#include "bench/plain/plain_material.h"
#include "bench/plain/terrain_scene.h"
#include "compare.h"
#include "core/editor_state.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"
#include "terrain/terrain_render.h"

namespace mw {
namespace {

constexpr int kWidth = 1090, kHeight = 670;  // about the 3D view of a main window of 1280 x 800
constexpr SceneCamera kFlying{1000, 140, 1000, -25, 180};

enum Action { kStand, kTurn, kHover, kPaint };

bool OpenScene(benchmark::State& state) {
  if (!OpenTestGl(kWidth, kHeight)) {
    state.SkipWithError(TestGlError().c_str());
    return false;
  }
  MakeLandscape(512);
  static bool texturesMade = false;
  if (!texturesMade) MakeLandscapeTextures();
  texturesMade = true;
  CreateMaterialMapper();
  for (int i = 1; i <= 512; ++i) {
    for (int j = 0; j < 512; ++j)
      materialMapper->grid[i][j] = static_cast<std::uint32_t>(i / 7 + j / 5) % kMaterialCount;
  }
  SetMaterialBrushSize(5);
  editor.ShowGrid = true;
  return true;
}

// Moves camera and brush on as the action does from frame to frame.
void Prepare(Action action, int frame) {
  SceneCamera from = kFlying;
  const auto step = static_cast<float>(frame % 40);
  if (action == kTurn) from.yaw += step * 0.5f;
  materialMapper->pick = {1000, 60, 1060};
  if (action == kHover || action == kPaint) materialMapper->pick.x += step;
  materialMapper->currentMaterial = static_cast<std::uint32_t>(frame % kMaterialCount);
  BeginScene(from, kWidth, kHeight);
  if (action == kPaint) PaintAlong(BrushWay::At(materialMapper->pick.x, materialMapper->pick.z));
  glFinish();
}

void Frame(benchmark::State& state) {
  if (!OpenScene(state)) return;
  const auto action = static_cast<Action>(state.range(0));
  int frame = 0;
  Compare(
      state,
      [&] {
        Prepare(action, ++frame);
        return Seconds(RenderMaterialMode);
      },
      [&] {
        Prepare(action, frame);
        return Seconds([] { plain::DrawMaterialModeCells(), RenderWater(); });
      });
}
BENCHMARK(Frame)
    ->ArgName("stand0_turn1_hover2_paint3")
    ->DenseRange(kStand, kPaint)
    ->UseManualTime()
    ->Iterations(60);

}  // namespace
}  // namespace mw
