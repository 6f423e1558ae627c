// The landscape of the picture tests with patches of all materials, drawn by the Material Mapper.
#pragma once

#include "bench/plain/plain_material.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"
#include "terrain/terrain.h"
#include "terrain/terrain_picture_test.h"

namespace mw {

class MaterialModeTest : public TerrainPictureTest {
 protected:
  void SetUp() override {
    TerrainPictureTest::SetUp();
    if (!terrain.grid) return;
    CreateMaterialMapper();
    for (int i = 0; i <= 512; ++i) {
      for (int j = 0; j <= 512; ++j)
        Material(i, j) = static_cast<std::uint32_t>(i / 7 + j / 5) % 16;
    }
    editor.ShowGrid = false;
  }
  void TearDown() override {
    TerrainPictureTest::TearDown();
    DestroyMaterialMapper();
  }

  static std::uint32_t& Material(int i, int j) { return materialMapper->grid[i][j]; }

  // Whole frames of the mode.
  static DrawnPicture MaterialFrame(const SceneCamera& from) {
    BeginScene(from, kWidth, kHeight);
    terrain.waterScroll = 0;
    RenderMaterialMode();
    return ReadPicture();
  }
  static DrawnPicture PlainMaterialFrame(const SceneCamera& from) {
    BeginScene(from, kWidth, kHeight);
    terrain.waterScroll = 0;
    plain::DrawMaterialModeCells();
    RenderWater();
    return ReadPicture();
  }
  static void ExpectSameMaterialPicture(const SceneCamera& from) {
    const DrawnPicture frame = MaterialFrame(from);
    ExpectSimilar(frame, PlainMaterialFrame(from));
  }

  // Paints at a world position in what a frame shows.
  static void PaintAt(float x, float z, const SceneCamera& from = kTopDown) {
    MaterialFrame(from);
    PaintAlong(BrushWay::At(x, z));
  }
};

}  // namespace mw
