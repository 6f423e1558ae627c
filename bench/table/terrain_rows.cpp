// Frames of a Medium level's terrain, textured with grid, against drawing it cell by cell.
#include <GL/gl.h>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/plain/gl_context.h"
#include "bench/plain/plain_terrain.h"
#include "bench/plain/terrain_scene.h"
#include "bench/table/table.h"
#include "core/camera.h"
#include "core/editor_state.h"
#include "data/mod_config.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"
#include "terrain/terrain_tools.h"

namespace mw::bench {
namespace {

constexpr int kSize = 512, kRounds = 31;
constexpr double kMaxDifferent = 0.0002;  // of the pixels

struct Surface {
  int width, height;
};
constexpr Surface kWindow{1280, 800}, kTiny{64, 40};

// Along the ground, a step and a small turn per frame.
SceneCamera Walking(int frame) {
  const float x = 900 + 0.9f * static_cast<float>(frame), z = 1100;
  return {x, 0, z, -5, 180 + 0.5f * static_cast<float>(frame)};
}

// High above it, turning faster.
SceneCamera Flying(int frame) {
  const auto step = static_cast<float>(frame);
  return {1000 + 2 * step, 140, 1000 + step, -25, 180 + 1.5f * step};
}

using Path = SceneCamera (*)(int frame);

void Begin(SceneCamera from, const Surface& surface) {
  if (from.y == 0) {
    camera.position.Set(from.x, 0, from.z);
    from.y = HeightUnderCamera(3);
  }
  BeginScene(from, surface.width, surface.height);
  glFinish();
}

double TimeDrawn(void (*draw)()) {
  return Time([draw] {
    draw();
    glFinish();
  });
}

void DrawPlainly() {
  plain::DrawTerrainModeCells();
  RenderWater();
}

// The share of pixels that differ, over frames along the path.
double ShareOfDifferentPixels(Path path) {
  std::size_t different = 0, all = 0;
  for (int frame = 0; frame < 40; frame += 8) {
    terrain.waterScroll = 0;
    Begin(path(frame), kWindow);
    RenderTerrainMode();
    const DrawnPicture ours = ReadPicture();
    terrain.waterScroll = 0;
    Begin(path(frame), kWindow);
    DrawPlainly();
    different += DifferentPixels(ours, ReadPicture());
    all += ours.rgb.size() / 3;
  }
  return static_cast<double>(different) / static_cast<double>(all);
}

Times CompareFrames(Path path, const Surface& surface) {
  int frame = 0;
  OpenTestGl(surface.width, surface.height);
  Begin(path(frame), surface);
  RenderTerrainMode();
  return Compare(
      kRounds,
      [&] {
        Begin(path(++frame), surface);
        return TimeDrawn(RenderTerrainMode);
      },
      [&] {
        Begin(path(frame), surface);
        return TimeDrawn(DrawPlainly);
      });
}

void AddFrames(Path path, const std::string& name) {
  AddTimes("terrain frame, 1280 x 800, " + name, "cell by cell", CompareFrames(path, kWindow),
           0.30);
  const double share = ShareOfDifferentPixels(path);
  AddResult("its pixels", Decimal(share * 100, 4) + " % different", "cell by cell", "", "<= 0.02 %",
            share <= kMaxDifferent);
  AddTimes("terrain frame, 64 x 40, " + name, "cell by cell", CompareFrames(path, kTiny), 1.0 / 15);
}

// Two frames of the path follow each other, so that none can be taken from the last one.
constexpr int kEditRounds = 4 * kRounds, kEditFrames = 2 * kRounds;

// One hundredth of all vertices, in a square in front of the camera.
void EditOneHundredth(int frame) {
  constexpr int kSide = kSize / 10, kFirst = 220;
  for (int i = kFirst; i < kFirst + kSide; ++i) {
    for (int j = kFirst; j < kFirst + kSide; ++j) {
      SetHeight(i, j,
                terrain.grid[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)].h +
                    (frame % 2 ? 0.5f : -0.5f));
    }
  }
}

void AddEditedFrame(const Surface& surface, const std::string& name) {
  OpenTestGl(surface.width, surface.height);
  int frame = 0;
  const Times times = Compare(
      kEditRounds,
      [&] {
        EditOneHundredth(++frame);
        Begin(Flying(frame % kEditFrames), surface);
        return TimeDrawn(RenderTerrainMode);
      },
      [&] {
        Begin(Flying(++frame % kEditFrames), surface);
        return TimeDrawn(RenderTerrainMode);
      });
  AddTimes("terrain frame, " + name + ", 1 % of the vertices edited", "frame without edits", times,
           1.05);
}

}  // namespace

void AddTerrainRows() {
  if (!OpenTestGl(kWindow.width, kWindow.height)) {
    std::fprintf(stderr, "%s\n", TestGlError().c_str());
    return;
  }
  MakeLandscape(kSize);
  MakeLandscapeTextures();
  editor.ShowTextures = editor.ShowGrid = true;
  terrain.tool = TerrainTool::Carving;
  AddFrames(Walking, "walking");
  AddFrames(Flying, "flying");
  AddEditedFrame(kWindow, "1280 x 800");
  DeleteLandscapeTextures();
  RemoveLandscape();
}

}  // namespace mw::bench
