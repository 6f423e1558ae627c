#include <GL/gl.h>

#include "core/mini_map_picture.h"
#include "terrain/terrain_picture_test.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

// Effects of the tools that take place when the terrain is drawn.
class TerrainEffectsTest : public TerrainPictureTest {
 protected:
  static void PickAt(float x, float z) { pick = {x, 60, z, true}; }
  static int CountSelected() {
    int count = 0;
    for (int i = 0; i <= 512; ++i) {
      for (int j = 0; j <= 512; ++j) count += terrain->grid[i][j].selected;
    }
    return count;
  }
};

TEST_F(TerrainEffectsTest, APendingPickTogglesTheNearestVertex) {
  PickAt(1001.9f, 1058.1f);
  Frame(kFly);
  EXPECT_EQ(terrain->grid[250][265].selected, 1) << "x 1000, z 1060";
  EXPECT_EQ(CountSelected(), 1);
  EXPECT_FALSE(pick.pending);
  EXPECT_EQ(terrain->grid[250][267].weight, 2) << "its neighbours are weighed";
  EXPECT_EQ(selectionBox.SelMinRow, 250 - 6);
  EXPECT_EQ(selectionBox.SelMaxCol, 265 + 6);

  PickAt(1002.1f, 1058.1f);
  Frame(kFly);
  EXPECT_EQ(terrain->grid[251][265].selected, 1);
  EXPECT_EQ(selectionBox.SelMaxRow, 251 + 6);

  PickAt(1001.9f, 1058.1f);
  Frame(kFly);
  EXPECT_EQ(terrain->grid[250][265].selected, 0);
}

TEST_F(TerrainEffectsTest, WithCtrlAPickOnlySelects) {
  editor.ctrlHeld = true;
  for (int times = 0; times < 2; ++times) {
    PickAt(1000, 1060);
    Frame(kFly);
    EXPECT_EQ(terrain->grid[250][265].selected, 1);
  }
}

TEST_F(TerrainEffectsTest, APickOutOfSightWaits) {
  PickAt(1000, 940);  // behind the camera
  Frame(kFly);
  EXPECT_TRUE(pick.pending);
  EXPECT_EQ(CountSelected(), 0);
  PickAt(-1e20f, 1e20f);
  Frame(kFly);
  EXPECT_TRUE(pick.pending);
}

TEST_F(TerrainEffectsTest, FlattenSamplesThenLevelsASquareAroundTheCursor) {
  terrain->tool = TerrainTool::Flatten;
  terrain->brushSize = 3;
  pick = {1001, 60, 1101, false};
  const float sampled = terrain->grid[251][275].h;  // the cell with this corner is under the cursor
  Frame(kFly);
  EXPECT_EQ(terrain->flattenSampled, 1);
  EXPECT_EQ(terrain->flattenHeight, sampled);
  EXPECT_NE(terrain->grid[250][275].h, sampled);

  terrain->flattenActive = 1;
  Frame(kFly);
  for (int i = 247; i <= 254; ++i) {
    for (int j = 272; j <= 279; ++j) EXPECT_EQ(terrain->grid[i][j].h, sampled) << i << ' ' << j;
  }
  EXPECT_NE(terrain->grid[246][275].h, sampled);
  EXPECT_NE(terrain->grid[255][275].h, sampled);
  EXPECT_NE(terrain->grid[250][271].h, sampled);
  EXPECT_NE(terrain->grid[250][280].h, sampled);
  const auto grey = miniMapPicture.grey[(128 - 275 / 4) * 128 + 128 - 250 / 4];
  EXPECT_EQ(grey, static_cast<int>(sampled)) << "the Mini-Map shows it";
  EXPECT_TRUE(editor.levelModified);
  ShowTexturedWireframe();
  ExpectSamePicture(kFly);
}

TEST_F(TerrainEffectsTest, FlattenDoesNotLevelWhatIsOutOfSight) {
  terrain->tool = TerrainTool::Flatten;
  terrain->flattenSampled = terrain->flattenActive = 1;
  terrain->flattenHeight = 33;
  pick = {1000, 60, 900, false};
  Frame(kFly);
  EXPECT_NE(terrain->grid[250][225].h, 33);
}

TEST_F(TerrainEffectsTest, TheFlattenBrushIsRedOnceSampledAndBlueWhileCtrlSamplesAnew) {
  modConfig.WaterLevel = -1000;
  InitGrid();
  terrain->tool = TerrainTool::Flatten;
  terrain->brushSize = 4;
  terrain->flattenSampled = 1;
  pick = {1001, 76, 1061, false};
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

TEST_F(WorldPointTest, ThePointUnderAPixelIsTheGroundThatIsSeenThere) {
  InitGrid();
  modConfig.WaterLevel = -1000;
  Frame({1010, 200, 900, -90, 180});
  const auto below = WorldPointUnderCursor(kWidth / 2, kHeight / 2);
  ASSERT_TRUE(below);
  EXPECT_NEAR(below->x, 1010, 1);
  EXPECT_NEAR(below->y, 127 * 0.6f, 0.5f);
  EXPECT_NEAR(below->z, 900, 1);
  GLfloat modelView[16];
  glGetFloatv(GL_MODELVIEW_MATRIX, modelView);
  EXPECT_EQ(modelView[12], 0) << "the model-view matrix is the identity now";

  ShowTextured();
  Frame({1010, 120, 900, -30, 250});
  const auto ahead = WorldPointUnderCursor(250, 180);
  ASSERT_TRUE(ahead);
  EXPECT_NEAR(ahead->y, 127 * 0.6f, 0.2f);

  ShowTexturedWireframe();  // under grid lines the ground lies a pixel's slope farther away
  Frame({1010, 120, 900, -30, 250});
  const auto onGrid = WorldPointUnderCursor(250, 180);
  ASSERT_TRUE(onGrid);
  EXPECT_LT(onGrid->DistanceTo(*ahead), 1) << "still well within a cell";
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
