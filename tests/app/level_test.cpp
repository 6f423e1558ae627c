#include "app/level.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "app/commands.h"
#include "app/input.h"
#include "app/level_fixture.h"
#include "app/modes.h"
#include "core/hooks.h"
#include "data/archive.h"
#include "data/mods.h"
#include "data/open_level.h"
#include "platform/file.h"
#include "support/archive_bytes.h"
#include "terrain/material_map.h"
#include "terrain/mini_map_picture.h"
#include "terrain/roads.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST_F(LevelTest, OpeningRunsItsStepsInOrder) {
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  EXPECT_THAT(status(),
              ElementsAre("Loading Init Script...", "Loading Surface Maps...", "Loading Terrain...",
                          "Loading Material Map...", "Loading Objects...", "Loaded level Island"));
  EXPECT_TRUE(editor.levelLoaded);
  EXPECT_FALSE(editor.levelModified);
  EXPECT_EQ(modConfig.MaterialSize, 256);
  EXPECT_FLOAT_EQ(terrain.grid[256][1].h, (256 * 7 % 256) / 256.0f);
  EXPECT_TRUE(editor.ShowTextures);
  EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper));
  const float ground = terrain.grid[128][0].h * modConfig.HeightScale;
  EXPECT_EQ(camera.position, (Vector3{512, ground + 40, 0})) << "the middle of an edge";
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
  camera.position.Set(300, 80.123f, 400);
  ASSERT_TRUE(SaveLevel());
  AnswerDialogs("Valley");
  ASSERT_TRUE(OpenLevel());
  EXPECT_EQ(camera.position.x, static_cast<float>(modConfig.WorldSize) / 2) << "not this level's";
  editor.savedCameraPosition = {};  // another run of the program
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  EXPECT_EQ(camera.position, (Vector3{300, 80.123f, 400}));
  for (auto& [name, value] : scripted::script.editorSettings) value = "300 nan";
  ASSERT_TRUE(OpenLevel());
  EXPECT_EQ(camera.position.x, 512) << "a record that cannot be read";
}

TEST_F(LevelTest, AnotherModChangesNoNameInTheOpenLevel) {
  namespace fs = std::filesystem;
  fs::create_directories(folder / "Mods/desert/Archives/varnhold");
  fs::copy(folder / "Mods/varnhold/Archives/varnhold/levels",
           folder / "Mods/desert/Archives/varnhold/levels");
  fs::copy(folder / "varnhold.cfg", folder / "desert.cfg");
  FindMods();
  ASSERT_TRUE(SelectMod(0));
  ASSERT_EQ(modConfig.modFolder, "Mods\\desert\\");
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
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

TEST_F(LevelTest, CancellingLeavesTheOpenLevelAlone) {
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  terrain.grid[10][10].h = 99;
  AnswerDialogs("");
  EXPECT_FALSE(OpenLevel());
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_EQ(modConfig.MaterialSize, 256);
  EXPECT_FLOAT_EQ(terrain.grid[10][10].h, 99);
  ASSERT_TRUE(SaveLevel());
}

TEST_F(LevelTest, ALevelWhoseArchiveCannotBeReadCostsTheOpenOneNothing) {
  const std::filesystem::path levels = folder / "Mods/varnhold/Archives/varnhold/levels";
  std::ofstream(levels / "Broken.vra") << "not an archive";
  std::filesystem::copy(levels / "Valley.vra", levels / "Renamed.vra");
  const Bytes renamed = ReadBytes(levels / "Renamed.vra");
  const std::string stays =
      "\n\nThe level on disk is as it was after the last save. The level Island is still open, as "
      "you left it.";
  const struct {
    const char* level;
    std::string reason;
  } cases[] = {{"Gone", (levels / "Gone.vra").string() + ": No such file or directory." + stays},
               {"Broken", ": The file is too short for an archive." + stays},
               {"Renamed",
                "This archive holds the level Valley, not Renamed. Give the file its "
                "own name back to open it."}};
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  SetHeight(10, 10, 99);
  editor.levelModified = true;
  camera.position.Set(300, 80, 400);
  for (const auto& [level, reason] : cases) {
    SCOPED_TRACE(level);
    AnswerDialogs(level);
    scripted::script.answers = {PromptAnswer::Ok};
    EXPECT_FALSE(OpenLevel());
    EXPECT_THAT(scripted::script.prompts.back().text, HasSubstr(reason));
    EXPECT_TRUE(editor.levelLoaded && editor.levelModified);
    EXPECT_EQ(modConfig.LevelName, "Island");
    EXPECT_EQ(camera.position, (Vector3{300, 80, 400}));
    EXPECT_FLOAT_EQ(terrain.grid[10][10].h, 99);
  }
  EXPECT_EQ(ReadBytes(levels / "Renamed.vra"), renamed);
  ASSERT_TRUE(SaveLevel());
  EXPECT_EQ(MemberOnDisk("Island", "heightmap.raw")[(10 * 256 + 256 - 10) * 2 + 1], 99);
}

TEST_F(LevelTest, OpeningThatFailsLaterLeavesAnEmptyEditorAndTheArchiveUntouched) {
  MakeLevel("Huge", 2048, 8192);
  const Bytes huge = ReadBytes(folder / "Mods/varnhold/Archives/varnhold/levels/Huge.vra");
  bool isOpen = false;
  shell.setLevelOpen = [&isOpen](bool open) { isOpen = open; };
  AnswerDialogs("Island");
  ASSERT_TRUE(OpenLevel());
  EXPECT_TRUE(isOpen);
  SetMaterial(5, 10, 10);
  editor.levelModified = true;
  AnswerDialogs("Huge");
  scripted::script.answers = {PromptAnswer::Ok};
  EXPECT_FALSE(OpenLevel());
  ASSERT_EQ(scripted::script.prompts.size(), 1u);
  EXPECT_EQ(scripted::script.prompts[0].text,
            "The terrain size of this level is not supported (2048 samples over 8192 units).\n\n"
            "No level is open.");
  EXPECT_EQ(ReadBytes(folder / "Mods/varnhold/Archives/varnhold/levels/Huge.vra"), huge);
  EXPECT_FALSE(isOpen || editor.levelLoaded || editor.levelModified || LevelArchive());
  EXPECT_EQ(modConfig.LevelName, "");
  EXPECT_EQ(modConfig.MaterialSize, 512) << "the mod's";
  EXPECT_FLOAT_EQ(terrain.grid[10][10].h, kFlatHeight);
  EXPECT_GT(camera.position.y, kFlatHeight * modConfig.HeightScale);
  EXPECT_EQ(materialMapper->grid[10][10], 0u);
  EXPECT_EQ(terrain.miniMap.grey, MiniMapPicture{}.grey);
  SetEditMode(EditMode::TerrainMapper);
  terrain.tool = TerrainTool::Flatten;
  RouteMouse(MouseButton::Left, MouseEvent::Press, 10, 10);
  RouteKey('Z', true);
  EXPECT_FALSE(editor.leftHeld) << "there is nothing to edit";
  EXPECT_EQ(terrain.tool, TerrainTool::Flatten);
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
  EXPECT_FLOAT_EQ(terrain.grid[100][100].h, 127);
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
    hooks.diskFault = [&](const DiskChange&) -> std::optional<DiskFault> {
      if (change++ == failing) return DiskFault{ENOSPC, 1};
      return std::nullopt;
    };
    scripted::script.answers = {PromptAnswer::Ok};
    const bool saved = SaveLevel();
    hooks.diskFault = nullptr;
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
  const std::string folderBefore = openLevel.folder.String();
  const auto membersBefore = LevelArchive()->Entries().size();
  RunStockLevelLoad();
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_EQ(openLevel.folder, folderBefore);
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
