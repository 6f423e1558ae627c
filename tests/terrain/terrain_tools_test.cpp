#include "terrain/terrain_tools.h"

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

TEST_F(TerrainToolsTest, NobodyWalksAGridOfAnImpossibleSize) {
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

}  // namespace
}  // namespace mw
