// The material map command: what the plug-in is handed, and what the level has afterwards.
#include "terrain/material_generation.h"

#include <gtest/gtest.h>

#include "core/editor_state.h"
#include "data/mod_config.h"
#include "support/sandbox.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

class MaterialGenerationTest : public SandboxTest {
 protected:
  MaterialGenerationTest() {
    modConfig.MaterialSize = 256;
    modConfig.WorldSize = 1024;
    modConfig.WaterLevel = 35;
    modConfig.HeightScale = 0.5f;
    CreateTerrain();
    CreateMaterialMapper();
    InitGrid();
    terrain.grid[3][7].h = 99;
    editor.levelModified = false;
  }
  ~MaterialGenerationTest() override {
    DestroyMaterialMapper();
    DestroyTerrain();
  }
};

// Answers with the values it was given, in the first cells of the level.
void Echo(std::int32_t size, std::uint32_t* materials, const MapwrightVertex* vertices, float water,
          float scale) {
  std::uint32_t* row = materials + kGridCapacity;
  row[0] = static_cast<std::uint32_t>(size);
  row[1] = static_cast<std::uint32_t>(vertices[3 * kGridCapacity + 7].h);
  row[2] = static_cast<std::uint32_t>(water);
  row[3] = static_cast<std::uint32_t>(scale * 10);
}

TEST_F(MaterialGenerationTest, ThePluginFillsTheGridFromTheTerrain) {
  const unsigned edits = materialMapper->edits;
  scripted::script.answers = {PromptAnswer::Ok};
  GenerateMaterialMap({[] { return true; }, Echo});
  const auto& row = materialMapper->grid[1];
  EXPECT_EQ(row[0], 256u);
  EXPECT_EQ(row[1], 99u);
  EXPECT_EQ(row[2], 35u);
  EXPECT_EQ(row[3], 5u);
  EXPECT_TRUE(editor.levelModified);
  EXPECT_NE(materialMapper->edits, edits) << "the view keeps the old materials";
}

TEST_F(MaterialGenerationTest, AUserOrAPluginThatDeclinesChangesNothing) {
  scripted::script.answers = {PromptAnswer::Cancel, PromptAnswer::Ok};
  GenerateMaterialMap({[] { return true; }, Echo});
  GenerateMaterialMap({[] { return false; }, Echo});
  GenerateMaterialMap({nullptr, Echo});
  GenerateMaterialMap({[] { return true; }, nullptr});
  EXPECT_EQ(materialMapper->grid[1][0], 0u);
  EXPECT_FALSE(editor.levelModified);
}

}  // namespace
}  // namespace mw
