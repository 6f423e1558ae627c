#include "terrain/material_mapper.h"

#include "data/level_archive_test.h"
#include "support/golden.h"
#include "support/test.h"
#include "terrain/flat_ground.h"
#include "terrain/material_generation.h"

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

// The mouse as the mapper hears of it, over a view from above.
TEST_F(MaterialBrushTest, AStrokeCoversTheWayBetweenItsPicksWhileTheButtonIsHeld) {
  LookDownOn(512, 512);
  SetCurrentMaterial(kPaint);
  materialMapper->materialCellSize = terrain.cellSize;
  std::string listing;
  const auto list = [&](const char* name) {
    listing += std::string("== ") + name + "\n" + Told() + Materials();
    StartFlat();
  };
  PickMaterialPoint(10, 10);
  list("without the button");
  EXPECT_NEAR(materialMapper->pick.x, 512 + 80, 4);
  EXPECT_NEAR(materialMapper->pick.z, 512 + 80, 4);
  EXPECT_EQ(terrain.pick.x, 0) << "that of the Terrain Mapper";
  StartPainting();
  list("where it went down");
  PickMaterialPoint(40, 20);
  list("to the next pick");
  LiftMaterialBrush();
  PickMaterialPoint(80, 80);
  list("after it was lifted another place");
  PickMaterialPoint(100, 0);
  EXPECT_TRUE(materialMapper->pickMissed) << "outside the view";
  PickMaterialPoint(60, 60);
  list("back in the view another place");
  StopPainting();
  PickMaterialPoint(30, 90);
  list("let go");
  ExpectGolden("terrain/material_strokes.txt", listing);
}

TEST_F(MaterialBrushTest, SettingsOutsideTheirRangeBecomeTheNearest) {
  for (const auto& [set, brushSize, material] : {std::tuple{-1, 1u, 0u}, {16, 9, 15}}) {
    SetMaterialBrushSize(set);
    SetCurrentMaterial(set);
    EXPECT_EQ(materialMapper->brushSize, brushSize);
    EXPECT_EQ(materialMapper->currentMaterial, material);
  }
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
  const scripted::Prompt question{
      "This will replace the materials of the whole level by the chosen one.", "WARNING",
      PromptButtons::OkCancel, PromptIcon::Exclamation};
  ExpectBoxes({question, question});
  EXPECT_TRUE(editor.levelModified);
  EXPECT_EQ(Materials(), "1-256: 0-255=6\n");
  EXPECT_TRUE(SaveMaterialMap());
  EXPECT_TRUE(Get("materialmap.raw") == std::string(256 * 256, '\6'));
}

// The material map command: what the plug-in is handed, and what the level has afterwards.
// Answers with the values it was given, in the first cells of the level.
void Echo(std::int32_t size, std::uint32_t* materials, const MapwrightVertex* vertices, float water,
          float scale) {
  std::uint32_t* row = materials + kGridCapacity;
  row[0] = static_cast<std::uint32_t>(size);
  row[1] = static_cast<std::uint32_t>(vertices[3 * kGridCapacity + 7].h);
  row[2] = static_cast<std::uint32_t>(water);
  row[3] = static_cast<std::uint32_t>(scale * 10);
}
bool Accept() { return true; }
bool Decline() { return false; }

TEST_F(MaterialFillTest, ThePluginFillsTheGridFromTheTerrainUnlessItOrTheUserDeclines) {
  Height(3, 7) = 99;
  modConfig.WaterLevel = 35;
  Answer({PromptAnswer::Cancel, PromptAnswer::Ok});
  GenerateMaterialMap({Accept, Echo});
  GenerateMaterialMap({Decline, Echo});
  GenerateMaterialMap({nullptr, Echo});
  GenerateMaterialMap({Accept, nullptr});
  EXPECT_EQ(Materials(), "");
  EXPECT_FALSE(editor.levelModified);

  BeginLoadReport();
  NoteDamagedPart(LevelPart::MaterialMap, "cut off");
  const unsigned edits = materialMapper->edits;
  Answer({PromptAnswer::Ok});
  GenerateMaterialMap({Accept, Echo});
  EXPECT_EQ(Materials(), "1: 0=256 1=99 2=35 3=5\n");
  EXPECT_TRUE(editor.levelModified);
  EXPECT_NE(materialMapper->edits, edits) << "the view keeps the old materials";
  EXPECT_TRUE(MayWrite(LevelPart::MaterialMap)) << "the damaged one is replaced";
  ClearLoadReport();
  EXPECT_THAT(scripted::script.status[1], testing::ElementsAre("Generating Material Map...", ""));
  ExpectPrompts({"roads too. [OkCancel]", "roads too. [OkCancel]", "roads too. [OkCancel]"});
}

}  // namespace
}  // namespace mw
