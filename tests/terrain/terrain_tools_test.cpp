#include "terrain/terrain_tools.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "core/camera.h"
#include "core/hooks.h"
#include "terrain/brush_stroke.h"
#include "terrain/mini_map_picture.h"
#include "terrain/point_selection.h"
#include "terrain/roads.h"
#include "terrain/terrain.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_picture_test.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

// A flat level of 256 samples, 4 world units apart, with the brush over vertex (100, 50).
class TerrainToolsTest : public SandboxTest {
 protected:
  TerrainToolsTest() {
    MakeLandscape(256);
    InitGrid();
    terrain.viewSquare = {50, 200, 0, 150};
    PutBrushAt(100, 50);
    hooks.invalidateMiniMap = [this] { ++miniMapRepaints; };
  }
  ~TerrainToolsTest() override {
    RemoveLandscape();
    hooks.invalidateMiniMap = [] {};
  }

  static float& HeightOf(int i, int j) { return terrain.grid[i][j].h; }
  static void PutBrushAt(int i, int j) {
    terrain.pick = {terrain.grid[i][j].x, 0, terrain.grid[i][j].z, false};
  }
  static int CountChanged() {
    int count = 0;
    for (int i = 0; i <= 256; ++i) {
      for (int j = 0; j <= 256; ++j) count += HeightOf(i, j) != kFlatHeight;
    }
    return count;
  }
  static void Brush(float seconds = 0.01f) {
    BrushAlong(BrushWay::At(terrain.pick.x, terrain.pick.z), seconds);
  }
  // The button goes down and, after so many frames of equal length, up.
  static void HoldFor(int frames, std::uint32_t millisecondsPerFrame) {
    std::uint32_t now = 12345;
    PressBrush(now);
    for (int frame = 0; frame < frames; ++frame) HoldBrush(now += millisecondsPerFrame);
    ReleaseBrush(now);
  }

  int miniMapRepaints = 0;
};

TEST_F(TerrainToolsTest, RaisingChangesHeightsByItsPowerPerSecondAtAnyFrameRate) {
  SelectTool(TerrainTool::Raising);
  SetPower(4);
  for (const std::uint32_t milliseconds : {1u, 5u, 8u, 25u, 100u, 250u}) {
    const float before = HeightOf(100, 50);
    HoldFor(static_cast<int>(2000 / milliseconds), milliseconds);
    EXPECT_NEAR(HeightOf(100, 50) - before, 8, 0.05f) << milliseconds << " ms per frame";
  }
}

TEST_F(TerrainToolsTest, SmoothingMakesAPassEachSixtiethOfASecondButAtMostFourAFrame) {
  SelectTool(TerrainTool::Smoothing);
  SetBrushSize(3);
  const auto makeBump = [] {
    InitGrid();
    HeightOf(100, 50) = 250;
  };
  const struct {
    int frames;
    std::uint32_t milliseconds;
    int passes;
  } holds[] = {{0, 0, 1}, {50, 10, 30}, {25, 20, 30}, {10, 50, 30}, {5, 100, 25}};
  for (const auto& [frames, milliseconds, passes] : holds) {
    makeBump();
    for (int pass = 0; pass < passes; ++pass) Brush();
    const float expected = HeightOf(100, 50), beside = HeightOf(101, 51);
    makeBump();
    HoldFor(frames, milliseconds);
    EXPECT_EQ(HeightOf(100, 50), expected) << milliseconds << " ms per frame";
    EXPECT_EQ(HeightOf(101, 51), beside) << milliseconds << " ms per frame";
  }
}

TEST_F(TerrainToolsTest, AfterARestLittleTimeCounts) {
  SelectTool(TerrainTool::Raising);
  SetPower(10);
  HoldFor(1, 30000);
  EXPECT_NEAR(HeightOf(100, 50), kFlatHeight + 1, 0.001f);
}

// However fast the mouse is, and even if it is up again before the next frame.
TEST_F(TerrainToolsTest, AStrokeHasNoGaps) {
  camera.position.Set(480, 300, 280);
  for (const TerrainTool tool :
       {TerrainTool::Carving, TerrainTool::Raising, TerrainTool::Smoothing, TerrainTool::Flatten}) {
    InitGrid();
    SelectTool(tool);
    terrain.flattenSampled = 1;
    terrain.flattenHeight = 33;
    for (int i = 90; i < 150; ++i) HeightOf(i, i / 2) = 150;
    const std::vector<VertexGrid::Row> before(&terrain.grid[0], &terrain.grid[0] + 150);
    PutBrushAt(100, 50);
    PressBrush(0);
    PutBrushAt(140, 70);
    MoveBrush();
    ReleaseBrush(5);
    for (int i = 100; i <= 140; ++i)
      EXPECT_NE(HeightOf(i, i / 2), before[i][i / 2].h) << static_cast<int>(tool) << ' ' << i;
    EXPECT_EQ(HeightOf(95, 47), before[95][47].h);
    EXPECT_EQ(HeightOf(145, 72), before[145][72].h);
  }
}

TEST_F(TerrainToolsTest, AStrokeSpreadsItsTimeOverItsWayAtAnyFrameRate) {
  camera.position.Set(480, 300, 280);
  SelectTool(TerrainTool::Raising);
  SetBrushSize(2);
  SetPower(10);
  for (const int frames : {4, 10, 40, 100}) {
    InitGrid();
    PutBrushAt(100, 50);
    PressBrush(0);
    for (int frame = 1; frame <= frames; ++frame) {
      terrain.pick.x = 400 + 160 * static_cast<float>(frame) / static_cast<float>(frames);
      MoveBrush();
      HoldBrush(static_cast<std::uint32_t>(1000 * frame / frames));
    }
    ReleaseBrush(1000);
    // Of 160 units in a second it is within 9 units of the place for 18.
    for (int i = 105; i <= 135; ++i)
      EXPECT_NEAR(HeightOf(i, 50) - kFlatHeight, 10 * 18 / 160.0f, 0.05f) << frames << ' ' << i;
  }
}

TEST_F(TerrainToolsTest, WhereThereIsNoGroundTheBrushRests) {
  camera.position.Set(480, 300, 280);
  SelectTool(TerrainTool::Raising);
  PressBrush(0);
  const float pressed = HeightOf(100, 50);
  EXPECT_GT(pressed, kFlatHeight);
  terrain.pick.missed = true;
  MoveBrush();
  HoldBrush(400);
  EXPECT_EQ(HeightOf(100, 50), pressed);
  PutBrushAt(110, 50);
  terrain.pick.missed = false;
  MoveBrush();
  HoldBrush(800);
  ReleaseBrush(800);
  EXPECT_EQ(HeightOf(105, 50), kFlatHeight) << "no way leads there";
  EXPECT_GT(HeightOf(110, 50), kFlatHeight + 1);
}

TEST_F(TerrainToolsTest, CarvingDigsADiscAroundThePickPoint) {
  SelectTool(TerrainTool::Carving);
  SetBrushSize(2);
  Brush(0.5f);
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
  EXPECT_FLOAT_EQ(terrain.pick.y, 0.6f * 125.5f) << "the brush follows the ground";
  EXPECT_EQ(terrain.miniMap.grey[(128 - 25) * 128 + 128 - 50], 125);
}

TEST_F(TerrainToolsTest, HeightsEndAtTheirBounds) {
  SelectTool(TerrainTool::Raising);
  Brush(100);
  EXPECT_EQ(HeightOf(100, 50), 256);
  SelectTool(TerrainTool::Carving);
  Brush(100);
  EXPECT_EQ(HeightOf(100, 50), 0);
}

TEST_F(TerrainToolsTest, SmoothingWorksColumnByColumnOnWhatItHasJustSmoothed) {
  SelectTool(TerrainTool::Smoothing);
  HeightOf(100, 50) = 127 + 64;
  Brush();
  // In this order; the corners of the 3 x 3 block are more than one cell away.
  EXPECT_EQ(HeightOf(100, 49), 127 + 16);
  EXPECT_EQ(HeightOf(99, 50), 127 + 16);
  EXPECT_EQ(HeightOf(100, 50), 127 + 8) << "the mean of 16, 16, 0 and 0";
  EXPECT_EQ(HeightOf(101, 50), 127 + 2) << "a quarter of its smoothed neighbour";
  EXPECT_EQ(HeightOf(100, 51), 127 + 2);
  EXPECT_EQ(CountChanged(), 5);
}

TEST_F(TerrainToolsTest, OnlyVerticesWithDataChange) {
  terrain.viewSquare = {0, 75, 0, 75};
  SelectTool(TerrainTool::Raising);
  PutBrushAt(0, 0);
  Brush();
  EXPECT_EQ(HeightOf(0, 0), 127) << "row 0 shows the heights of the last row";
  EXPECT_GT(HeightOf(1, 0), 127);
  EXPECT_EQ(CountChanged(), 1);
}

TEST_F(TerrainToolsTest, TheBrushReachesItsOwnSizeBeyondTheDrawnSquare) {
  SelectTool(TerrainTool::Raising);
  SetBrushSize(3);
  PutBrushAt(204, 50);
  Brush();
  EXPECT_EQ(CountChanged(), 0);
  EXPECT_FALSE(editor.levelModified);
  PutBrushAt(203, 50);
  Brush();
  EXPECT_GT(HeightOf(203, 50), 127);
  terrain.pick.x = 1e30f;
  Brush();
}

TEST_F(TerrainToolsTest, OnlyPointManipulationKeepsTheSelectedPoints) {
  terrain.grid[100][50].selected = 1;
  GrowSelectionBox(100, 50);
  ComputeSmoothingWeights();
  terrain.roadPointCount = 2;
  SelectTool(TerrainTool::PointManipulation);
  EXPECT_EQ(terrain.grid[100][50].selected, 1);
  EXPECT_EQ(terrain.roadPointCount, 2);
  SelectTool(TerrainTool::Road);
  EXPECT_EQ(terrain.grid[100][50].selected, 0);
  EXPECT_EQ(terrain.grid[101][50].weight, 0);
  EXPECT_GT(terrain.selectionBox.SelMinRow, terrain.selectionBox.SelMaxRow) << "empty";
  EXPECT_EQ(terrain.roadPointCount, 0);
}

class PointSelectionTest : public TerrainToolsTest {
 protected:
  static void Select(int i, int j) {
    terrain.grid[i][j].selected = 1;
    GrowSelectionBox(i, j);
    ComputeSmoothingWeights();
  }
  static float WeightOf(int i, int j) { return terrain.grid[i][j].weight; }
};

TEST_F(PointSelectionTest, NobodyWalksAGridOfAnImpossibleSize) {
  modConfig.MaterialSize = 1 << 20;
  terrain.selectionBox = {1, 1 << 20, 1, 1 << 20};
  ClearSelection();
  ComputeSmoothingWeights();
  MoveSelection(1);
  for (const auto tool : {TerrainTool::Smoothing, TerrainTool::Flatten}) {
    SelectTool(tool);
    terrain.viewSquare = {0, 1032, 0, 1032};
    UpdateFlattenBrush();
    BrushAlong(BrushWay::At(terrain.grid[1032][1032].x, terrain.grid[1032][1032].z), 1);
  }
  terrain.roadPointCount = 2;
  terrain.roadPoints = {RoadPoint{0, 0, 0}, RoadPoint{1e6f, 0, 1e6f}};
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
  EXPECT_EQ(terrain.selectionBox.SelMinRow, 94);
  EXPECT_EQ(terrain.selectionBox.SelMaxCol, 56);

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
  EXPECT_EQ(terrain.selectionBox.SelMinRow, 0);
  EXPECT_EQ(terrain.selectionBox.SelMaxCol, 256);
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
    if (!terrain.grid) return;
    InitGrid();
    modConfig.WaterLevel = -1000;
    ShowTextured();
    terrain.tool = TerrainTool::Raising;
  }
  static int CountSelected() {
    int count = 0;
    for (int i = 0; i <= 512; ++i) {
      for (int j = 0; j <= 512; ++j) count += terrain.grid[i][j].selected;
    }
    return count;
  }
};

TEST_F(PickingTest, AMissedPickIsKnownAsOne) {
  Frame(kTopDown);
  PickUnderCursor(kWidth / 2, kHeight / 2);
  EXPECT_FALSE(terrain.pick.missed);
  EXPECT_NEAR(terrain.pick.x, 1010, 1);
  EXPECT_NEAR(terrain.pick.y, 127 * 0.6f, 0.001f);
  PickUnderCursor(-5, 20);
  EXPECT_TRUE(terrain.pick.missed);
  Frame({1010, 140, 1010, 20, 180});
  PickUnderCursor(kWidth / 2, 5);
  EXPECT_TRUE(terrain.pick.missed) << "the sky";
}

TEST_F(PickingTest, PointsAreToggledAtOnceAndSelectedAllAlongTheWay) {
  terrain.tool = TerrainTool::PointManipulation;
  Frame(kTopDown);
  const auto nearest = [](int x, int y) -> TerrainVertex& {
    const Vector3 ground = GroundUnderCursor(x, y).value();
    return terrain.grid[static_cast<std::size_t>(std::lround(ground.x / 4))]
                       [static_cast<std::size_t>(std::lround(ground.z / 4))];
  };
  ToggleVertexUnderCursor(200, 130);
  ToggleVertexUnderCursor(150, 100);
  EXPECT_EQ(nearest(200, 130).selected + nearest(150, 100).selected, 2);
  ToggleVertexUnderCursor(200, 130);
  EXPECT_EQ(nearest(200, 130).selected, 0);
  EXPECT_EQ(CountSelected(), 1);

  ClearSelection();
  StartSelecting(100, 50);
  EXPECT_EQ(CountSelected(), 1);
  SelectOnTheWayTo(300, 200);
  for (int step = 0; step <= 50; ++step)
    EXPECT_EQ(nearest(100 + 4 * step, 50 + 3 * step).selected, 1) << step;
  SelectOnTheWayTo(100, 50);
  EXPECT_LT(CountSelected(), 60) << "only those on the way, and they stay selected";
}

TEST_F(PickingTest, ARectangleFromAboveTogglesTheVerticesThatAreShownInIt) {
  terrain.tool = TerrainTool::PointManipulation;
  editor.cameraMode = CameraMode::TopDown;
  const SceneCamera overCorner{6, 255, 8, -90, 180};
  struct Case {
    SceneCamera from;
    int x0, y0, x1, y1, least;
  };
  const Case cases[] = {{kTopDown, 150, 90, 250, 190, 100},
                        {overCorner, 0, 0, kWidth - 1, kHeight - 1, 500}};
  for (const Case& box : cases) {
    const int x0 = box.x0, y0 = box.y0, x1 = box.x1, y1 = box.y1;
    const SceneCamera& from = box.from;
    Frame(from);
    const auto isInside = [&](int i, int j) {
      const TerrainVertex& vertex = terrain.grid[i][j];
      const auto shown = ViewPointOf({vertex.x, vertex.h * 0.6f, vertex.z});
      return i >= 1 && j < 512 && shown && shown->x >= static_cast<float>(x0) &&
             shown->x <= static_cast<float>(x1) && shown->y >= static_cast<float>(y0) &&
             shown->y <= static_cast<float>(y1);
    };
    SelectRectangle(x0, y0, x1, y1);
    int wrong = 0;
    for (int i = 0; i <= 512; ++i) {
      for (int j = 0; j <= 512; ++j) wrong += terrain.grid[i][j].selected != isInside(i, j);
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(CountSelected(), box.least);
    EXPECT_GT(CountColour(Frame(from), 255, 0, 0), 5u * static_cast<unsigned>(CountSelected()))
        << "every selected point can be seen";
    SelectRectangle(x0, y0, x1, y1);
    EXPECT_EQ(CountSelected(), 0);
    ClearSelection();
  }
}

}  // namespace
}  // namespace mw
