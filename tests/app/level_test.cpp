#include "app/level.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "app/commands.h"
#include "app/input.h"
#include "app/level_fixture.h"
#include "app/modes.h"
#include "data/archive.h"
#include "platform/file.h"
#include "terrain/roads.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(LevelTest, OpeningRunsItsStepsInOrder) {
  operations.clearAllObjects = [this] { calls.emplace_back("clear"); };
  operations.buildTree = [this] { calls.emplace_back("tree"); };
  operations.loadMaterialMap = [this] { calls.emplace_back("materials"); };
  operations.loadStaticObjects = [this] { calls.emplace_back("objects"); };
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  EXPECT_THAT(calls, ElementsAre("clear", "tree", "materials", "objects"));
  EXPECT_THAT(status(),
              ElementsAre("Loading Init Script...", "Loading Surface Maps...", "Loading Terrain...",
                          "Loading Material Map...", "Loading Objects...", "Loaded level Island"));
  EXPECT_TRUE(editor.levelLoaded);
  EXPECT_FALSE(editor.levelModified);
  EXPECT_EQ(modConfig.MaterialSize, 256);
  EXPECT_FLOAT_EQ(terrain->grid[256][1].h, (256 * 7 % 256) / 256.0f);
  EXPECT_TRUE(editor.ShowTextures);
  EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper));
  EXPECT_EQ(camera.position, (Vector3{1024, 0, 0})) << "nothing was saved yet";
  EXPECT_FLOAT_EQ(camera.pitch, 0);
}

TEST_F(LevelTest, SavingWithoutAnEditKeepsEveryMember) {
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  const Bytes heights = MemberOnDisk("Island", "heightmap.raw");
  const Bytes materials = MemberOnDisk("Island", "materialmap.raw");
  const std::string init = TextOnDisk("Island", "init.con");
  ASSERT_TRUE(SaveLevel());
  ASSERT_TRUE(SaveLevel()) << "twice in a row";
  EXPECT_EQ(status().back(), "Saved level Island");
  CloseLevelArchive();
  EXPECT_EQ(MemberOnDisk("Island", "heightmap.raw"), heights);
  EXPECT_EQ(MemberOnDisk("Island", "materialmap.raw"), materials);
  EXPECT_EQ(TextOnDisk("Island", "init.con"), init);
  EXPECT_EQ(TextOnDisk("Island", "notes.txt"), "not the editor's");
  EXPECT_EQ(TextOnDisk("Island", "init/terrain.con"),
            "GeometryTemplate.materialSize 256\r\nGeometryTemplate.worldSize 1024\r\n"
            "GeometryTemplate.yScale 0.500000\r\nGeometryTemplate.waterLevel 12.000000\r\n"
            "unknown.command stays  as it is\r\n");
}

TEST_F(LevelTest, ARoadIsAskedForWhenCtrlIsReleasedAndSavedWithTheLevel) {
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  SetEditMode(EditMode::TerrainMapper);
  terrain->tool = TerrainTool::Road;
  SetHeight(10, 20, 90);
  SetHeight(12, 20, 90);
  AddRoadPointAt(40, 80);
  AddRoadPointAt(48, 80);
  shell.createRoadDialog = [] {
    terrain->roadAutoMaterial = 1;
    terrain->roadMaterial = 14;
    return true;
  };
  RouteKey(kKeyCtrl, true);
  RouteKey(kKeyCtrl, false);
  EXPECT_TRUE(editor.levelModified);
  ASSERT_TRUE(SaveLevel());
  const Bytes heights = MemberOnDisk("Island", "heightmap.raw");
  const Bytes materials = MemberOnDisk("Island", "materialmap.raw");
  const std::size_t cell = 20 * 256 + (256 - 11);  // (11, 20)
  EXPECT_EQ(heights[cell * 2 + 1], 90);
  EXPECT_EQ(materials[cell], 14);
}

TEST_F(LevelTest, NothingIsInheritedFromTheLevelBefore) {
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  modConfig.fogEnd = 77;  // as if Island's scripts had set it
  modConfig.HeightScale = 9;
  AnswerDialogs("Valley");
  ASSERT_TRUE(OpenLevel());
  EXPECT_EQ(modConfig.fogEnd, 0);
  EXPECT_EQ(modConfig.fogStart, 150);
  EXPECT_FLOAT_EQ(modConfig.HeightScale, 0.5f);
  EXPECT_EQ(modConfig.LevelName, "Valley");
  EXPECT_EQ(modConfig.MaterialSize, 512);
}

TEST_F(LevelTest, TheCameraComesBackToWhereItWasSaved) {
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  camera.position.Set(300, 80, 400);
  ASSERT_TRUE(SaveLevel());
  camera.position.Set(0, 0, 0);
  ASSERT_TRUE(OpenLevel());
  EXPECT_EQ(camera.position, (Vector3{300, 80, 400}));
}

TEST_F(LevelTest, CancellingLeavesTheOpenLevelAlone) {
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  terrain->grid[10][10].h = 99;
  AnswerDialogs("");
  EXPECT_FALSE(OpenLevel());
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_EQ(modConfig.MaterialSize, 256);
  EXPECT_FLOAT_EQ(terrain->grid[10][10].h, 99);
  ASSERT_TRUE(SaveLevel());
}

TEST_F(LevelTest, ALevelThatCannotBeOpenedLeavesNothingToSaveInto) {
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  const Bytes valley = MemberOnDisk("Valley", "heightmap.raw");
  std::ofstream(folder / "Mods/varnhold/Archives/varnhold/levels/Broken.vra") << "not an archive";
  AnswerDialogs("Broken");
  scripted::script.answers = {PromptAnswer::Ok};
  EXPECT_FALSE(OpenLevel());
  EXPECT_THAT(scripted::script.prompts.back().text,
              HasSubstr("The level Broken could not be opened"));
  EXPECT_FALSE(editor.levelModified);
  scripted::script.answers = {PromptAnswer::Ok};
  EXPECT_FALSE(SaveLevel());
  EXPECT_THAT(scripted::script.prompts.back().text, HasSubstr("The level could not be saved."));
  EXPECT_EQ(MemberOnDisk("Valley", "heightmap.raw"), valley);
}

TEST_F(LevelTest, AnUnsupportedTerrainSizeIsRefusedAndItsArchiveUntouched) {
  MakeLevel("Huge", 2048, 8192);
  const auto before =
      std::filesystem::last_write_time(folder / "Mods/varnhold/Archives/varnhold/levels/Huge.vra");
  AnswerDialogs("Huge");
  scripted::script.answers = {PromptAnswer::Ok};
  EXPECT_FALSE(OpenLevel());
  ASSERT_EQ(scripted::script.prompts.size(), 1u);
  EXPECT_EQ(scripted::script.prompts[0].text,
            "The terrain size of this level is not supported (2048 samples over 8192 units).");
  EXPECT_EQ(modConfig.MaterialSize, 512) << "the record is as before";
  EXPECT_EQ(
      std::filesystem::last_write_time(folder / "Mods/varnhold/Archives/varnhold/levels/Huge.vra"),
      before);
}

TEST_F(LevelTest, AMissingHeightMapIsReportedAndTheGridStaysFlat) {
  const std::string path = ArchivePath("Island");
  Archive archive;
  ASSERT_TRUE(archive.Open(path, true));
  ASSERT_TRUE(archive.RemoveMember("varnhold/levels/Island/heightmap.raw"));
  ASSERT_TRUE(archive.Close());
  AnswerDialogs("Island");
  scripted::script.answers = {PromptAnswer::Ok};
  EXPECT_TRUE(OpenLevel()) << "the open goes on";
  EXPECT_THAT(scripted::script.prompts[0].text, HasSubstr("Can't Find The Height Map!"));
  EXPECT_FLOAT_EQ(terrain->grid[100][100].h, 127);
}

// Every change that a save makes to the disk fails in turn, and the program is told to go on.
TEST_F(LevelTest, AFailedSaveSaysSoAndLeavesTheLevelAsItWas) {
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  const Bytes before = MemberOnDisk("Island", "heightmap.raw");
  for (int failing = 0;; ++failing) {
    ASSERT_LT(failing, 100) << "the save never succeeds";
    SetHeight(20, 20, 3.0f + static_cast<float>(failing));
    editor.levelModified = true;
    int change = 0;
    diskFaultPlan = [&](const DiskChange&) -> std::optional<DiskFault> {
      if (change++ == failing) return DiskFault{ENOSPC, 1};
      return std::nullopt;
    };
    scripted::script.answers = {PromptAnswer::Ok};
    const bool saved = SaveLevel();
    diskFaultPlan = nullptr;
    if (saved) break;
    EXPECT_TRUE(editor.levelModified);
    EXPECT_THAT(scripted::script.prompts.back().text, HasSubstr("No space left on device"));
    EXPECT_EQ(MemberOnDisk("Island", "heightmap.raw"), before) << "change " << failing << " failed";
  }
  EXPECT_FALSE(editor.levelModified);
  EXPECT_NE(MemberOnDisk("Island", "heightmap.raw"), before);
}

TEST_F(LevelTest, NumberedArchivesAreNotListed) {
  for (const char* name : {"Island_002.vra", "Island_02.vra", "_123.vra", "Extra.VRA"}) {
    std::ofstream(folder / "Mods/varnhold/Archives/varnhold/levels" / name) << "x";
  }
  EXPECT_THAT(ListLevels(), ElementsAre("Extra", "Island", "Island_02", "Valley"));
}

TEST_F(LevelTest, TheStockRunOffersToSaveAndSkipsWhatIsMissing) {
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  editor.levelModified = true;
  scripted::script.answers = {PromptAnswer::Yes};
  MakeLevel("Stone_Ridge", 512, 2048);
  RunStockLevelLoad();
  EXPECT_EQ(modConfig.LevelName, "Stone_Ridge");
  EXPECT_FALSE(editor.levelModified);
  EXPECT_TRUE(SaveLevel());
}

TEST_F(LevelTest, AStockRunThatFindsNothingLeavesTheOpenLevelWhole) {
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  const std::string folderBefore = editor.levelFolder.String();
  const auto membersBefore = LevelArchive()->Entries().size();
  RunStockLevelLoad();
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_EQ(editor.levelFolder, folderBefore);
  ASSERT_TRUE(SaveLevel());
  for (const auto& [name, entry] : LevelArchive()->Entries()) {
    EXPECT_NE(name.find("/Island/"), name.npos) << name << " belongs to another level";
  }
  EXPECT_GE(LevelArchive()->Entries().size(), membersBefore);

  MakeLevel("Harbour_Point", 512, 2048);
  RunStockLevelLoad();
  EXPECT_EQ(modConfig.LevelName, "Harbour_Point") << "the last one that opened stays";
}

TEST_F(LevelTest, ALevelOfTheStockRunIsOpenOnceWhenItIsOpenedAgain) {
  for (const char* name : {"Harbour_Point", "Stone_Ridge"}) MakeLevel(name, 512, 2048);
  RunStockLevelLoad();
  AnswerDialogs("Harbour_Point");
  ASSERT_TRUE(OpenLevel());
  int open = 0;
  for (std::size_t i = 0; i < archives.Count(); ++i) {
    open += archives.At(i)->Path() == LevelArchivePath();
  }
  EXPECT_EQ(open, 1);
  EXPECT_TRUE(SaveLevel());
}

}  // namespace
}  // namespace mw
