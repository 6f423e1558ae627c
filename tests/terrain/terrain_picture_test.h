// A landscape of 512 samples in front of an offscreen 3D view, drawn with the kept buffers and cell
// by cell.
#pragma once

#include "bench/plain/plain_terrain.h"
#include "bench/plain/terrain_scene.h"
#include "core/editor_state.h"
#include "data/mod_config.h"
#include "support/pictures.h"
#include "support/sandbox.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"

namespace mw {

class TerrainPictureTest : public SandboxTest {
 protected:
  static constexpr int kWidth = 400, kHeight = 260;

  static constexpr SceneCamera kFly{1000, 140, 1000, -25, 180}, kLow{1200, 95, 900, -8, 30},
      kTopDown{1010, 255, 1010, -90, 180}, kFirstCorner{30, 120, 20, -30, 200},
      kLastCorner{2040, 120, 2030, -35, 20}, kOutside{-150, 150, 500, -20, 270},
      kUnderground{1000, 20, 1000, 12, 180};
  static constexpr SceneCamera kCameras[] = {kFly,        kLow,     kTopDown,    kFirstCorner,
                                             kLastCorner, kOutside, kUnderground};

  void SetUp() override {
    if (!OpenTestGl(kWidth, kHeight)) GTEST_SKIP() << TestGlError();
    MakeLandscape(512);
    MakeLandscapeTextures();
    terrain.tool = TerrainTool::Raising;
  }
  void TearDown() override {
    if (!terrain.grid) return;
    ReleaseTerrainBuffers();
    DeleteLandscapeTextures();
    RemoveLandscape();
  }

  static void ShowWireframe() { editor.ShowGrid = true, editor.ShowTextures = false; }
  static void ShowTextured() { editor.ShowGrid = false, editor.ShowTextures = true; }
  static void ShowTexturedWireframe() { editor.ShowGrid = editor.ShowTextures = true; }
  static constexpr void (*kDisplayModes[])() = {ShowWireframe, ShowTextured, ShowTexturedWireframe};

  // A whole frame of the Terrain Mapper, and the same with its cells drawn one by one. The tools
  // used here draw nothing after the water.
  static DrawnPicture Frame(const SceneCamera& from) {
    BeginScene(from, kWidth, kHeight);
    terrain.waterScroll = 0;
    RenderTerrainMode();
    return ReadPicture();
  }
  static DrawnPicture PlainFrame(const SceneCamera& from) {
    BeginScene(from, kWidth, kHeight);
    terrain.waterScroll = 0;
    plain::DrawTerrainModeCells();
    RenderWater();
    return ReadPicture();
  }
  static void ExpectSamePicture(const SceneCamera& from) {
    const DrawnPicture frame = Frame(from);
    ExpectSimilar(frame, PlainFrame(from));
  }
};

}  // namespace mw
