#include "bench/plain/plain_material.h"
#include "core/hooks.h"
#include "support/prompts.h"
#include "terrain/ground_ray.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"
#include "terrain/terrain.h"
#include "terrain/terrain_picture_test.h"

namespace mw {
namespace {

// The landscape with patches of all materials, drawn by the Material Mapper.
class MaterialRenderTest : public TerrainPictureTest {
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
};

TEST_F(MaterialRenderTest, IconsAndSurfacesLookAsDrawnCellByCell) {
  materialMapper->pick = {1010, 60, 1040};
  SetMaterialBrushSize(4);
  for (const bool surface : {false, true}) {
    materialMapper->SurfaceView = surface;
    for (const bool grid : {false, true}) {
      editor.ShowGrid = grid;
      for (const SceneCamera& from : kCameras) {
        SCOPED_TRACE(testing::Message() << "surface " << surface << ", grid " << grid << ", from "
                                        << from.x << ", " << from.z);
        ExpectSameMaterialPicture(from);
      }
    }
  }
}

TEST_F(MaterialRenderTest, UnknownMaterialsShowAsDefault) {
  const SceneCamera closeBy{1010, 130, 1010, -90, 180};
  for (auto& row : materialMapper->grid) row.fill(0);
  MarkMaterialsChanged();
  const DrawnPicture allDefault = MaterialFrame(closeBy);
  for (auto& row : materialMapper->grid) row.fill(16);
  Material(252, 252) = 0xFFFFFFFFu;
  MarkMaterialsChanged();
  EXPECT_EQ(DifferentPixels(allDefault, MaterialFrame(closeBy)), 0u);
}

TEST_F(MaterialRenderTest, AfterEachStepOfAStrokeThePictureIsThatOfTheWholeGroundDrawnAnew) {
  SetMaterialBrushSize(5);
  SetCurrentMaterial(12);
  editor.ShowGrid = true;
  for (int step = 0; step < 6; ++step) {
    const float at = 990 + static_cast<float>(step) * 13;
    materialMapper->pick = {at, 60, at + 5};
    if (step % 3 != 2)  // the button is let go now and then
      PaintAlong({at - 13 * static_cast<float>(step), at - 8, at, at + 5});
    const DrawnPicture frame = MaterialFrame(kFly);
    ExpectSimilar(frame, PlainMaterialFrame(kFly));
    MarkMaterialsChanged();
    EXPECT_EQ(DifferentPixels(frame, MaterialFrame(kFly)), 0u) << step;
  }
}

TEST_F(MaterialRenderTest, HeightsRoadsAndFillShowAtOnce) {
  materialMapper->pick = {-1000, 0, -1000};
  const auto showsAtOnce = [](unsigned leastPixels, auto edit) {
    const DrawnPicture before = MaterialFrame(kTopDown);
    edit();
    EXPECT_GT(DifferentPixels(before, MaterialFrame(kTopDown), kShades), leastPixels);
    ExpectSameMaterialPicture(kTopDown);
  };
  showsAtOnce(20, [] {
    for (int i = 240; i < 260; ++i) SetMaterial(15, i, 255);
  });
  showsAtOnce(20, [] {
    for (int i = 250; i < 262; ++i) SetHeight(i, 255, 200);
  });
  SetCurrentMaterial(3);
  Answer({PromptAnswer::Ok});
  showsAtOnce(kWidth * kHeight / 2, FillWithMaterial);
}

TEST_F(MaterialRenderTest, ObjectsComeOnRequestAndTheCameraOnTerrainStandsOnTheGround) {
  int drawn = 0;
  hooks.drawStaticObjects = [&] { ++drawn; };
  for (const bool requested : {false, true}) {
    editor.drawObjectsInMappers = requested;
    MaterialFrame(kFly);
    Frame(kFly);
    EXPECT_EQ(drawn, requested ? 2 : 0) << "in the frames of both mappers";
  }
  BeginScene(kFly, kWidth, kHeight);
  editor.cameraMode = CameraMode::OnTerrain;
  camera.position += {1.5f, 0, 0.5f};  // off the corner of a cell
  RenderMaterialMode();
  const float ground = DrawnGroundHeight(camera.position.x, camera.position.z);
  EXPECT_FLOAT_EQ(camera.position.y, ground + 3 * modConfig.HeightScale);
  EXPECT_NE(camera.position.y, HeightUnderCamera(3)) << "on the slope, not on the cell's corner";
}

}  // namespace
}  // namespace mw
