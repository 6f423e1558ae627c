#include "terrain/material_mapper.h"

#include "data/load_report.h"
#include "support/test.h"
#include "terrain/flat_ground.h"
#include "terrain/material_generation.h"

namespace mw {
namespace {

using MaterialMapperTest = FlatGround<SandboxTest>;

TEST_F(MaterialMapperTest, SettingsOutsideTheirRangeBecomeTheNearest) {
  for (const auto& [set, brushSize, material] : {std::tuple{-1, 1u, 0u}, {16, 9, 15}}) {
    SetMaterialBrushSize(set);
    SetCurrentMaterial(set);
    EXPECT_EQ(materialMapper->brushSize, brushSize);
    EXPECT_EQ(materialMapper->currentMaterial, material);
  }
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

TEST_F(MaterialMapperTest, ThePluginFillsTheGridFromTheTerrainUnlessItOrTheUserDeclines) {
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
