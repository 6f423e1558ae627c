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

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

using ModsTest = ModSandboxTest;

TEST_F(ModsTest, FindsTheConfigurationsButNotTheTemplate) {
  for (const char* file : {"mpwr.cfg", "winter.cfg", "Desert.CFG", "notes.txt"}) Write(file, "");
  FindMods();
  EXPECT_THAT(modList.names, ElementsAre("Desert", "winter"));
  EXPECT_EQ(modList.current, -1);
}

TEST_F(ModsTest, ListsAtMost64ModsAndSaysSo) {
  for (int i = 0; i < 65; ++i) Write("mod" + std::to_string(100 + i) + ".cfg", "");
  scripted::script.answers = {PromptAnswer::Ok};
  FindMods();
  EXPECT_EQ(modList.names.size(), kMaxMods);
  EXPECT_THAT(scripted::script.prompts.at(0).text, HasSubstr("64"));
}

TEST_F(ModsTest, SelectingAModOpensItsArchivesInOrderAndClosesThoseBefore) {
  WriteMod("winter");
  WriteMod("desert");
  FindMods();
  ASSERT_TRUE(SelectMod(1));
  EXPECT_EQ(CurrentModName(), "winter");
  const std::string winter = GameFolder() + "Mods\\winter\\Archives\\";
  EXPECT_THAT(OpenArchivePaths(), ElementsAre(winter + "objects.vra", winter + "standardMesh.vra",
                                              winter + "treeMesh.vra", winter + "texture.vra"));
  EXPECT_FALSE(archives.At(0)->Writable());
  EXPECT_EQ(catalogueLoads, 1);

  ASSERT_TRUE(SelectMod(1));
  EXPECT_EQ(catalogueLoads, 1) << "the current mod is not loaded again";
  ASSERT_TRUE(SelectMod(0));
  EXPECT_THAT(OpenArchivePaths(), ::testing::Each(HasSubstr("\\desert\\")));
  EXPECT_EQ(archives.Count(), 4u);
}

TEST_F(ModsTest, AModWhoseConfigurationIsGoneLeavesTheOneBeforeCurrent) {
  WriteMod("desert");
  WriteMod("winter");
  FindMods();
  ASSERT_TRUE(SelectMod(0));
  DeleteDiskFile("winter.cfg");
  scripted::script.answers = {PromptAnswer::Ok};
  EXPECT_FALSE(SelectMod(1));
  EXPECT_EQ(scripted::script.prompts.at(0).text, "Can't load winter.cfg");
  EXPECT_EQ(CurrentModName(), "desert");
  EXPECT_EQ(modList.current, 0);
  EXPECT_EQ(archives.Count(), 4u);
}

TEST_F(ModsTest, MissingContentIsListedInOneMessage) {
  WriteMod("winter");
  FindMods();
  ASSERT_TRUE(SelectMod(0));
  WarnOfMissingContent();
  EXPECT_THAT(scripted::script.prompts, IsEmpty());

  const std::string content = (folder / "Mods/winter/Archives/").string();
  DeleteDiskFile(content + "objects.vra");
  Write(content + "texture.vra", "damaged");
  DeleteDiskFile("TextureSets/Default/index.dat");
  modList.current = -1;
  ASSERT_TRUE(SelectMod(0));
  scripted::script.answers.assign(2, PromptAnswer::Ok);
  WarnOfMissingContent();
  for (const std::string& line : {content + "objects.vra: ", content + "texture.vra: ",
                                  std::string("TextureSets/Default/index.dat: ")}) {
    EXPECT_THAT(scripted::script.prompts.at(0).text, HasSubstr(line));
  }
  EXPECT_THAT(scripted::script.prompts.at(0).text, Not(HasSubstr("standardMesh")));

  Write("winter.cfg", "GamePath=\\nowhere\\\nObjectsPath=Mods\\x\n");
  modList.current = -1;
  ASSERT_TRUE(SelectMod(0));
  WarnOfMissingContent();
  EXPECT_THAT(scripted::script.prompts.at(1).text, HasSubstr("/nowhere: there is no such folder."));
}

TEST(ContentArchives, LieInTheArchivesFolderBesideTheirContent) {
  EXPECT_EQ(ContentArchivePath("C:\\Games\\", "Mods\\varnhold\\objects"),
            "C:\\Games\\Mods\\varnhold\\Archives\\objects.vra");
  EXPECT_EQ(ContentArchivePath("C:\\Games\\", "Mods/varnhold/objects/"),
            "C:\\Games\\Mods\\varnhold\\Archives\\objects.vra");
  EXPECT_EQ(ContentArchivePath("C:\\Games\\", "objects"), "C:\\Games\\Archives\\objects.vra");
  EXPECT_EQ(ContentArchivePath("C:\\Games\\", ""), "");
}

TEST_F(ModsTest, NewModNamesArePlain) {
  EXPECT_EQ(ModNameFromInput("My Mod!"), "My_Mod_");
  EXPECT_EQ(ModNameFromInput("Gr\xC3\xBCn"), "Gr_n") << "one character, one underscore";
  EXPECT_EQ(ModNameFromInput("..\\x"), "___x");
  EXPECT_EQ(ModNameFromInput(std::string(70, 'a')).size(), 62u);
}

TEST_F(ModsTest, ANewModIsACopyOfTheTemplate) {
  const std::string text = "// every byte\r\nGamePath=\nx\xFF";
  Write("mpwr.cfg", text);
  FindMods();
  ASSERT_TRUE(CreateMod("My Mod!"));
  EXPECT_EQ(Read("My_Mod_.cfg"), text);
  EXPECT_THAT(modList.names, ElementsAre("My_Mod_"));
}

TEST_F(ModsTest, ANameThatExistsOrNoTemplateMakesNoMod) {
  Write("Winter.cfg", "precious");
  scripted::script.answers.assign(4, PromptAnswer::Ok);
  EXPECT_FALSE(CreateMod("fresh"));
  EXPECT_THAT(scripted::script.prompts.back().text,
              HasSubstr("Can't read mpwr.cfg in the folder " + folder.string()));
  Write("mpwr.cfg", "");
  EXPECT_FALSE(CreateMod("winter"));
  EXPECT_EQ(scripted::script.prompts.back().text, "A mod with this name exists already.");
  EXPECT_EQ(scripted::script.prompts.back().caption, "Error");
  EXPECT_FALSE(CreateMod("mpwr"));
  EXPECT_FALSE(CreateMod(""));
  EXPECT_EQ(Read("Winter.cfg"), "precious");
  EXPECT_THAT(modList.names, IsEmpty());
}

TEST_F(ModsTest, ANewModKeepsTheNameAndSizesOfTheOpenLevel) {
  Write("mpwr.cfg", "LevelName=none\nMaterialSize=256\nWorldSize=1024\nHeightScale=0.6\n");
  modConfig.LevelName = "Island";
  modConfig.MaterialSize = 512;
  modConfig.WorldSize = 2048;
  editor.levelLoaded = true;
  ASSERT_TRUE(CreateMod("fresh"));
  ASSERT_TRUE(UseLastMod());
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_EQ(modConfig.MaterialSize, 512);
  EXPECT_EQ(modConfig.WorldSize, 2048);
  EXPECT_FLOAT_EQ(modConfig.HeightScale, 0.6f);

  editor.levelLoaded = false;
  ASSERT_TRUE(CreateMod("second"));
  ASSERT_TRUE(UseLastMod());
  EXPECT_EQ(modConfig.MaterialSize, 256);
}

TEST_F(ModsTest, TheLastModCannotBeDeleted) {
  WriteMod("winter");
  FindMods();
  scripted::script.answers = {PromptAnswer::Ok};
  EXPECT_FALSE(DeleteMod(0));
  EXPECT_EQ(scripted::script.prompts.at(0).text, "You must always have at least one mod.");
  EXPECT_TRUE(FileExists("winter.cfg"));
}

TEST_F(ModsTest, DeletingAsksRemovesOnlyTheConfigurationAndKeepsTheCurrentMod) {
  for (const char* name : {"a", "b", "c"}) WriteMod(name);
  FindMods();
  ASSERT_TRUE(SelectMod(1));
  scripted::script.answers = {PromptAnswer::Cancel, PromptAnswer::Ok};
  EXPECT_FALSE(DeleteMod(0));
  EXPECT_TRUE(DeleteMod(0));
  EXPECT_EQ(scripted::script.prompts.at(1).text, "Are you sure you want to delete the Mod \"a\"?");
  EXPECT_EQ(scripted::script.prompts.at(1).buttons, PromptButtons::OkCancel);
  EXPECT_FALSE(FileExists("a.cfg"));
  EXPECT_TRUE(FileExists("Mods\\a\\Archives\\objects.vra"));
  EXPECT_THAT(modList.names, ElementsAre("b", "c"));
  EXPECT_EQ(modList.current, 0) << "b is still current";
}

TEST_F(ModsTest, SettingsBecomeFoldersAScriptAndTheSavedGamePath) {
  WriteMod("winter");
  FindMods();
  ASSERT_TRUE(SelectMod(0));
  std::filesystem::create_directories(folder / "Other" / "Mods");
  scripted::script.answers = {PromptAnswer::No, PromptAnswer::Yes};
  EXPECT_FALSE(ApplyModSettings((folder / "Other").string(), "other.lst"));
  EXPECT_EQ(modConfig.GamePath, GameFolder()) << "its archives are missing";
  ASSERT_TRUE(ApplyModSettings((folder / "Other").string(), "other.lst"));
  EXPECT_EQ(modConfig.GamePath, GameFolder() + "Other\\");
  EXPECT_EQ(modConfig.ObjectsList, "other.lst");
  EXPECT_TRUE(FolderExists("Other\\Mods\\winter\\Archives\\varnhold\\levels"));
  EXPECT_THAT(Read("winter.cfg"), HasSubstr("GamePath=" + GameFolder() + "Other\\\n"));
  EXPECT_THAT(Read("winter.cfg"), ::testing::Not(HasSubstr("other.lst")));
  EXPECT_EQ(catalogueLoads, 2);
  EXPECT_EQ(HeldContentArchives()[0], GameFolder() + "Other\\Mods\\winter\\Archives\\objects.vra");
}

TEST_F(ModsTest, AGamePathThatNoConfigurationCanHoldIsRefused) {
  WriteMod("winter");
  FindMods();
  ASSERT_TRUE(SelectMod(0));
  const std::string before = Read("winter.cfg");
  scripted::script.answers.assign(3, PromptAnswer::Ok);
  for (const std::string& path :
       {std::string("/games/a=b"), std::string(245, 'x'), std::string()}) {
    EXPECT_FALSE(ApplyModSettings(path, "")) << path;
  }
  EXPECT_EQ(Read("winter.cfg"), before);
  EXPECT_EQ(modConfig.GamePath, GameFolder());
}

TEST_F(ModsTest, TheLongestGamePathIsReadBackWhole) {
  Write("winter.cfg", "GamePath=x\r\n");
  ModConfig saved, loaded;
  saved.GamePath = std::string(kMaxSavedGamePath - 1, 'x') + "\\";
  ASSERT_TRUE(SaveModGamePath("winter", saved));
  ASSERT_TRUE(ParseModConfig("winter", loaded));
  EXPECT_EQ(loaded.GamePath, saved.GamePath.View());
}

TEST_F(ModsTest, SavingTheGamePathKeepsEveryOtherByte) {
  Write("winter.cfg", "//GamePath=a\r\nGamePath=b\r\nTeam=\xE4/x/y\nGamePath2\n" +
                          std::string(600, 'l') + "\r\n\nlast");
  ModConfig config;
  config.GamePath = "C:\\New\\";
  ASSERT_TRUE(SaveModGamePath("winter", config));
  EXPECT_EQ(Read("winter.cfg"),
            "//GamePath=a\r\nGamePath=C:\\New\\\r\nTeam=\xE4/x/y\nGamePath=C:\\New\\\n" +
                std::string(600, 'l') + "\r\n\nlast\n");
}

TEST_F(ModsTest, AnUnreadableOrUnwritableConfigurationIsReported) {
  scripted::script.answers.assign(2, PromptAnswer::Ok);
  EXPECT_FALSE(SaveModGamePath("gone", ModConfig{}));
  EXPECT_EQ(scripted::script.prompts.back().text, "Can't read gone.cfg");
  EXPECT_EQ(scripted::script.prompts.back().caption, "Error");
}

TEST_F(ModsTest, TheStartUpScriptIsWrittenOnceAsTheGameReadsIt) {
  std::filesystem::create_directories(folder / "Mods");
  CreateModFolders("winter", GameFolder());
  const std::string script = Read("Mods\\winter\\Init.con");
  std::string expected(ScriptHeader());
  expected +=
      "game.setCustomGameName winter\ngame.addModPath Mods/VARNHOLD/\n"
      "game.addModPath Mods/winter\ngame.setCustomGameVersion 1.0\n"
      "http://www.varnhold.example/\n"
      "Game.setMenuMusicFilename \"music/slaughter4.bik\"\n"
      "Game.setLoadMusicFilename \"music/vehicle4.bik\"\n"
      "Game.setWinMusicFilename \"music/vehicle3.bik\"\n"
      "Game.setLoseMusicFilename \"music/menu.bik\"\n"
      "Game.setCampaignLoseMusicFilename \"music/theme2.bik\"\n"
      "Game.setDebriefingMusicFilename \"music/briefing.bik\"\n";
  std::string stored;
  for (const char c : expected) stored += c == '\n' ? "\r\n" : std::string(1, c);
  EXPECT_EQ(script, stored);

  Write("Mods/winter/Init.con", "mine");
  CreateModFolders("winter", GameFolder());
  EXPECT_EQ(Read("Mods\\winter\\Init.con"), "mine");
}

TEST_F(ModsTest, AGameFolderWithoutModsIsReportedOnce) {
  scripted::script.answers = {PromptAnswer::Ok};
  CreateModFolders("winter", "C:\\nowhere\\");
  EXPECT_EQ(scripted::script.prompts.at(0).text,
            "Failed to create directory C:/nowhere/Mods/winter.  This will cause future problems."
            "  Please check your Mod configuration");
  EXPECT_EQ(scripted::script.prompts.at(0).caption, "Warning");
}

TEST_F(ModsTest, TheOpenLevelSurvivesAnotherModAndTheDeletionOfItsOwn) {
  WriteMod("desert");
  WriteMod("winter");
  FindMods();
  ASSERT_TRUE(SelectMod(1));
  modConfig.LevelName = "Island";
  modConfig.fogEnd = 700;
  editor.levelLoaded = true;
  openLevel.folder = GameFolder() + "Mods\\winter\\varnhold\\levels\\Island";
  const ModSnapshot before = TakeModSnapshot();

  ASSERT_TRUE(SelectMod(0));
  modConfig.LevelName = "Dunes";
  openLevel.folder = GameFolder() + "Mods\\desert\\varnhold\\levels\\Dunes";
  scripted::script.answers = {PromptAnswer::Ok};
  ASSERT_TRUE(DeleteMod(1));
  RestoreMod(before);

  EXPECT_EQ(CurrentModName(), "winter");
  EXPECT_EQ(modList.current, -1) << "its entry is gone";
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_EQ(modConfig.fogEnd, 700);
  EXPECT_EQ(openLevel.folder, GameFolder() + "Mods\\winter\\varnhold\\levels\\Island");
  EXPECT_THAT(OpenArchivePaths(), ::testing::Each(HasSubstr("\\winter\\")));
  EXPECT_EQ(catalogueLoads, 3);
}

TEST_F(ModsTest, GoingBackToTheSameModReopensNothing) {
  WriteMod("winter");
  FindMods();
  ASSERT_TRUE(SelectMod(0));
  const Archive* objects = archives.At(0);
  RestoreMod(TakeModSnapshot());
  EXPECT_EQ(archives.At(0), objects);
  EXPECT_EQ(catalogueLoads, 1);
}

TEST_F(ModsTest, TheOpenLevelFollowsTheGameFolder) {
  WriteMod("winter");
  FindMods();
  ASSERT_TRUE(SelectMod(0));
  editor.levelLoaded = true;
  openLevel.folder = GameFolder() + "Mods\\winter\\varnhold\\levels\\Island";
  std::filesystem::create_directories(folder / "Other" / "Mods");
  scripted::script.answers = {PromptAnswer::Yes};
  ASSERT_TRUE(ApplyModSettings(GameFolder() + "Other", ""));
  EXPECT_EQ(openLevel.folder, GameFolder() + "Other\\Mods\\winter\\varnhold\\levels\\Island");
}

TEST_F(ModsTest, ReloadingDropsTheLevelsSettingsButNotTheUsersChoices) {
  WriteMod("winter");
  FindMods();
  ASSERT_TRUE(SelectMod(0));
  modConfig.LevelName = "Island";
  modConfig.ObjectsList = "chosen.lst";
  modConfig.WaterLevel = 99;
  ASSERT_TRUE(ReloadModConfig());
  EXPECT_EQ(modConfig.LevelName, "Island");
  EXPECT_EQ(modConfig.ObjectsList, "chosen.lst");
  EXPECT_EQ(modConfig.WaterLevel, 20);
}

}  // namespace
}  // namespace mw
