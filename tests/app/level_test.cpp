#include "app/level.h"

#include <fstream>
#include <gmock/gmock.h>

#include "app/input.h"
#include "app/level_fixture.h"
#include "app/modes.h"
#include "app/new_level.h"
#include "app/start_up.h"
#include "data/archive.h"
#include "data/mods.h"
#include "data/open_level.h"
#include "support/archive_bytes.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/roads.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;

class OpenLevelTest : public LevelTest {
 protected:
  OpenLevelTest() { Open("Island"); }
};

TEST_F(OpenLevelTest, SavingWithoutAnEditKeepsEveryMember) {
  const char* const kept[] = {"heightmap.raw", "materialmap.raw", "init.con", "notes.txt"};
  std::vector<Bytes> before;
  for (const char* member : kept) before.push_back(MemberOnDisk("Island", member));
  ASSERT_TRUE(SaveLevel());
  ASSERT_TRUE(SaveLevel()) << "twice in a row";
  CloseLevelArchive();
  for (std::size_t i = 0; i < std::size(kept); ++i) {
    EXPECT_EQ(MemberOnDisk("Island", kept[i]), before[i]) << kept[i];
  }
  EXPECT_EQ(TextOnDisk("Island", "init/terrain.con"),
            "GeometryTemplate.materialSize 256\r\nGeometryTemplate.worldSize 1024\r\n"
            "GeometryTemplate.yScale 0.500000\r\nGeometryTemplate.waterLevel 12.000000\r\n"
            "unknown.command stays  as it is\r\n");
}

TEST_F(OpenLevelTest, WhatWasChosenAndBuiltIsSavedWithTheLevel) {
  SetEditMode(EditMode::TerrainMapper);
  terrain.tool = TerrainTool::Road;
  SetHeight(10, 20, 90);
  SetHeight(12, 20, 90);
  AddRoadPointAt(40, 80);
  AddRoadPointAt(48, 80);
  shell.createRoadDialog = [] {
    terrain.roadAutoMaterial = 1;
    terrain.roadMaterial = 14;
    return true;
  };
  RouteKey(kKeyCtrl, true);
  RouteKey(kKeyCtrl, false);
  levelTextures.textureSetChosen = true;
  ASSERT_TRUE(SaveLevel());
  EXPECT_EQ(HeightOnDisk("Island", 11, 20), 90);
  EXPECT_EQ(MemberOnDisk("Island", "materialmap.raw")[20 * 256 + (256 - 11)], 14);
  EXPECT_NE(TextOnDisk("Island", "Textures/envmap_g_.rcm"), "") << "of the set of textures";
}

TEST_F(OpenLevelTest, NothingIsInheritedFromTheLevelBefore) {
  modConfig.fogEnd = 77;  // as if Island's scripts had set it
  modConfig.HeightScale = 9;
  Open("Valley");
  EXPECT_EQ(modConfig.fogEnd, 0);
  EXPECT_EQ(modConfig.fogStart, 150);
  EXPECT_FLOAT_EQ(modConfig.HeightScale, 0.5f);
  EXPECT_EQ(modConfig.LevelName, "Valley");
  EXPECT_EQ(modConfig.MaterialSize, 512);
}

TEST_F(OpenLevelTest, AnotherModChangesNoNameInTheOpenLevel) {
  fs::create_directories(folder / "Mods/desert/Archives/varnhold");
  fs::copy(levels, folder / "Mods/desert/Archives/varnhold/levels");
  fs::copy(folder / "varnhold.cfg", folder / "desert.cfg");
  FindMods();
  ASSERT_TRUE(SelectMod(0));
  ASSERT_EQ(modConfig.modFolder, "Mods\\desert\\");
  Open("Island");
  const auto names = [] {
    std::vector<std::string> all;
    for (const auto& [name, entry] : LevelArchive()->Entries()) all.emplace_back(name);
    return all;
  };
  ASSERT_TRUE(SaveLevel());
  const auto before = names();
  modConfig.modFolder = kBaseModFolder;
  ASSERT_TRUE(SaveLevel());
  EXPECT_EQ(names(), before);
  modList = ModList{};
}

TEST_F(OpenLevelTest, NumberedArchivesAreNotListed) {
  for (const char* name : {"Island_002.vra", "Island_02.vra", "_123.vra", "Extra.VRA"}) {
    std::ofstream(levels / name) << "x";
  }
  EXPECT_THAT(ListLevels(), ElementsAre("Extra", "Island", "Island_02", "Valley"));
}

class NewLevelTest : public LevelTest {
 protected:
  NewLevelTest() {
    shell.selectMod = [](bool) { return true; };
    shell.randomTerrainDialog = [] { return RandomTerrainParameters{}; };
    choices.name = "Atoll";
    choices.size = LevelSize::Small;
    choices.randomTerrain = false;
  }
  bool Create() {
    return NewLevel([this] { return choices; });
  }
  NewLevelChoices choices;
};

TEST_F(NewLevelTest, RandomTerrainIsMadeWithoutAQuestion) {
  choices.randomTerrain = choices.water = true;
  ASSERT_TRUE(Create());
  const float made = terrain.grid[100][100].h;
  EXPECT_NE(made, 127);
  Open("Atoll");
  EXPECT_NEAR(terrain.grid[100][100].h, made, 1.0f / 256);
  EXPECT_FLOAT_EQ(modConfig.WaterLevel, 35);
  EXPECT_THAT(TextOnDisk("Atoll", "Init.con"), testing::HasSubstr("water.texLayer1"));
}

TEST_F(NewLevelTest, TheWelcomeDialogComesBackUntilThereIsALevel) {
  int shown = 0;
  shell.welcomeDialog = [&](const auto&) {
    return ++shown == 1 ? WelcomeChoice::OpenLevel : WelcomeChoice::NewLevel;
  };
  AnswerDialogs("");
  shell.newLevelDialog = [&] { return shown < 3 ? std::nullopt : std::optional(choices); };
  EXPECT_TRUE(RunWelcomeLoop());
  EXPECT_EQ(shown, 3);
  shell.welcomeDialog = [](const auto&) { return WelcomeChoice::Close; };
  EXPECT_FALSE(RunWelcomeLoop());
}

TEST_F(NewLevelTest, TheLongestNameThatIsAcceptedHoldsEveryFile) {
  std::string name(127, 'n');
  scripted::script.answers.assign(name.size(), PromptAnswer::Ok);
  while (!AcceptLevelName(name)) name.pop_back();
  scripted::script.answers.clear();
  choices.name = name;
  choices.rules = {true, true, true, true};
  EXPECT_TRUE(Create());
}

}  // namespace
}  // namespace mw
