#include "core/hooks.h"
#include "terrain/material_mode_test.h"

namespace mw {
namespace {

using MaterialRenderTest = MaterialModeTest;

TEST_F(MaterialRenderTest, IconsAndSurfacesLookAsDrawnCellByCell) {
  materialMapper->pick = {1010, 60, 1040};
  SetMaterialBrushSize(4);
  for (const bool surface : {false, true}) {
    materialMapper->SurfaceView = surface;
    for (const bool grid : {false, true}) {
      editor.ShowGrid = grid;
      for (const SceneCamera& from : {kFly, kLow, kTopDown, kFirstCorner, kLastCorner, kOutside}) {
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

TEST_F(MaterialRenderTest, RoadsAndFillShowAtOnce) {
  materialMapper->pick = {-1000, 0, -1000};
  const DrawnPicture before = MaterialFrame(kTopDown);
  for (int i = 240; i < 260; ++i) SetMaterial(15, i, 255);
  const DrawnPicture road = MaterialFrame(kTopDown);
  EXPECT_GT(DifferentPixels(before, road, kShades), 20u);
  ExpectSameMaterialPicture(kTopDown);
  SetCurrentMaterial(3);
  scripted::script.answers = {PromptAnswer::Ok};
  FillWithMaterial();
  EXPECT_GT(DifferentPixels(road, MaterialFrame(kTopDown), kShades), kWidth * kHeight / 2u);
  ExpectSameMaterialPicture(kTopDown);
}

TEST_F(MaterialRenderTest, HeightsAndMaterialsBothFollowTheirEdits) {
  MaterialFrame(kFly);
  for (int i = 250; i < 262; ++i) SetHeight(i, 262, 200);
  ExpectSameMaterialPicture(kFly);
}

TEST_F(MaterialRenderTest, PlacedObjectsComeOnRequestBeforeTheWater) {
  int drawn = 0;
  hooks.drawStaticObjects = [&] { ++drawn; };
  MaterialFrame(kFly);
  EXPECT_EQ(drawn, 0);
  editor.drawObjectsInMappers = true;
  MaterialFrame(kFly);
  EXPECT_EQ(drawn, 1);
  hooks.drawStaticObjects = [] {};
}

TEST_F(MaterialRenderTest, TheCameraOnTerrainStandsOnTheGround) {
  BeginScene(kFly, kWidth, kHeight);
  editor.cameraMode = CameraMode::OnTerrain;
  RenderMaterialMode();
  EXPECT_FLOAT_EQ(camera.position.y, HeightUnderCamera(3));
}

}  // namespace
}  // namespace mw
