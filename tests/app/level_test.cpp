#include "app/level.h"

#include <fstream>
#include <gmock/gmock.h>

#include "app/input.h"
#include "app/level_fixture.h"
#include "app/modes.h"
#include "data/archive.h"
#include "data/mods.h"
#include "data/open_level.h"
#include "data/textures.h"
#include "support/archive_bytes.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/mini_map_picture.h"
#include "terrain/roads.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
constexpr PromptAnswer kYes = PromptAnswer::Yes, kOk = PromptAnswer::Ok;

class OpenLevelTest : public LevelTest {
 protected:
  OpenLevelTest() { Open("Island"); }
  static bool Save() { return SaveLevel(); }
};

TEST_F(OpenLevelTest, OpeningRunsItsStepsAndShowsTheLevelFromTheMiddleOfAnEdge) {
  Do("open", OpenLevel);
  EXPECT_TRUE(editor.levelLoaded && editor.ShowTextures);
  EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper));
  EXPECT_EQ(modConfig.MaterialSize, 256);
  EXPECT_FLOAT_EQ(terrain.grid[256][1].h, (256 * 7 % 256) / 256.0f);
  const float ground = terrain.grid[128][0].h * modConfig.HeightScale;
  EXPECT_EQ(camera.position, (Vector3{512, ground + 40, 0}));
  EXPECT_FLOAT_EQ(camera.pitch, 0);
}

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
  Do("save", Save);
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

TEST_F(OpenLevelTest, TheCameraComesBackToWhereItWasSaved) {
  camera.position.Set(300, 80.123f, 400);
  ASSERT_TRUE(SaveLevel());
  Open("Valley");
  EXPECT_EQ(camera.position.x, static_cast<float>(modConfig.WorldSize) / 2) << "not this level's";
  editor.savedCameraPosition = {};  // another run of the program
  Open("Island");
  EXPECT_EQ(camera.position, (Vector3{300, 80.123f, 400}));
  for (auto& [name, value] : scripted::script.editorSettings) value = "300 nan";
  ASSERT_TRUE(OpenLevel());
  EXPECT_EQ(camera.position.x, 512) << "a record that cannot be read";
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

TEST_F(OpenLevelTest, WhatCannotBeOpenedCostsTheOpenLevelNothing) {
  std::ofstream(levels / "Broken.vra") << "not an archive";
  fs::copy(levels / "Valley.vra", levels / "Renamed.vra");
  knownFiles["a level of another name"] = ReadBytes(levels / "Renamed.vra");
  Edit();
  camera.position.Set(300, 80, 400);
  AnswerDialogs("");
  Do("cancel", OpenLevel);
  for (const char* level : {"Gone", "Broken", "Renamed"}) {
    AnswerDialogs(level);
    Do(std::string("open ") + level, OpenLevel, {kOk});
    EXPECT_TRUE(editor.levelLoaded);
    EXPECT_EQ(modConfig.LevelName, "Island");
    EXPECT_EQ(modConfig.MaterialSize, 256);
    EXPECT_EQ(camera.position, (Vector3{300, 80, 400}));
    EXPECT_FLOAT_EQ(terrain.grid[20][20].h, 77);
  }
  Do("save", Save);
  AnswerDialogs("Gone");
  editor.levelLoaded = false;
  Do("open Gone with no level open", OpenLevel, {kOk});
}

TEST_F(OpenLevelTest, OpeningThatFailsLaterLeavesAnEmptyEditorAndTheArchiveUntouched) {
  MakeLevel("Huge", 2048, 8192);
  knownFiles["as made"] = ReadBytes(levels / "Huge.vra");
  bool isOpen = true;
  shell.setLevelOpen = [&isOpen](bool open) { isOpen = open; };
  SetMaterial(5, 10, 10);
  Edit();
  AnswerDialogs("Huge");
  Do("open Huge", OpenLevel, {kOk});
  EXPECT_FALSE(isOpen || editor.levelLoaded || LevelArchive());
  EXPECT_EQ(modConfig.LevelName, "");
  EXPECT_EQ(modConfig.MaterialSize, 512) << "the mod's";
  EXPECT_FLOAT_EQ(terrain.grid[20][20].h, kFlatHeight);
  EXPECT_GT(camera.position.y, kFlatHeight * modConfig.HeightScale);
  EXPECT_EQ(materialMapper->grid[10][10], 0u);
  EXPECT_EQ(terrain.miniMap.grey, MiniMapPicture{}.grey);
}

TEST_F(OpenLevelTest, NumberedArchivesAreNotListed) {
  for (const char* name : {"Island_002.vra", "Island_02.vra", "_123.vra", "Extra.VRA"}) {
    std::ofstream(levels / name) << "x";
  }
  EXPECT_THAT(ListLevels(), ElementsAre("Extra", "Island", "Island_02", "Valley"));
}

TEST_F(OpenLevelTest, TheStockRunOffersToSaveAndLeavesTheLastLevelThatItFinds) {
  const std::string folderBefore = openLevel.folder.String();
  Do("run without stock levels", RunStockLevelLoad);
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_EQ(openLevel.folder, folderBefore);
  Do("save", Save);
  EXPECT_THAT(MembersOnDisk("Island"), ::testing::Contains("notes.txt"));

  Edit();
  MakeLevel("Harbour_Point", 512, 2048);
  Do("run with Harbour_Point", RunStockLevelLoad, {kYes});
  EXPECT_EQ(modConfig.LevelName, "Harbour_Point");
  MakeLevel("Stone_Ridge", 2048, 8192);
  Do("run with one that is too large", RunStockLevelLoad, {kOk});
  EXPECT_FALSE(editor.levelLoaded);
  fs::remove(levels / "Stone_Ridge.vra");
  MakeLevel("Stone_Ridge", 512, 2048);
  Do("run with both", RunStockLevelLoad);
  EXPECT_EQ(modConfig.LevelName, "Stone_Ridge");
  Open("Harbour_Point");
  int open = 0;
  for (std::size_t i = 0; i < archives.Count(); ++i) {
    open += archives.At(i)->Path() == LevelArchivePath();
  }
  EXPECT_EQ(open, 1) << "two would write over each other";
  Do("save", Save);
}

}  // namespace
}  // namespace mw
