#include "terrain/terrain_tools.h"

#include "support/golden.h"
#include "support/test.h"
#include "terrain/brush_stroke.h"
#include "terrain/flat_ground.h"
#include "terrain/point_selection.h"
#include "terrain/roads.h"
#include "terrain/terrain_passes.h"

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
      {"behind the last row", TerrainTool::Raising, 3, BrushWay::At(1030, 200), 1},
      {"behind the last column", TerrainTool::Raising, 3, BrushWay::At(400, 1030), 1},
      {"before the first column", TerrainTool::Raising, 3, BrushWay::At(400, -5), 1},
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
    std::string smoothed[2];
    for (const bool held : {false, true}) {
      InitGrid();
      Height(100, 50) = 250;
      if (held) HoldFor(frames, milliseconds);
      for (int pass = 0; !held && pass < passes; ++pass) BrushAlong(BrushWay::At(400, 200), 0.01f);
      smoothed[held] = Heights();
    }
    EXPECT_EQ(smoothed[true], smoothed[false]) << milliseconds << " ms per frame";
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

TEST_F(PointSelectionTest, ThePixelsOfAViewSelectWhatIsListed) {
  const struct {
    const char* name;
    float x, z;  // under the camera
    void (*select)();
  } rows[] = {
      {"toggled", 512, 512,
       [] {
         for (const auto& [x, y] : {std::pair{30, 60}, {60, 30}, {30, 60}, {-5, 20}})
           ToggleVertexUnderCursor(x, y);
       }},
      {"all along the way, once", 512, 512,
       [] {
         StartSelecting(10, 10);
         for (const auto& [x, y] : {std::pair{80, 45}, {10, 10}}) SelectOnTheWayTo(x, y);
       }},
      {"another way begins", 512, 512,
       [] {
         for (const auto& [x, y] : {std::pair{10, 10}, {80, 45}}) StartSelecting(x, y);
       }},
      {"beside the view the way ends", 512, 512,
       [] {
         StartSelecting(10, 10);
         for (const auto& [x, y] : {std::pair{-5, 20}, {80, 45}}) SelectOnTheWayTo(x, y);
       }},
      {"rectangle", 512, 512, [] { SelectRectangle(20, 30, 60, 50); }},
      {"overlapping ones are toggled", 512, 512,
       [] { SelectRectangle(20, 30, 60, 50), SelectRectangle(40, 30, 60, 50); }},
      {"first corner of the level", 6, 8, [] { SelectRectangle(0, 0, 99, 99); }},
      {"last corner of the level", 1020, 1020, [] { SelectRectangle(0, 0, 99, 99); }},
  };
  std::string listing;
  for (const auto& [name, x, z, select] : rows) {
    StartFlat();
    LookDownOn(x, z);
    select();
    listing += std::string("== ") + name + "\n" +
               ListGround(0, [](int i, int j) { return terrain.grid[i][j].selected; });
  }
  ExpectGolden("terrain/picked_points.txt", listing);
}

TEST_F(PointSelectionTest, AMissedPickIsKnownAsOne) {
  LookDownOn(512, 400);
  PickUnderCursor(50, 50);
  EXPECT_FALSE(terrain.pick.missed);
  EXPECT_NEAR(terrain.pick.x, 512, 1);
  EXPECT_NEAR(terrain.pick.y, kFlatHeight * 0.5f, 0.001f);
  PickUnderCursor(-5, 20);
  EXPECT_TRUE(terrain.pick.missed);
  camera.pitch = 20;
  PickUnderCursor(50, 5);
  EXPECT_TRUE(terrain.pick.missed) << "the sky";
}

}  // namespace
}  // namespace mw
