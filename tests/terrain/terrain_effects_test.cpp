#include <GL/gl.h>
#include <cmath>
#include <vector>

#include "core/camera.h"
#include "terrain/mini_map_picture.h"
#include "terrain/terrain.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_picture_test.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

// Effects of the tools that take place when the terrain is drawn.
class TerrainEffectsTest : public TerrainPictureTest {
 protected:
  static void Flatten() { FlattenAlong(BrushWay::At(terrain.pick.x, terrain.pick.z)); }
};

TEST_F(TerrainEffectsTest, FlattenSamplesThenLevelsASquareAroundTheCursor) {
  terrain.tool = TerrainTool::Flatten;
  terrain.brushSize = 3;
  terrain.pick = {1001, 60, 1101, false};
  const float sampled = terrain.grid[251][275].h;  // the cell with this corner is under the cursor
  Frame(kFly);
  EXPECT_EQ(terrain.flattenSampled, 1);
  EXPECT_EQ(terrain.flattenHeight, sampled);
  EXPECT_NE(terrain.grid[250][275].h, sampled);

  Flatten();
  for (int i = 247; i <= 254; ++i) {
    for (int j = 272; j <= 279; ++j) EXPECT_EQ(terrain.grid[i][j].h, sampled) << i << ' ' << j;
  }
  EXPECT_NE(terrain.grid[246][275].h, sampled);
  EXPECT_NE(terrain.grid[255][275].h, sampled);
  EXPECT_NE(terrain.grid[250][271].h, sampled);
  EXPECT_NE(terrain.grid[250][280].h, sampled);
  const auto grey = terrain.miniMap.grey[(128 - 275 / 4) * 128 + 128 - 250 / 4];
  EXPECT_EQ(grey, static_cast<int>(sampled)) << "the Mini-Map shows it";
  ShowTexturedWireframe();
  ExpectSamePicture(kFly);
}

TEST_F(TerrainEffectsTest, FlattenDoesNotLevelWhatIsOutOfSight) {
  terrain.tool = TerrainTool::Flatten;
  terrain.flattenSampled = 1;
  terrain.flattenHeight = 33;
  terrain.pick = {1000, 60, 900, false};
  Frame(kFly);
  Flatten();
  EXPECT_NE(terrain.grid[250][225].h, 33);
}

TEST_F(TerrainEffectsTest, TheFlattenBrushIsRedOnceSampledAndBlueWhileCtrlSamplesAnew) {
  modConfig.WaterLevel = -1000;
  InitGrid();
  terrain.tool = TerrainTool::Flatten;
  terrain.brushSize = 4;
  terrain.flattenSampled = 1;
  terrain.pick = {1001, 76, 1061, false};
  editor.ShowGrid = editor.ShowTextures = false;
  EXPECT_GT(CountColour(Frame(kFly), 255, 0, 0), 500u);
  ExpectSamePicture(kFly);
  ShowTexturedWireframe();
  ExpectSamePicture(kFly);

  editor.ctrlHeld = true;
  editor.ShowGrid = editor.ShowTextures = false;
  const DrawnPicture sampling = Frame(kFly);
  EXPECT_EQ(CountColour(sampling, 255, 0, 0), 0u);
  EXPECT_GT(CountColour(sampling, 0, 0, 255), 20u);
}

using WorldPointTest = TerrainPictureTest;

TEST_F(WorldPointTest, ThePointUnderAPixelIsTheGroundAtItsCentre) {
  InitGrid();
  const float halfPixel = 123.8f * std::tan(0.3926991f) / kHeight;  // on the ground, from above
  for (const auto& show : {ShowTextured, ShowTexturedWireframe}) {
    show();
    for (const float water : {-1000.0f, 100.0f}) {
      modConfig.WaterLevel = water;  // one sees through to the sea bed
      Frame({1010, 200, 900, -90, 180});
      for (const auto& point : {WorldPointUnderCursor(kWidth / 2, kHeight / 2),
                                GroundUnderCursor(kWidth / 2, kHeight / 2)}) {
        ASSERT_TRUE(point);
        EXPECT_NEAR(point->x, 1010 - halfPixel, 0.002f);
        EXPECT_NEAR(point->y, 127 * 0.6f, 0.0001f);
        EXPECT_NEAR(point->z, 900 - halfPixel, 0.002f);
      }
    }
  }
}

// Pixels on the outline of a hill may show either what is before it or what is behind.
TEST_F(WorldPointTest, TheGroundUnderEveryPixelIsTheOneThatIsDrawnThere) {
  modConfig.WaterLevel = -1000;
  editor.ShowGrid = false;
  for (const SceneCamera& from :
       {kFly, kLow, kTopDown, kFirstCorner, kLastCorner, kOutside, kUnderground}) {
    for (const bool textured : {false, true}) {
      editor.ShowTextures = textured;
      Frame(from);
      std::vector<GLfloat> depths(kWidth * kHeight);
      glReadPixels(0, 0, kWidth, kHeight, GL_DEPTH_COMPONENT, GL_FLOAT, depths.data());
      int wrong = 0, pixels = 0;
      for (int y = 0; y < kHeight; y += 3) {
        for (int x = 0; x < kWidth; x += 3, ++pixels) {
          const auto ground = GroundUnderCursor(x, y);
          const double depth = depths[static_cast<std::size_t>((kHeight - 1 - y) * kWidth + x)];
          const double drawn =
              kNearPlane * kFarPlane / (kFarPlane - depth * (kFarPlane - kNearPlane));
          const double found = ground ? -camera.ToEye(*ground).z : kFarPlane;
          wrong += std::abs(found - drawn) > 0.01 * drawn;
        }
      }
      EXPECT_LE(wrong, pixels / 100) << from.x << ' ' << from.z << ' ' << textured;
    }
  }
}

TEST_F(WorldPointTest, ThePointUnderAPixelIsShownAtThatPixel) {
  Frame(kLow);
  const auto ground = GroundUnderCursor(130, 200);
  ASSERT_TRUE(ground);
  const auto shown = ViewPointOf(*ground);
  ASSERT_TRUE(shown);
  EXPECT_NEAR(shown->x, 130.5f, 0.01f);
  EXPECT_NEAR(shown->y, 200.5f, 0.01f);
  EXPECT_FALSE(ViewPointOf(camera.position - camera.direction)) << "behind the camera";
}

TEST_F(WorldPointTest, APixelOutsideTheViewHasNoPoint) {
  Frame(kFly);
  for (const auto& [x, y] :
       {std::pair{-1, 5}, std::pair{5, -1}, std::pair{kWidth, 5}, std::pair{5, kHeight}})
    EXPECT_FALSE(WorldPointUnderCursor(x, y)) << x << ' ' << y;
}

TEST_F(WorldPointTest, WithoutAViewThereIsNoPoint) {
  scripted::script.makeContextCurrent = nullptr;
  EXPECT_FALSE(WorldPointUnderCursor(5, 5));
}

}  // namespace
}  // namespace mw
