#include "terrain/terrain_tools.h"

#include <algorithm>
#include <cmath>

#include "core/hooks.h"
#include "core/mini_map_picture.h"
#include "terrain/point_selection.h"
#include "terrain/roads.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_picture_test.h"

namespace mw {
namespace {

// A flat level of 256 samples, 4 world units apart, with the brush over vertex (100, 50).
class TerrainToolsTest : public SandboxTest {
 protected:
  TerrainToolsTest() {
    MakeLandscape(256);
    InitGrid();
    viewSquare = {50, 200, 0, 150};
    PutBrushAt(100, 50);
    hooks.invalidateMiniMap = [this] { ++miniMapRepaints; };
  }
  ~TerrainToolsTest() override {
    RemoveLandscape();
    hooks.invalidateMiniMap = [] {};
  }

  static float& HeightOf(int i, int j) { return terrain->grid[i][j].h; }
  static void PutBrushAt(int i, int j) {
    pick.x = terrain->grid[i][j].x;
    pick.z = terrain->grid[i][j].z;
  }
  static int CountChanged() {
    int count = 0;
    for (int i = 0; i <= 256; ++i) {
      for (int j = 0; j <= 256; ++j) count += HeightOf(i, j) != kFlatHeight;
    }
    return count;
  }
  static void HoldFor(float seconds, float framesPerSecond) {
    editor.frameSeconds = std::max(1 / framesPerSecond, 0.01f);
    for (int frame = 0; frame < std::lround(seconds * framesPerSecond); ++frame) {
      editor.lastFrameTime += static_cast<std::uint32_t>(std::lround(1000 / framesPerSecond));
      ApplyHeldBrush();
    }
  }

  int miniMapRepaints = 0;
};

TEST_F(TerrainToolsTest, RaisingChangesHeightsByItsPowerPerSecondAtAnyFrameRate) {
  SelectTool(TerrainTool::Raising);
  SetPower(4);
  for (const float framesPerSecond : {10.0f, 40.0f, 125.0f, 200.0f}) {
    const float before = HeightOf(100, 50);
    HoldFor(2, framesPerSecond);
    EXPECT_NEAR(HeightOf(100, 50) - before, 8, 0.05f) << framesPerSecond << " frames per second";
  }
}

TEST_F(TerrainToolsTest, CarvingDigsADiscAroundThePickPoint) {
  SelectTool(TerrainTool::Carving);
  SetBrushSize(2);
  editor.frameSeconds = 0.5f;
  ApplyBrush();
  // Distances are cut to whole units: up to 8.9 counts as 8, which is two cells, and (2, 1) is 8.94
  // away.
  for (int di = -3; di <= 3; ++di) {
    for (int dj = -3; dj <= 3; ++dj) {
      const bool inside = di * di + dj * dj <= 5;
      EXPECT_FLOAT_EQ(HeightOf(100 + di, 50 + dj), inside ? 127 - 1.5f : 127) << di << ' ' << dj;
    }
  }
  EXPECT_TRUE(editor.levelModified);
  EXPECT_EQ(miniMapRepaints, 1);
  EXPECT_FLOAT_EQ(pick.y, 0.6f * 125.5f) << "the brush follows the ground";
  EXPECT_EQ(miniMapPicture.grey[(128 - 25) * 128 + 128 - 50], 125);
}

TEST_F(TerrainToolsTest, HeightsEndAtTheirBounds) {
  editor.frameSeconds = 100;
  SelectTool(TerrainTool::Raising);
  ApplyBrush();
  EXPECT_EQ(HeightOf(100, 50), 256);
  SelectTool(TerrainTool::Carving);
  ApplyBrush();
  EXPECT_EQ(HeightOf(100, 50), 0);
}

TEST_F(TerrainToolsTest, SmoothingWorksColumnByColumnOnWhatItHasJustSmoothed) {
  SelectTool(TerrainTool::Smoothing);
  HeightOf(100, 50) = 127 + 64;
  ApplyBrush();
  // In this order; the corners of the 3 x 3 block are more than one cell away.
  EXPECT_EQ(HeightOf(100, 49), 127 + 16);
  EXPECT_EQ(HeightOf(99, 50), 127 + 16);
  EXPECT_EQ(HeightOf(100, 50), 127 + 8) << "the mean of 16, 16, 0 and 0";
  EXPECT_EQ(HeightOf(101, 50), 127 + 2) << "a quarter of its smoothed neighbour";
  EXPECT_EQ(HeightOf(100, 51), 127 + 2);
  EXPECT_EQ(CountChanged(), 5);
}

TEST_F(TerrainToolsTest, OnlyVerticesWithDataChange) {
  viewSquare = {0, 75, 0, 75};
  SelectTool(TerrainTool::Raising);
  PutBrushAt(0, 0);
  ApplyBrush();
  EXPECT_EQ(HeightOf(0, 0), 127) << "row 0 shows the heights of the last row";
  EXPECT_GT(HeightOf(1, 0), 127);
  EXPECT_EQ(CountChanged(), 1);
}

TEST_F(TerrainToolsTest, TheBrushReachesItsOwnSizeBeyondTheDrawnSquare) {
  SelectTool(TerrainTool::Raising);
  SetBrushSize(3);
  PutBrushAt(204, 50);
  ApplyBrush();
  EXPECT_EQ(CountChanged(), 0);
  EXPECT_FALSE(editor.levelModified);
  PutBrushAt(203, 50);
  ApplyBrush();
  EXPECT_GT(HeightOf(203, 50), 127);
  pick.x = 1e30f;
  ApplyBrush();
}

TEST_F(TerrainToolsTest, HoldingFlattenLetsItLevel) {
  SelectTool(TerrainTool::Flatten);
  ApplyBrush();
  EXPECT_EQ(terrain->flattenActive, 1);
  EXPECT_EQ(CountChanged(), 0) << "the heights are set when the cells are drawn";
  pick.x = 0;
  ApplyBrush();
  EXPECT_EQ(terrain->flattenActive, 1) << "out of reach, nothing happens";
}

TEST_F(TerrainToolsTest, OnlyPointManipulationKeepsTheSelectedPoints) {
  terrain->grid[100][50].selected = 1;
  GrowSelectionBox(100, 50);
  ComputeSmoothingWeights();
  terrain->roadPointCount = 2;
  SelectTool(TerrainTool::PointManipulation);
  EXPECT_EQ(terrain->grid[100][50].selected, 1);
  EXPECT_EQ(terrain->roadPointCount, 2);
  SelectTool(TerrainTool::Road);
  EXPECT_EQ(terrain->grid[100][50].selected, 0);
  EXPECT_EQ(terrain->grid[101][50].weight, 0);
  EXPECT_GT(selectionBox.SelMinRow, selectionBox.SelMaxRow) << "empty";
  EXPECT_EQ(terrain->roadPointCount, 0);
}

class PointSelectionTest : public TerrainToolsTest {
 protected:
  static void Select(int i, int j) {
    terrain->grid[i][j].selected = 1;
    GrowSelectionBox(i, j);
    ComputeSmoothingWeights();
  }
  static float WeightOf(int i, int j) { return terrain->grid[i][j].weight; }
};

TEST_F(PointSelectionTest, NobodyWalksAGridOfAnImpossibleSize) {
  modConfig.MaterialSize = 1 << 20;
  selectionBox = {1, 1 << 20, 1, 1 << 20};
  ClearSelection();
  ComputeSmoothingWeights();
  MoveSelection(1);
  for (const auto tool : {TerrainTool::Smoothing, TerrainTool::Flatten}) {
    SelectTool(tool);
    PutBrushAt(1032, 1032);
    viewSquare = {0, 1032, 0, 1032};
    ApplyBrush();
    ApplyTerrainEffects();
  }
  terrain->roadPointCount = 2;
  terrain->roadPoints = {RoadPoint{0, 0, 0}, RoadPoint{1e6f, 0, 1e6f}};
  CreateRoad();
  EXPECT_FALSE(editor.levelModified);
}

TEST_F(PointSelectionTest, NeighboursWeighTheirDistanceUpToTheRange) {
  Select(100, 50);
  EXPECT_EQ(WeightOf(100, 50), 0);
  EXPECT_EQ(WeightOf(101, 50), 1);
  EXPECT_EQ(WeightOf(106, 50), 6) << "exactly as far as the range";
  EXPECT_EQ(WeightOf(107, 50), 0);
  EXPECT_EQ(WeightOf(102, 52), 2) << "11.3 units are 11, and 11 / 4 is 2";
  EXPECT_EQ(WeightOf(105, 54), 0) << "25.6 units are more than 6 cells";
  EXPECT_EQ(selectionBox.SelMinRow, 94);
  EXPECT_EQ(selectionBox.SelMaxCol, 56);

  SetSmoothingRange(2);
  EXPECT_EQ(WeightOf(106, 50), 0);
  EXPECT_EQ(WeightOf(102, 50), 2);
}

TEST_F(PointSelectionTest, WhereNeighbourhoodsMeetTheLaterPointCounts) {
  Select(100, 50);
  Select(103, 50);
  EXPECT_EQ(WeightOf(101, 50), 2) << "from row 103, not from row 100";
  EXPECT_EQ(WeightOf(103, 50), 0) << "selected points are not smoothed";
}

TEST_F(PointSelectionTest, AtTheEdgeTheNeighbourhoodReachesTheSeams) {
  Select(2, 254);
  EXPECT_EQ(selectionBox.SelMinRow, 0);
  EXPECT_EQ(selectionBox.SelMaxCol, 256);
  EXPECT_EQ(WeightOf(2, 256), 2);
}

TEST_F(PointSelectionTest, MovingRaisesThePointsAndSmoothsTheirNeighboursInPlace) {
  SetSmoothingRange(1);
  Select(100, 50);
  MoveSelection(8);
  EXPECT_EQ(HeightOf(99, 50), 127) << "its turn came before the point's";
  EXPECT_EQ(HeightOf(100, 49), 127);
  EXPECT_EQ(HeightOf(100, 50), 135);
  EXPECT_EQ(HeightOf(100, 51), 129) << "a quarter of 8";
  EXPECT_EQ(HeightOf(101, 50), 129);
  EXPECT_TRUE(editor.levelModified);
  EXPECT_EQ(miniMapRepaints, 1);
}

TEST_F(PointSelectionTest, WithoutAutoSmoothingOnlyThePointsMove) {
  Select(100, 50);
  Select(90, 40);
  ToggleAutoSmoothing();
  MoveSelection(-0.1f);
  EXPECT_EQ(CountChanged(), 2);
  EXPECT_FLOAT_EQ(HeightOf(90, 40), 126.9f);
}

// What the tools find under pixels of a drawn view.
class PickingTest : public TerrainPictureTest {
 protected:
  void SetUp() override {
    TerrainPictureTest::SetUp();
    if (!terrain) return;
    InitGrid();
    modConfig.WaterLevel = -1000;
    ShowTextured();
    terrain->tool = TerrainTool::Raising;
  }
};

TEST_F(PickingTest, AMissedPickKeepsThePoint) {
  Frame(kTopDown);
  PickUnderCursor(kWidth / 2, kHeight / 2, true);
  EXPECT_TRUE(pick.pending);
  EXPECT_NEAR(pick.x, 1010, 1);
  EXPECT_NEAR(pick.y, 127 * 0.6f, 0.5f);
  const float z = pick.z;
  PickUnderCursor(-5, 20, false);
  EXPECT_EQ(pick.z, z);
  EXPECT_TRUE(pick.pending) << "the click is still to be served";
}

TEST_F(PickingTest, TheBrushSphereDoesNotHideTheGround) {
  SetBrushSize(9);
  Frame(kFly);
  PickUnderCursor(kWidth / 3, 2 * kHeight / 3, false);
  const PickState centre = pick;
  EXPECT_GT(CountColour(Frame(kFly), 255, 0, 0), 100u) << "the sphere is there";
  for (int y = kHeight / 2; y < kHeight; y += 4) {
    for (int x = kWidth / 4; x < 3 * kWidth / 4; x += 4) {
      PickUnderCursor(x, y, false);
      ASSERT_NEAR(pick.y, centre.y, 0.5f) << x << ' ' << y;
    }
  }
}

TEST_F(PickingTest, ARectangleFromAboveTogglesTheVerticesInIt) {
  Frame(kTopDown);
  const auto vertexAt = [](int x, int y) {
    PickUnderCursor(x, y, false);
    return CellOf(pick.x, pick.z);
  };
  const Cell first = vertexAt(150, 90), last = vertexAt(250, 190);
  SelectRectangle(150, 90, 250, 190);
  int inside = 0, outside = 0;
  for (int i = 0; i <= 512; ++i) {
    for (int j = 0; j <= 512; ++j) {
      const bool inRectangle = i > std::min(first.i, last.i) && i <= std::max(first.i, last.i) &&
                               j > std::min(first.j, last.j) && j <= std::max(first.j, last.j);
      (inRectangle ? inside : outside) += terrain->grid[i][j].selected;
    }
  }
  const int vertices = std::abs(first.i - last.i) * std::abs(first.j - last.j);
  EXPECT_GT(vertices, 100);
  EXPECT_EQ(inside, vertices);
  EXPECT_EQ(outside, 0);
  EXPECT_EQ(selectionBox.SelMinRow, std::min(first.i, last.i) + 1 - 6);
  EXPECT_EQ(terrain->grid[std::min(first.i, last.i)][(first.j + last.j) / 2].weight, 6)
      << "of all points in reach the last one counts";

  terrain->tool = TerrainTool::PointManipulation;
  editor.cameraMode = CameraMode::TopDown;
  EXPECT_GT(CountColour(Frame(kTopDown), 255, 0, 0), 5u * static_cast<unsigned>(vertices))
      << "every selected point can be seen";

  SelectRectangle(150, 90, 250, 190);
  EXPECT_EQ(terrain->grid[std::min(first.i, last.i) + 1][(first.j + last.j) / 2].selected, 0);
}

}  // namespace
}  // namespace mw
