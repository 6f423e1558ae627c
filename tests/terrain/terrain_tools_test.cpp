#include "terrain/terrain_tools.h"

#include <algorithm>
#include <cmath>

#include "support/golden.h"
#include "support/test.h"
#include "terrain/brush_stroke.h"
#include "terrain/flat_ground.h"
#include "terrain/point_selection.h"
#include "terrain/roads.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_picture_test.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

// The brush is over vertex (100, 50).
class TerrainToolsTest : public FlatGround<SandboxTest> {
 protected:
  TerrainToolsTest() { PutBrushAt(100, 50); }

  static void PutBrushAt(int i, int j) {
    terrain.pick = {terrain.grid[i][j].x, 0, terrain.grid[i][j].z, false};
  }
  // The button goes down and, after so many frames of equal length, up.
  static void HoldFor(int frames, std::uint32_t millisecondsPerFrame) {
    std::uint32_t now = 12345;
    PressBrush(now);
    for (int frame = 0; frame < frames; ++frame) HoldBrush(now += millisecondsPerFrame);
    ReleaseBrush(now);
  }
};

TEST_F(TerrainToolsTest, EachBrushLeavesTheGroundAsListed) {
  // Distances are cut to whole units: up to 8.9 counts as 8, which is two cells.
  const struct {
    const char* name;
    TerrainTool tool;
    int size;
    BrushWay way;
    float seconds;
    int rowsInView = kSide;
    float firstZInSight = -1;
  } strokes[] = {
      {"carving a disc", TerrainTool::Carving, 2, BrushWay::At(400, 200), 0.5f},
      {"raising along a way", TerrainTool::Raising, 1, {400, 200, 416, 208}, 1},
      {"raising to the bound", TerrainTool::Raising, 1, BrushWay::At(400, 200), 100},
      {"carving to the bound", TerrainTool::Carving, 1, BrushWay::At(400, 200), 100},
      {"smoothing", TerrainTool::Smoothing, 1, BrushWay::At(400, 200), 1},
      {"flattening a square", TerrainTool::Flatten, 3, BrushWay::At(401, 203), 1},
      {"flattening partly out of sight", TerrainTool::Flatten, 1, BrushWay::At(401, 203), 1, kSide,
       206},
      {"raising the first row with data", TerrainTool::Raising, 1, BrushWay::At(0, 0), 1},
      {"smoothing at the last", TerrainTool::Smoothing, 1, BrushWay::At(1024, 1020), 1},
      {"reaching beyond the view square", TerrainTool::Raising, 3, BrushWay::At(412, 200), 1, 100},
      {"farther beyond", TerrainTool::Raising, 3, BrushWay::At(416, 200), 1, 100},
      {"where no level is", TerrainTool::Raising, 3, BrushWay::At(1e30f, 200), 1},
      {"no brush", TerrainTool::PointManipulation, 3, BrushWay::At(400, 200), 1},
  };
  std::string listing;
  for (const auto& [name, tool, size, way, seconds, rowsInView, firstZInSight] : strokes) {
    StartFlat();
    terrain.viewSquare.ViewRowEnd = rowsInView;
    camera.frustum[0] = {0, 0, 1, -firstZInSight};
    Height(100, 50) = 191;
    Height(256, 255) = 91;
    SelectTool(tool);
    SetBrushSize(size);
    terrain.flattenSampled = 1;
    terrain.flattenHeight = 33;
    BrushAlong(way, seconds);
    listing += std::string("== ") + name + "\n" + Told();
    listing += FormatText("the brush at %g\n", terrain.pick.y) + Heights();
  }
  ExpectGolden("terrain/brushes.txt", listing);
}

TEST_F(TerrainToolsTest, RaisingChangesHeightsByItsPowerPerSecondAtAnyFrameRate) {
  SelectTool(TerrainTool::Raising);
  SetPower(4);
  const struct {
    int frames;
    std::uint32_t milliseconds;
    float seconds;
  } holds[] = {{2000, 1, 2}, {400, 5, 2}, {250, 8, 2},     {80, 25, 2},
               {20, 100, 2}, {8, 250, 2}, {1, 30000, 0.1f}};
  for (const auto& [frames, milliseconds, seconds] : holds) {
    StartFlat();
    HoldFor(frames, milliseconds);
    EXPECT_NEAR(Height(100, 50) - kFlatHeight, 4 * seconds, 0.05f)
        << milliseconds << " ms per frame; after a rest little time counts";
  }
}

TEST_F(TerrainToolsTest, SmoothingMakesAPassEachSixtiethOfASecondButAtMostFourAFrame) {
  SelectTool(TerrainTool::Smoothing);
  SetBrushSize(3);
  const struct {
    int frames;
    std::uint32_t milliseconds;
    int passes;
  } holds[] = {{0, 0, 1}, {50, 10, 30}, {25, 20, 30}, {10, 50, 30}, {5, 100, 25}};
  for (const auto& [frames, milliseconds, passes] : holds) {
    const auto smoothed = [](const auto& smooth) {
      InitGrid();
      Height(100, 50) = 250;
      smooth();
      return Heights();
    };
    const auto brush = [passes = passes] {
      const BrushWay here = BrushWay::At(terrain.pick.x, terrain.pick.z);
      for (int pass = 0; pass < passes; ++pass) BrushAlong(here, 0.01f);
    };
    const auto hold = [&, frames = frames, milliseconds = milliseconds] {
      HoldFor(frames, milliseconds);
    };
    EXPECT_EQ(smoothed(hold), smoothed(brush)) << milliseconds << " ms per frame";
  }
}

// However fast the mouse is, and even if it is up again before the next frame.
TEST_F(TerrainToolsTest, AStrokeHasNoGaps) {
  for (const TerrainTool tool :
       {TerrainTool::Carving, TerrainTool::Raising, TerrainTool::Smoothing, TerrainTool::Flatten}) {
    InitGrid();
    SelectTool(tool);
    terrain.flattenSampled = 1;
    terrain.flattenHeight = 33;
    for (int i = 90; i < 150; ++i) Height(i, i / 2) = 150;
    PutBrushAt(100, 50);
    PressBrush(0);
    PutBrushAt(140, 70);
    MoveBrush();
    ReleaseBrush(5);
    for (int i = 100; i <= 140; ++i)
      EXPECT_NE(Height(i, i / 2), 150) << static_cast<int>(tool) << ' ' << i;
    EXPECT_EQ(Height(95, 47), 150);
    EXPECT_EQ(Height(145, 72), 150);
  }
}

TEST_F(TerrainToolsTest, AStrokeSpreadsItsTimeOverItsWayAtAnyFrameRate) {
  SelectTool(TerrainTool::Raising);
  SetBrushSize(2);
  SetPower(10);
  for (const int frames : {4, 10, 40, 100, 400}) {
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
      EXPECT_NEAR(Height(i, 50) - kFlatHeight, 10 * 18 / 160.0f, 0.05f) << frames << ' ' << i;
  }
}

TEST_F(TerrainToolsTest, WhereThereIsNoGroundTheBrushRests) {
  SelectTool(TerrainTool::Raising);
  PressBrush(0);
  const float pressed = Height(100, 50);
  EXPECT_GT(pressed, kFlatHeight);
  terrain.pick.missed = true;
  MoveBrush();
  HoldBrush(400);
  EXPECT_EQ(Height(100, 50), pressed);
  PutBrushAt(110, 50);
  MoveBrush();
  HoldBrush(800);
  ReleaseBrush(800);
  EXPECT_EQ(Height(105, 50), kFlatHeight) << "no way leads there";
  EXPECT_GT(Height(110, 50), kFlatHeight + 1);
}

TEST_F(TerrainToolsTest,
       TheFlattenToolTakesTheHeightOfTheCellUnderTheCursorUntilItHasOneAndWithCtrl) {
  SelectTool(TerrainTool::Flatten);
  Height(101, 50) = 40;  // the cell with this corner is under the cursor
  terrain.pick = {403, 0, 203, false};
  UpdateFlattenBrush();
  EXPECT_EQ(terrain.flattenSampled, 1);
  EXPECT_EQ(terrain.flattenHeight, 40);
  terrain.pick = {603, 0, 203, false};
  UpdateFlattenBrush();
  EXPECT_EQ(terrain.flattenHeight, 40);
  editor.ctrlHeld = true;
  BrushAlong(BrushWay::At(403, 203), 1);
  EXPECT_EQ(terrain.flattenHeight, kFlatHeight);
  EXPECT_EQ(Height(101, 50), 40) << "only sampled";
  EXPECT_FALSE(editor.levelModified);
}

class PointSelectionTest : public TerrainToolsTest {
 protected:
  static void Select(int i, int j) {
    terrain.grid[i][j].selected = 1;
    GrowSelectionBox(i, j);
    ComputeSmoothingWeights();
  }
};

TEST_F(PointSelectionTest, NeighboursWeighAndMoveAsListed) {
  // Distances are whole units and weights whole cells. Where neighbourhoods meet the later point
  // counts; selected ones have no weight.
  const struct {
    const char* name;
    int range;
    std::vector<Cell> points;
    bool smoothing;
    float delta;
  } selections[] = {
      {"a point", 6, {{100, 50}}, true, 8},
      {"a smaller range", 2, {{100, 50}}, true, -8},
      {"two neighbourhoods that meet", 4, {{100, 50}, {103, 50}}, true, 8},
      {"at the edge they reach the seams", 3, {{2, 254}}, true, 8},
      {"without smoothing", 6, {{100, 50}, {90, 40}}, false, -0.1f},
      {"nothing", 6, {}, true, 8},
  };
  std::string listing;
  for (const auto& [name, range, points, smoothing, delta] : selections) {
    StartFlat();
    terrain.autoSmoothing = true;
    if (!smoothing) ToggleAutoSmoothing();
    for (const Cell& point : points) Select(point.i, point.j);
    SetSmoothingRange(range);
    const SelectionBox& box = terrain.selectionBox;
    listing += std::string("== ") + name +
               FormatText("\nrows %i-%i, columns %i-%i\n", box.SelMinRow, box.SelMaxRow,
                          box.SelMinCol, box.SelMaxCol);
    listing += "weights\n" + ListGround(0, [](int i, int j) { return terrain.grid[i][j].weight; });
    MoveSelection(delta);
    listing += "moved\n" + Told() + Heights();
  }
  ExpectGolden("terrain/points.txt", listing);
}

TEST_F(PointSelectionTest, OnlyPointManipulationKeepsTheSelectedPoints) {
  Select(100, 50);
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

// What the tools find under pixels of a drawn view of flat ground.
class PickingTest : public TerrainPictureTest {
 protected:
  void SetUp() override {
    TerrainPictureTest::SetUp();
    if (!terrain.grid) return;
    InitGrid();
    modConfig.WaterLevel = -1000;
    ShowTextured();
    terrain.tool = TerrainTool::PointManipulation;
  }
  static int CountSelected() {
    int count = 0;
    for (int i = 0; i <= 512; ++i) {
      for (int j = 0; j <= 512; ++j) count += terrain.grid[i][j].selected;
    }
    return count;
  }
  // Whether the vertex that is nearest to what the view shows at the pixel is selected.
  static bool IsSelected(int x, int y) {
    const Vector3 ground = GroundUnderCursor(x, y).value();
    return terrain
        .grid[static_cast<std::size_t>(std::lround(ground.x / 4))]
             [static_cast<std::size_t>(std::lround(ground.z / 4))]
        .selected;
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
  Frame(kTopDown);
  ToggleVertexUnderCursor(200, 130);
  ToggleVertexUnderCursor(150, 100);
  EXPECT_TRUE(IsSelected(200, 130) && IsSelected(150, 100));
  ToggleVertexUnderCursor(200, 130);
  EXPECT_FALSE(IsSelected(200, 130));
  EXPECT_EQ(CountSelected(), 1);
  ClearSelection();
  StartSelecting(100, 50);
  EXPECT_EQ(CountSelected(), 1);
  SelectOnTheWayTo(300, 200);
  for (int step = 0; step <= 50; ++step)
    EXPECT_TRUE(IsSelected(100 + 4 * step, 50 + 3 * step)) << step;
  SelectOnTheWayTo(100, 50);
  EXPECT_LT(CountSelected(), 60) << "only those on the way, and they stay selected";
}

TEST_F(PickingTest, ARectangleFromAboveTogglesTheVerticesThatAreShownInIt) {
  editor.cameraMode = CameraMode::TopDown;
  const struct {
    SceneCamera from;
    int x0, y0, x1, y1, least;
  } cases[] = {{kTopDown, 150, 90, 250, 190, 100},
               {{6, 255, 8, -90, 180}, 0, 0, kWidth - 1, kHeight - 1, 500}};
  for (const auto& box : cases) {
    Frame(box.from);
    SelectRectangle(box.x0, box.y0, box.x1, box.y1);
    int wrong = 0;
    for (int i = 0; i <= 512; ++i) {
      for (int j = 0; j <= 512; ++j) {
        const TerrainVertex& vertex = terrain.grid[i][j];
        const auto shown = ViewPointOf({vertex.x, vertex.h * 0.6f, vertex.z});
        const bool isInside =
            i >= 1 && j < 512 && shown && shown->x >= static_cast<float>(box.x0) &&
            shown->x <= static_cast<float>(box.x1) && shown->y >= static_cast<float>(box.y0) &&
            shown->y <= static_cast<float>(box.y1);
        wrong += vertex.selected != isInside;
      }
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(CountSelected(), box.least);
    EXPECT_GT(CountColour(Frame(box.from), 255, 0, 0), 5u * static_cast<unsigned>(CountSelected()))
        << "every selected point can be seen";
    SelectRectangle(box.x0, box.y0, box.x1, box.y1);
    EXPECT_EQ(CountSelected(), 0);
    ClearSelection();
  }
}

}  // namespace
}  // namespace mw
