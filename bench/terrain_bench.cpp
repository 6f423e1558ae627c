// Frames of a Medium level's terrain, drawn from kept buffers and cell by cell, and what an edit
// costs. Each ratio compares two ways in the same run: how many times faster the program's own way
// is.
#include <GL/gl.h>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <cstdlib>

#include "bench/plain/gl_context.h"
#include "bench/plain/plain_terrain.h"
#include "bench/plain/terrain_scene.h"
#include "compare.h"
#include "core/editor_state.h"
#include "data/mod_config.h"
#include "terrain/terrain.h"
#include "terrain/terrain_buffers.h"
#include "terrain/terrain_render.h"
#include "terrain/terrain_tools.h"

namespace mw {
namespace {

constexpr int kWidth = 1090, kHeight = 670;  // about the 3D view of a main window of 1280 x 800

constexpr SceneCamera kFlying{1000, 140, 1000, -25, 180}, kTopDown{1010, 255, 1010, -90, 180};

bool OpenScene(benchmark::State& state) {
  if (!OpenTestGl(kWidth, kHeight)) {
    state.SkipWithError(TestGlError().c_str());
    return false;
  }
  MakeLandscape(512);
  static bool texturesMade = false;
  if (!texturesMade) MakeLandscapeTextures();
  texturesMade = true;
  return true;
}

// A camera that turns a little from frame to frame, as in flight: nothing can be reused.
SceneCamera Turning(SceneCamera from, int frame) {
  from.yaw += static_cast<float>(frame % 40) * 0.5f;
  return from;
}

void CompareFrames(benchmark::State& state, const SceneCamera& from, bool turning) {
  if (!OpenScene(state)) return;
  editor.ShowTextures = state.range(0) != 0;
  editor.ShowGrid = state.range(1) != 0;
  terrain.tool = state.range(2) != 0 ? TerrainTool::PointManipulation : TerrainTool::Smoothing;
  int frame = 0;
  const auto begin = [&] {
    BeginScene(turning ? Turning(from, frame) : from, kWidth, kHeight);
    glFinish();
  };
  begin();
  RenderTerrainMode();
  Compare(
      state,
      [&] {
        ++frame;
        begin();
        return Seconds(RenderTerrainMode);
      },
      [&] {
        begin();
        return Seconds([] {
          plain::DrawTerrainModeCells();
          RenderWater();
        });
      });
}

void Standing(benchmark::State& state) { CompareFrames(state, kFlying, false); }
void Flying(benchmark::State& state) { CompareFrames(state, kFlying, true); }
void TopDown(benchmark::State& state) { CompareFrames(state, kTopDown, true); }

void DisplayModes(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"textures", "grid", "markers"})->UseManualTime()->Iterations(60);
  for (const int markers : {0, 1}) {
    bench->Args({0, 1, markers});
    bench->Args({1, 0, markers});
    bench->Args({1, 1, markers});
  }
}
BENCHMARK(Standing)->Apply(DisplayModes);
BENCHMARK(Flying)->Apply(DisplayModes);
BENCHMARK(TopDown)->Apply(DisplayModes);

// A tool of the largest brush, held on the ground in front of the camera.
void HoldBrush(TerrainTool tool) {
  SelectTool(tool);
  SetBrushSize(kMaxBrushSize);
  terrain.flattenSampled = 1;
  editor.ShowTextures = editor.ShowGrid = true;
  terrain.pick = {1000, 60, 1100, false};
}

// A hundredth of a second of the brush.
void Stroke() { BrushAlong(BrushWay::At(terrain.pick.x, terrain.pick.z), 0.01f); }

void SculptingTools(benchmark::internal::Benchmark* bench) {
  bench->ArgName("tool")->UseManualTime()->Iterations(60);
  for (const TerrainTool tool :
       {TerrainTool::Carving, TerrainTool::Smoothing, TerrainTool::Flatten})
    bench->Arg(static_cast<int>(tool));
}

// A frame with a stroke of the brush, with only the vertices it touched written to the buffers,
// against a frame that rebuilds them all.
void FrameWithStroke(benchmark::State& state) {
  if (!OpenScene(state)) return;
  HoldBrush(static_cast<TerrainTool>(state.range(0)));
  const auto frame = [](bool rebuildAll) {
    BeginScene(kFlying, kWidth, kHeight);
    glFinish();
    return Seconds([&] {
      Stroke();
      if (rebuildAll) MarkAllTerrainChanged();
      RenderTerrainMode();
    });
  };
  frame(true);
  Compare(
      state, [&] { return frame(false); }, [&] { return frame(true); });
}
BENCHMARK(FrameWithStroke)->Apply(SculptingTools);

// Only the update of the buffers after such a stroke.
void BuffersAfterStroke(benchmark::State& state) {
  if (!OpenScene(state)) return;
  HoldBrush(TerrainTool::Carving);
  BeginScene(kFlying, kWidth, kHeight);
  const auto update = [](bool rebuildAll) {
    Stroke();
    if (rebuildAll) MarkAllTerrainChanged();
    glFinish();
    return Seconds([] { SyncTerrainBuffers(CellColours{}); });
  };
  update(true);
  Compare(
      state, [&] { return update(false); }, [&] { return update(true); });
}
BENCHMARK(BuffersAfterStroke)->UseManualTime()->Iterations(60);

// A frame with a stroke against one without, both from a camera that turns: how much of the frame
// rate a stroke leaves.
void FrameWithStrokeAgainstFrameWithout(benchmark::State& state) {
  if (!OpenScene(state)) return;
  HoldBrush(static_cast<TerrainTool>(state.range(0)));
  int turn = 0;
  const auto frame = [&](bool stroke) {
    BeginScene(Turning(kFlying, ++turn), kWidth, kHeight);
    glFinish();
    return Seconds([&] {
      if (stroke) Stroke();
      RenderTerrainMode();
    });
  };
  frame(true);
  Compare(
      state, [&] { return frame(true); }, [&] { return frame(false); });
}
BENCHMARK(FrameWithStrokeAgainstFrameWithout)->Apply(SculptingTools);

// Reading the file image into the grid, against setting its heights one by one.
void LoadHeights(benchmark::State& state) {
  MakeLandscape(static_cast<int>(state.range(0)));
  const int size = modConfig.MaterialSize;
  terrain.heightBuffer.resize(static_cast<std::size_t>(size) * static_cast<std::size_t>(size) * 2);
  for (std::uint8_t& byte : terrain.heightBuffer) byte = static_cast<std::uint8_t>(std::rand());
  const auto time = [](auto work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  };
  Compare(
      state, [&] { return time(LoadHeightsFromBuffer); },
      [&] {
        return time([size] {
          std::size_t at = 0;
          for (int r = 0; r < size; ++r) {
            for (int c = 0; c < size; ++c, at += 2)
              SetHeight(size - c, r,
                        static_cast<float>(terrain.heightBuffer[at] +
                                           256 * terrain.heightBuffer[at + 1]) /
                            256);
          }
        });
      });
}
BENCHMARK(LoadHeights)->Arg(512)->Arg(1024)->UseManualTime()->Iterations(20);

}  // namespace
}  // namespace mw
