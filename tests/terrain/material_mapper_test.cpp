#include "terrain/material_mapper.h"

#include <algorithm>
#include <set>
#include <utility>

#include "data/level_archive_test.h"
#include "support/golden.h"
#include "support/test.h"
#include "terrain/flat_ground.h"
#include "terrain/material_mode_test.h"

namespace mw {
namespace {

constexpr std::uint32_t kPaint = 15;

using MaterialBrushTest = FlatGround<SandboxTest>;

TEST_F(MaterialBrushTest, EachBrushPaintsTheCellsThatAreListed) {
  const struct {
    const char* name;
    int size;
    BrushWay way;
    int rowsInView = kSide;
    float firstZInSight = -1;
  } strokes[] = {
      {"cell under the cursor", 1, BrushWay::At(401, 403)},
      {"on a line between cells the farther one", 1, BrushWay::At(400, 400)},
      {"square around the cell", 2, BrushWay::At(401, 403)},
      {"largest square", 9, BrushWay::At(401, 403)},
      {"slanting way", 1, {401, 403, 417, 411}},
      {"way of a square", 2, {401, 403, 401, 423}},
      {"before the first corner", 3, BrushWay::At(-1, 1)},
      {"behind the last corner", 3, BrushWay::At(1026, 1022)},
      {"at the edge of the view square", 3, BrushWay::At(401, 403), 100},
      {"outside the view square", 3, BrushWay::At(420, 403), 100},
      {"partly out of sight", 3, BrushWay::At(401, 403), kSide, 400},
      {"at a place that no level has", 9, {-1e30f, 1e30f, 1e30f, -1e30f}},
  };
  SetCurrentMaterial(kPaint);
  materialMapper->materialCellSize = terrain.cellSize;  // as a frame finds
  std::string listing;
  for (const auto& [name, size, way, rowsInView, firstZInSight] : strokes) {
    StartFlat();
    terrain.viewSquare.ViewRowEnd = rowsInView;
    camera.frustum[0] = {0, 0, 1, -firstZInSight};
    SetMaterialBrushSize(size);
    PaintAlong(way);
    listing += std::string("== ") + name + "\n" + Told() + Materials();
  }
  ExpectGolden("terrain/material_brush.txt", listing);
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

using MaterialFillTest = FlatGround<LevelArchiveTest>;

TEST_F(MaterialFillTest, FillReachesEveryByteOfTheFileAndNoCellBeside) {
  SetCurrentMaterial(6);
  Answer({PromptAnswer::Cancel, PromptAnswer::Ok});
  FillWithMaterial();
  EXPECT_FALSE(editor.levelModified) << "the question was declined";
  BeginLoadReport();
  NoteDamagedPart(LevelPart::MaterialMap, "cut off");
  FillWithMaterial();
  EXPECT_TRUE(MayWrite(LevelPart::MaterialMap)) << "the damaged one is replaced";
  ExpectBoxes({{"This will replace the materials of the whole level by the chosen one.", "WARNING",
                PromptButtons::OkCancel, PromptIcon::Exclamation},
               {"This will replace the materials of the whole level by the chosen one.", "WARNING",
                PromptButtons::OkCancel, PromptIcon::Exclamation}});
  EXPECT_TRUE(editor.levelModified);
  EXPECT_EQ(Materials(), "1-256: 0-255=6\n");
  EXPECT_TRUE(SaveMaterialMap());
  EXPECT_TRUE(Get("materialmap.raw") == std::string(256 * 256, '\6'));
}

// The brush in front of a drawn view of "Default" ground.
class MaterialStrokeTest : public MaterialModeTest {
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
};

TEST_F(MaterialStrokeTest, ThePointUnderTheCursorIsTheBrushesOwnAndOnlyShowsWithoutTheButton) {
  SetMaterialBrushSize(3);
  MaterialFrame({1010, 200, 1006, -90, 180});
  PickMaterialPoint(kWidth / 2, kHeight / 2);
  EXPECT_NEAR(materialMapper->pick.x, 1010, 0.6);
  EXPECT_NEAR(materialMapper->pick.z, 1006, 0.6);
  EXPECT_EQ(terrain.pick.x, 0) << "that of the Terrain Mapper";
  PickMaterialPoint(kWidth, 0);  // outside the view
  EXPECT_TRUE(materialMapper->pickMissed);
  EXPECT_TRUE(PaintedCells().empty());
  EXPECT_FALSE(editor.levelModified);
}

TEST_F(MaterialStrokeTest, AStrokeCoversTheLineBetweenItsPicks) {
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

}  // namespace
}  // namespace mw
