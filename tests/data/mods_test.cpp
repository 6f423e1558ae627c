#include "data/mods.h"

#include <gmock/gmock.h>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/archive.h"
#include "data/content_archives.h"
#include "data/mod_files.h"
#include "data/mod_sandbox.h"
#include "data/open_level.h"
#include "data/script.h"
#include "platform/disk.h"
#include "support/golden.h"
#include "support/prompts.h"

namespace mw {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
constexpr auto kOk = PromptAnswer::Ok;

class ModsTest : public ModSandboxTest {
 protected:
  // A level of this mod is open.
  void OpenLevel(const std::string& mod) {
    modConfig.LevelName = "Island";
    editor.levelLoaded = true;
    openLevel.folder = GameFolder() + "Mods\\" + mod + "\\varnhold\\levels\\Island";
  }
};

TEST_F(ModsTest, FindsAtMost64ConfigurationsButNotTheTemplate) {
  for (const char* file : {"mpwr.cfg", "winter.cfg", "Desert.CFG", "notes.txt"}) Write(file, "");
  FindMods();
  EXPECT_THAT(modList.names, ElementsAre("Desert", "winter"));
  EXPECT_EQ(modList.current, -1);
  for (int i = 0; i < 62; ++i) Write("mod" + std::to_string(100 + i) + ".cfg", "");
  FindMods();
  ExpectPrompts({});
  Write("mod200.cfg", "");
  Answer({kOk, kOk});
  FindMods();
  EXPECT_EQ(modList.names.size(), 64u);
  EXPECT_FALSE(CreateMod("another"));
  ExpectPrompts({"Warning: There are more than 64 mods, the others are not listed.",
                 "Error: There is no room for more than 64 mods."});
}

TEST_F(ModsTest, SelectingAModOpensItsArchivesInOrderAndClosesThoseBefore) {
  UseMods({"desert", "winter"}, 1);
  EXPECT_EQ(CurrentModName(), "winter");
  const std::string winter = GameFolder() + "Mods\\winter\\Archives\\";
  EXPECT_THAT(OpenArchivePaths(), ElementsAre(winter + "objects.vra", winter + "standardMesh.vra",
                                              winter + "treeMesh.vra", winter + "texture.vra"));
  EXPECT_FALSE(archives.At(0)->Writable());
  EXPECT_EQ(catalogueLoads, 1);
  ASSERT_TRUE(SelectMod(1));
  EXPECT_EQ(catalogueLoads, 1) << "the current mod is not loaded again";
  ASSERT_TRUE(SelectMod(0));
  EXPECT_THAT(OpenArchivePaths(), Each(HasSubstr("\\desert\\")));
  for (const int none : {-1, 2}) EXPECT_FALSE(SelectMod(none));
  DeleteDiskFile("winter.cfg");
  Answer({kOk});
  EXPECT_FALSE(SelectMod(1));
  ExpectPrompts({"Error: Can't load winter.cfg"});
  EXPECT_EQ(CurrentModName(), "desert") << "the one before stays";
  EXPECT_EQ(modList.current, 0);
  EXPECT_EQ(archives.Count(), 4u);
}

TEST_F(ModsTest, MissingContentIsListedInOneMessage) {
  UseMods({"winter"}, 0);
  WarnOfMissingContent();
  ExpectPrompts({});

  const std::string content = (folder / "Mods/winter/Archives/").string();
  DeleteDiskFile(content + "objects.vra");
  Write(content + "texture.vra", "damaged");
  DeleteDiskFile("TextureSets/Default/index.dat");
  const auto selectAgain = [] {
    modList.current = -1;
    EXPECT_TRUE(SelectMod(0));
    Answer({kOk});
    WarnOfMissingContent();
  };
  selectAgain();
  const std::string none = ": No such file or directory\n";
  ExpectPrompts({"Warning: Not all content of the mod winter can be read:\n\n" + content +
                 "objects.vra" + none + content +
                 "texture.vra: The file is too short for an "
                 "archive\nTextureSets/Default/index.dat" +
                 none + "\nWhat is missing cannot be shown."});
  Write("winter.cfg", "GamePath=\\nowhere\\\nObjectsPath=Mods\\x\n");
  selectAgain();
  ExpectPrompts({"/nowhere: there is no such folder."});
}

TEST(ContentArchives, LieInTheArchivesFolderBesideTheirContent) {
  const std::string game = "C:\\Games\\", archive = game + "Mods\\varnhold\\Archives\\objects.vra";
  const std::pair<const char*, std::string> kRows[] = {{"Mods\\varnhold\\objects", archive},
                                                       {"Mods/varnhold/objects/", archive},
                                                       {"objects", game + "Archives\\objects.vra"},
                                                       {"", ""}};
  for (const auto& [path, expected] : kRows) EXPECT_EQ(ContentArchivePath(game, path), expected);
}

TEST_F(ModsTest, NewModNamesArePlain) {
  const std::pair<std::string, std::string> kRows[] = {
      {"My Mod!", "My_Mod_"},
      {"Gr\xC3\xBCn", "Gr_n"},  // one character, one underscore
      {"..\\x", "___x"},
      {"09AZaz/:@[`{", "09AZaz______"},
      {std::string(70, 'a'), std::string(62, 'a')}};
  for (const auto& [typed, name] : kRows) EXPECT_EQ(ModNameFromInput(typed), name);
}

TEST_F(ModsTest, ANewModIsACopyOfTheTemplateUnlessItsNameExists) {
  const std::string text = "// every byte\r\nGamePath=\nx\xFF";
  Write("Winter.cfg", "precious");
  std::filesystem::create_directories(folder / "folder.cfg");
  Answer({kOk, kOk, kOk, kOk, kOk});
  EXPECT_FALSE(CreateMod("fresh"));
  Write("mpwr.cfg", text);
  for (const char* name : {"winter", "mpwr", "", "folder"}) EXPECT_FALSE(CreateMod(name)) << name;
  const std::string here = " in the folder " + folder.string() + ":\n\n";
  const std::string exists = "Error: A mod with this name exists already.";
  ExpectPrompts({"Error: Can't read mpwr.cfg" + here + "No such file or directory", exists, exists,
                 "Error: Please enter a name for the mod.",
                 "Error: Can't write folder.cfg" + here + "Is a directory"});
  EXPECT_EQ(Read("Winter.cfg"), "precious");
  ASSERT_TRUE(CreateMod("My Mod!"));
  EXPECT_EQ(Read("My_Mod_.cfg"), text);
  EXPECT_THAT(modList.names, ElementsAre("My_Mod_"));
}

TEST_F(ModsTest, ANewModKeepsTheNameAndSizesOfTheOpenLevel) {
  EXPECT_FALSE(UseLastMod()) << "there is none";
  Write("mpwr.cfg", "LevelName=none\nMaterialSize=256\nWorldSize=1024\nHeightScale=0.6\n");
  modConfig.LevelName = "Island";
  modConfig.MaterialSize = 512;
  modConfig.WorldSize = 2048;
  editor.levelLoaded = true;
  ASSERT_TRUE(CreateMod("fresh") && UseLastMod());
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_EQ(modConfig.MaterialSize, 512);
  EXPECT_EQ(modConfig.WorldSize, 2048);
  EXPECT_FLOAT_EQ(modConfig.HeightScale, 0.6f);
  editor.levelLoaded = false;
  ASSERT_TRUE(CreateMod("second") && UseLastMod());
  EXPECT_EQ(modConfig.MaterialSize, 256);
  EXPECT_EQ(modList.current, 1);
}

TEST_F(ModsTest, DeletingAsksRemovesOnlyTheConfigurationAndKeepsTheCurrentMod) {
  UseMods({"a", "b", "c"}, 1);
  Answer({PromptAnswer::Cancel, kOk, kOk, kOk});
  EXPECT_FALSE(DeleteMod(0));
  EXPECT_TRUE(DeleteMod(0));
  EXPECT_FALSE(FileExists("a.cfg"));
  EXPECT_TRUE(FileExists("Mods\\a\\Archives\\objects.vra"));
  EXPECT_THAT(modList.names, ElementsAre("b", "c"));
  EXPECT_EQ(modList.current, 0) << "b is still current";
  for (const int none : {-1, 2}) EXPECT_FALSE(DeleteMod(none));
  EXPECT_TRUE(DeleteMod(0));
  EXPECT_EQ(modList.current, -1) << "the current one is gone";
  EXPECT_FALSE(DeleteMod(0));
  const std::string ask = "Warning: Are you sure you want to delete the Mod ";
  ExpectPrompts({ask + "\"a\"? [OkCancel]", ask + "\"a\"?", ask + "\"b\"?",
                 "Error: You must always have at least one mod."});
  EXPECT_TRUE(FileExists("c.cfg"));
}

TEST_F(ModsTest, SettingsBecomeFoldersAScriptAndTheSavedGamePath) {
  UseMods({"winter"}, 0);
  OpenLevel("winter");
  const std::string other = (folder / "Other").string();
  std::filesystem::create_directories(other + "/Mods");
  Answer({PromptAnswer::No, PromptAnswer::Yes});
  EXPECT_FALSE(ApplyModSettings(other, "other.lst"));
  EXPECT_EQ(modConfig.GamePath, GameFolder()) << "its archives are missing";
  ASSERT_TRUE(ApplyModSettings(other, "other.lst"));
  ExpectPrompts({"Warning: Content of the mod cannot be read in this game folder:\n\n",
                 "Do you want to use this folder all the same? [YesNo] (Exclamation)"});
  EXPECT_EQ(modConfig.GamePath, GameFolder() + "Other\\");
  EXPECT_EQ(openLevel.folder, GameFolder() + "Other\\Mods\\winter\\varnhold\\levels\\Island")
      << "the open level follows the game folder";
  EXPECT_EQ(modConfig.ObjectsList, "other.lst");
  EXPECT_TRUE(FolderExists("Other\\Mods\\winter\\Archives\\varnhold\\levels"));
  EXPECT_THAT(Read("winter.cfg"), HasSubstr("GamePath=" + GameFolder() + "Other\\\n"));
  EXPECT_THAT(Read("winter.cfg"), ::testing::Not(HasSubstr("other.lst")));
  EXPECT_EQ(catalogueLoads, 2);
  EXPECT_EQ(HeldContentArchives()[0], GameFolder() + "Other\\Mods\\winter\\Archives\\objects.vra");
}

TEST_F(ModsTest, ObjectListsLieInTheWorkingFolderButForTheChosenOne) {
  std::filesystem::create_directories(folder / "lists");
  for (const char* list : {"b.lst", "a.LST", "lists/mine.lst", "none.txt"}) Write(list, "");
  for (const char* chosen : {"a.LST", "lists\\gone.lst"}) {
    modConfig.ObjectsList = chosen;
    EXPECT_THAT(ObjectListChoices(), ElementsAre("a.LST", "b.lst")) << chosen;
  }
  modConfig.ObjectsList = "lists\\mine.lst";
  EXPECT_THAT(ObjectListChoices(), ElementsAre("a.LST", "b.lst", "lists\\mine.lst"));
}

TEST_F(ModsTest, AGamePathThatNoConfigurationCanHoldIsRefused) {
  UseMods({"winter"}, 0);
  const std::string before = Read("winter.cfg");
  Answer({kOk, kOk, kOk});
  for (const std::string& path :
       {std::string("/games/a=b"), std::string(kMaxSavedGamePath, 'x'), std::string()}) {
    EXPECT_FALSE(ApplyModSettings(path, "")) << path;
  }
  ExpectPrompts(
      {"Error: This game path cannot be kept in a mod configuration: "
       "it may have at most "
       "245 characters, and no \"=\".",
       "245 characters", "Error: Please enter the game path."});
  EXPECT_EQ(Read("winter.cfg"), before);
  EXPECT_EQ(modConfig.GamePath, GameFolder());
}

TEST_F(ModsTest, SavingTheGamePathKeepsEveryOtherByte) {
  const std::string rest = "\nTeam=\xE4/x/y\nGamePath=",
                    tail = std::string(600, 'l') + "\r\n\nlast";
  Write("winter.cfg", "//GamePath=a\r\nGamePath=b\r\nTeam=\xE4/x/y\nGamePath2\n" + tail);
  ModConfig saved, loaded;
  saved.GamePath = std::string(kMaxSavedGamePath - 1, 'x') + "\\";
  const std::string path = saved.GamePath.String();
  ASSERT_TRUE(SaveModGamePath("winter", saved));
  EXPECT_EQ(Read("winter.cfg"),
            "//GamePath=a\r\nGamePath=" + path + "\r" + rest + path + "\n" + tail + "\n");
  ASSERT_TRUE(ParseModConfig("winter", loaded));
  EXPECT_EQ(loaded.GamePath, path) << "the longest one is read back whole";
  Answer({kOk});
  EXPECT_FALSE(SaveModGamePath("gone", saved));
  ExpectPrompts({"Error: Can't read gone.cfg"});
}

TEST_F(ModsTest, TheStartUpScriptIsWrittenOnceAsTheGameReadsIt) {
  std::filesystem::create_directories(folder / "Mods");
  CreateModFolders("winter", GameFolder());
  ExpectGolden("data/mod_init.con", Read("Mods\\winter\\Init.con"));
  Write("Mods/winter/Init.con", "mine");
  CreateModFolders("winter", GameFolder());
  EXPECT_EQ(Read("Mods\\winter\\Init.con"), "mine");
  Answer({kOk});
  CreateModFolders("winter", "C:\\nowhere\\");
  ExpectPrompts(
      {"Warning: Failed to create directory C:/nowhere/Mods/winter.  "
       "This will cause "
       "future problems.  Please check your Mod configuration"});
}

TEST_F(ModsTest, TheOpenLevelSurvivesAnotherModAndTheDeletionOfItsOwn) {
  UseMods({"desert", "winter"}, 1);
  OpenLevel("winter");
  modConfig.fogEnd = 700;
  const Archive* const objects = archives.At(0);
  const ModSnapshot before = TakeModSnapshot();
  RestoreMod(before);
  EXPECT_EQ(archives.At(0), objects) << "the same mod is not opened again";
  ASSERT_TRUE(SelectMod(0));
  modConfig.LevelName = "Dunes";
  openLevel.folder = GameFolder() + "Mods\\desert\\varnhold\\levels\\Dunes";
  Answer({kOk});
  ASSERT_TRUE(DeleteMod(1));
  RestoreMod(before);
  EXPECT_EQ(CurrentModName(), "winter");
  EXPECT_EQ(modList.current, -1) << "its entry is gone";
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_EQ(modConfig.fogEnd, 700);
  EXPECT_EQ(openLevel.folder, GameFolder() + "Mods\\winter\\varnhold\\levels\\Island");
  EXPECT_THAT(OpenArchivePaths(), Each(HasSubstr("\\winter\\")));
  EXPECT_EQ(catalogueLoads, 3);
}

TEST_F(ModsTest, ReloadingDropsTheLevelsSettingsButNotTheUsersChoices) {
  UseMods({"winter"}, 0);
  modConfig.LevelName = "Island";
  modConfig.ObjectsList = "chosen.lst";
  modConfig.GamePath = "D:\\";
  modConfig.WaterLevel = 99;
  ASSERT_TRUE(ReloadModConfig());
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_EQ(modConfig.ObjectsList, "chosen.lst");
  EXPECT_EQ(modConfig.GamePath, "D:\\");
  EXPECT_EQ(modConfig.WaterLevel, 20);
}

}  // namespace
}  // namespace mw
