#include "terrain/material_mapper.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <set>
#include <utility>

#include "data/level_archive_test.h"
#include "terrain/material_mode_test.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

constexpr std::uint32_t kPaint = 15;

// The ground is all "Default" and the brush paints another material.
class MaterialBrushTest : public MaterialModeTest {
 protected:
  void SetUp() override {
    MaterialModeTest::SetUp();
    if (!materialMapper) return;
    materialMapper->grid = {};
    SetCurrentMaterial(kPaint);
  }
  static std::set<std::pair<int, int>> PaintedCells() {
    std::set<std::pair<int, int>> cells;
    for (int i = 0; i < kGridCapacity; ++i) {
      for (int j = 0; j < kGridCapacity; ++j) {
        if (Material(i, j) == kPaint) cells.emplace(i, j);
      }
    }
    return cells;
  }
  // Rows i0 ... i1 and columns j0 ... j1.
  static std::set<std::pair<int, int>> Block(int i0, int i1, int j0, int j1) {
    std::set<std::pair<int, int>> cells;
    for (int i = i0; i <= i1; ++i) {
      for (int j = j0; j <= j1; ++j) cells.emplace(i, j);
    }
    return cells;
  }
};

TEST_F(MaterialBrushTest, TheSmallestBrushPaintsTheCellUnderTheCursor) {
  PaintAt(1001, 1003);
  EXPECT_THAT(PaintedCells(), ElementsAre(std::pair{251, 250}));
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(MaterialBrushTest, OnALineBetweenCellsOnlyTheFartherOneIsPainted) {
  PaintAt(1000, 1000);
  EXPECT_THAT(PaintedCells(), ElementsAre(std::pair{251, 250}));
}

TEST_F(MaterialBrushTest, TheBrushIsASquareAroundThatCell) {
  SetMaterialBrushSize(2);
  PaintAt(1001, 1003);
  EXPECT_EQ(PaintedCells(), Block(250, 252, 249, 251));
  SetMaterialBrushSize(9);
  PaintAt(1001, 1003);
  EXPECT_EQ(PaintedCells(), Block(243, 259, 242, 258));
}

TEST_F(MaterialBrushTest, NothingOutsideTheLevelIsPainted) {
  SetMaterialBrushSize(3);
  PaintAt(-1, 1, {10, 255, 10, -90, 180});
  EXPECT_EQ(PaintedCells(), Block(1, 2, 0, 2));
  PaintAt(2050, 2046, {2040, 255, 2040, -90, 180});
  std::set<std::pair<int, int>> both = Block(1, 2, 0, 2);
  both.merge(Block(511, 512, 509, 511));
  EXPECT_EQ(PaintedCells(), both);
}

TEST_F(MaterialBrushTest, CellsThatTheViewDoesNotShowStay) {
  SetMaterialBrushSize(9);
  PaintAt(1000, 1400);                             // beyond the view square
  PaintAt(800, 1000, {1000, 140, 1000, -5, 270});  // behind the camera
  EXPECT_TRUE(PaintedCells().empty());
  EXPECT_FALSE(editor.levelModified);
}

TEST_F(MaterialBrushTest, WithoutTheButtonTheBrushOnlyShows) {
  materialMapper->pick = {1010, 60, 1010};
  SetMaterialBrushSize(3);
  MaterialFrame(kTopDown);
  EXPECT_TRUE(PaintedCells().empty());
  EXPECT_FALSE(editor.levelModified);
}

TEST_F(MaterialBrushTest, ThePointUnderTheCursorIsTheBrushesOwn) {
  MaterialFrame({1010, 200, 1006, -90, 180});
  PickMaterialPoint(kWidth / 2, kHeight / 2);
  EXPECT_NEAR(materialMapper->pick.x, 1010, 0.6);
  EXPECT_NEAR(materialMapper->pick.z, 1006, 0.6);
  EXPECT_EQ(terrain.pick.x, 0) << "that of the Terrain Mapper";
  PickMaterialPoint(kWidth, 0);  // outside the view
  EXPECT_TRUE(materialMapper->pickMissed);
}

TEST_F(MaterialBrushTest, AStrokeCoversTheLineBetweenItsPicks) {
  MaterialFrame(kTopDown);
  const auto cellUnder = [](int x, int y) {
    PickMaterialPoint(x, y);
    const Cell cell = CellOf(materialMapper->pick.x, materialMapper->pick.z);
    return std::pair{cell.i + 1, cell.j};
  };
  std::set<std::pair<int, int>> passed;
  for (int step = 0; step <= 100; ++step) passed.insert(cellUnder(90 + 2 * step, 60 + step));
  PickMaterialPoint(90, 60);
  StartPainting();
  EXPECT_EQ(PaintedCells().size(), 1u) << "where the button went down";
  PickMaterialPoint(290, 160);
  const auto painted = PaintedCells();
  EXPECT_TRUE(std::includes(painted.begin(), painted.end(), passed.begin(), passed.end()));
  EXPECT_LE(painted.size(), passed.size() + 20) << "corners that no pixel's centre met";
  LiftMaterialBrush();
  PickMaterialPoint(30, 200);
  EXPECT_EQ(PaintedCells().size(), painted.size() + 1) << "another place";
  StopPainting();
  PickMaterialPoint(90, 200);
  EXPECT_EQ(PaintedCells().size(), painted.size() + 1);
}

TEST_F(MaterialBrushTest, SettingsOutsideTheirRangeBecomeTheNearest) {
  SetMaterialBrushSize(0);
  SetCurrentMaterial(-1);
  EXPECT_EQ(materialMapper->brushSize, 1u);
  EXPECT_EQ(materialMapper->currentMaterial, 0u);
  SetMaterialBrushSize(10);
  SetCurrentMaterial(16);
  EXPECT_EQ(materialMapper->brushSize, 9u);
  EXPECT_EQ(materialMapper->currentMaterial, 15u);
}

// A level of 256 x 256 cells with its archive open.
class MaterialFillTest : public LevelArchiveTest {
 protected:
  MaterialFillTest() {
    modConfig.MaterialSize = 256;
    modConfig.WorldSize = 1024;
    CreateTerrain();
    CreateMaterialMapper();
  }
  ~MaterialFillTest() override {
    DestroyMaterialMapper();
    DestroyTerrain();
  }
};

TEST_F(MaterialFillTest, FillReachesEveryByteOfTheFileAndNoCellBeside) {
  SetCurrentMaterial(6);
  scripted::script.answers = {PromptAnswer::Cancel, PromptAnswer::Ok};
  FillWithMaterial();
  EXPECT_FALSE(editor.levelModified) << "the question was declined";
  FillWithMaterial();
  EXPECT_TRUE(SaveMaterialMap());
  EXPECT_TRUE(Get("materialmap.raw") == std::string(256 * 256, '\6'));
  EXPECT_TRUE(editor.levelModified);
  EXPECT_EQ(materialMapper->grid[0][0], 0u);
  EXPECT_EQ(materialMapper->grid[257][0], 0u);
  EXPECT_EQ(materialMapper->grid[1][256], 0u);
}

}  // namespace
}  // namespace mw
