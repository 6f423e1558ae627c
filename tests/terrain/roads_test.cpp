#include "terrain/roads.h"

#include <gtest/gtest.h>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "support/sandbox.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

// A flat level of 256 samples, 4 world units apart, at height 127.
class RoadsTest : public SandboxTest {
 protected:
  RoadsTest() {
    modConfig = ModConfig{};
    modConfig.MaterialSize = 256;
    modConfig.WorldSize = 1024;
    CreateTerrain();
    CreateMaterialMapper();
    InitGrid();
    hooks.invalidateMiniMap = [this] { ++repaints; };
  }
  ~RoadsTest() override {
    DestroyMaterialMapper();
    DestroyTerrain();
  }

  // Picks a place in cell (i, j), whose corner is at this height.
  static void Pick(int i, int j, float h) {
    terrain.grid[i][j].h = h;
    AddRoadPointAt(static_cast<float>(i) * 4 + 3, static_cast<float>(j) * 4 + 1);
  }
  static float Height(int i, int j) { return terrain.grid[i][j].h; }
  static std::uint32_t Material(int i, int j) { return materialMapper->grid[i][j]; }
  static void UseMaterial(int material) {
    terrain.roadAutoMaterial = 1;
    terrain.roadMaterial = material;
  }
  // Whether exactly the cells from (i0, j0) to (i1, j1) are of this material and all others of
  // none.
  static bool OnlyCells(std::uint32_t material, int i0, int i1, int j0, int j1) {
    for (int i = 0; i < kGridCapacity; ++i) {
      for (int j = 0; j < kGridCapacity; ++j) {
        const bool inside = i >= i0 && i <= i1 && j >= j0 && j <= j1;
        if (Material(i, j) != (inside ? material : 0)) return false;
      }
    }
    return true;
  }

  int repaints = 0;
};

TEST_F(RoadsTest, APointIsTheCentreOfItsCellWithTheHeightOfTheCorner) {
  Pick(10, 20, 99);
  ASSERT_EQ(terrain.roadPointCount, 1);
  EXPECT_EQ(terrain.roadPoints[0].x, 42);
  EXPECT_EQ(terrain.roadPoints[0].h, 99);
  EXPECT_EQ(terrain.roadPoints[0].z, 82);
}

TEST_F(RoadsTest, NoPointIsTakenInTheFirstRowAndColumnNorOutsideTheLevel) {
  AddRoadPointAt(3.9f, 100);
  AddRoadPointAt(100, 3.9f);
  AddRoadPointAt(-50, 100);
  AddRoadPointAt(257 * 4, 100);
  AddRoadPointAt(100, 256 * 4);
  AddRoadPointAt(1e30f, -1e30f);
  EXPECT_EQ(terrain.roadPointCount, 0);
  AddRoadPointAt(4, 4);
  AddRoadPointAt(256 * 4, 255 * 4);
  EXPECT_EQ(terrain.roadPointCount, 2);
}

TEST_F(RoadsTest, The33rdPointIsIgnored) {
  for (int i = 1; i <= 33; ++i) Pick(i, 5, static_cast<float>(i));
  EXPECT_EQ(terrain.roadPointCount, 32);
  EXPECT_EQ(terrain.roadPoints[31].h, 32);
}

// 16 units along the columns and 4 up make a length of 16.49: four steps of 3.88 units along the
// columns, each one height unit higher.
TEST_F(RoadsTest, APathIsOneCellWideAndRisesEvenly) {
  Pick(10, 20, 100);
  Pick(10, 24, 104);
  CreateRoad();
  const float expected[] = {127, 100, 101, 102, 103, 103, 127};
  for (int j = 19; j <= 25; ++j) {
    EXPECT_EQ(Height(10, j), expected[j - 19]) << j;
    EXPECT_EQ(Height(11, j), expected[j - 19]) << j;
    EXPECT_EQ(Height(9, j), 127) << j;
    EXPECT_EQ(Height(12, j), 127) << j;
  }
  EXPECT_TRUE(OnlyCells(0, 0, 0, 0, 0)) << "no material was asked for";
  EXPECT_EQ(terrain.roadPointCount, 0);
  EXPECT_TRUE(editor.levelModified);
  EXPECT_EQ(repaints, 1);
}

// Four cells along the rows, then three along the columns. Each segment leaves out the cell of its
// last point.
TEST_F(RoadsTest, ARoadTurnsAtItsPoints) {
  Pick(40, 50, 60);
  Pick(44, 50, 60);
  Pick(44, 53, 60);
  UseMaterial(14);
  CreateRoad();
  for (int i = 40; i <= 45; ++i) EXPECT_EQ(Height(i, 50), 60) << i;
  for (int j = 50; j <= 53; ++j) EXPECT_EQ(Height(45, j), 60) << j;
  EXPECT_EQ(Height(43, 52), 127);
  EXPECT_EQ(Material(40, 50), 0u) << "the cell before row 40";
  for (int i = 41; i <= 45; ++i) EXPECT_EQ(Material(i, 50), 14u) << i;
  EXPECT_EQ(Material(45, 52), 14u);
  EXPECT_EQ(Material(45, 53), 0u);
  EXPECT_EQ(Material(44, 51), 0u);
}

TEST_F(RoadsTest, TheWidthsAreOneThreeThreeAndFiveCells) {
  for (const auto& [width, half] : {std::pair{1, 0}, {2, 1}, {3, 1}, {4, 2}}) {
    InitGrid();
    materialMapper->grid = {};
    terrain.roadWidth = width;
    UseMaterial(15);
    Pick(100, 100, 80);
    Pick(101, 100, 80);  // a single step
    CreateRoad();
    EXPECT_TRUE(OnlyCells(15, 101 - half, 101 + half, 100 - half, 100 + half)) << width;
    EXPECT_EQ(Height(100 - half, 101 + half), 80) << width;
    EXPECT_EQ(Height(99 - half, 100), 127) << width;
    EXPECT_EQ(Height(100, 102 + half), 127) << width;
  }
}

TEST_F(RoadsTest, AtTheEdgesOnlyWhatLiesInTheGridIsGraded) {
  terrain.roadWidth = 4;
  UseMaterial(3);
  Pick(1, 1, 70);
  Pick(1, 2, 70);
  CreateRoad();
  EXPECT_TRUE(OnlyCells(3, 1, 4, 0, 3)) << "the cells with data from the corner on";
  EXPECT_EQ(Height(0, 0), 70);
  EXPECT_EQ(Height(4, 4), 70);

  materialMapper->grid = {};
  Pick(255, 255, 50);
  Pick(254, 255, 50);
  CreateRoad();
  EXPECT_TRUE(OnlyCells(3, 254, 256, 253, 255)) << "up to the last cells with data";
  EXPECT_EQ(Height(256, 256), 50);
  EXPECT_EQ(Height(257, 256), 127);
  EXPECT_EQ(Height(256, 257), 127);
}

TEST_F(RoadsTest, ASegmentWithoutAWholeStepGradesNothing) {
  Pick(10, 20, 90);
  AddRoadPointAt(43, 83);  // the same cell
  UseMaterial(5);
  CreateRoad();
  EXPECT_EQ(Height(11, 20), 127);
  EXPECT_TRUE(OnlyCells(0, 0, 0, 0, 0));
  EXPECT_EQ(terrain.roadPointCount, 0);
  EXPECT_FALSE(editor.levelModified);
}

TEST_F(RoadsTest, ASinglePointIsDiscardedWithoutAQuestion) {
  Pick(10, 20, 90);
  FinishRoadPoints([]() -> bool {
    ADD_FAILURE() << "asked";
    return true;
  });
  EXPECT_EQ(terrain.roadPointCount, 0);
  EXPECT_FALSE(editor.levelModified);
}

TEST_F(RoadsTest, TheRoadIsBuiltAsItWasConfirmed) {
  Pick(10, 20, 90);
  Pick(10, 24, 90);
  FinishRoadPoints([] {
    EXPECT_EQ(terrain.roadPointCount, 2);
    terrain.roadWidth = 2;
    return true;
  });
  EXPECT_EQ(Height(9, 21), 90);
  EXPECT_EQ(terrain.roadPointCount, 0);
}

TEST_F(RoadsTest, CancellingDiscardsThePoints) {
  Pick(10, 20, 90);
  Pick(10, 24, 90);
  FinishRoadPoints([] { return false; });
  EXPECT_EQ(Height(10, 22), 127);
  EXPECT_EQ(terrain.roadPointCount, 0);
  EXPECT_FALSE(editor.levelModified);
  EXPECT_EQ(repaints, 0);
}

TEST_F(RoadsTest, PendingPointsDoNotReachTheNextLevel) {
  Pick(10, 20, 90);
  InitGrid();
  EXPECT_EQ(terrain.roadPointCount, 0);
}

}  // namespace
}  // namespace mw
