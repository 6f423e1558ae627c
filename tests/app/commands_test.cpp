#include "app/commands.h"

#include <gmock/gmock.h>
#include <set>

#include "app/command_table.h"
#include "app/shell_fixture.h"
#include "app/start_up.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CommandsTest : public ShellTest {};

TEST_F(CommandsTest, EveryToolbarButtonHasATipAndEveryIdStandsOnce) {
  std::set<int> ids;
  for (const CommandSpec& spec : CommandTable()) {
    EXPECT_TRUE(ids.insert(spec.id).second) << spec.caption;
  }
  for (const CommandId id : MainToolbar()) {
    if (id == kCommandNone) continue;
    const CommandSpec* spec = FindCommand(id);
    ASSERT_TRUE(spec) << id;
    EXPECT_FALSE(spec->toolTip.empty()) << spec->caption;
    EXPECT_FALSE(spec->icon.empty()) << spec->caption;
  }
}

TEST_F(CommandsTest, AGroupHasOneCheckedButton) {
  RunCommand(kCommandTexturedWireframe);
  RunCommand(kCommandTextured);
  EXPECT_TRUE(checked[kCommandTextured]);
  EXPECT_FALSE(checked[kCommandTexturedWireframe]);
  EXPECT_FALSE(checked[kCommandWireframe]);
  EXPECT_FALSE(checked.contains(kCommandCameraFly)) << "other groups are left alone";
  EXPECT_FALSE(editor.ShowGrid);
  EXPECT_TRUE(editor.ShowTextures);
}

TEST_F(CommandsTest, TheMenuWarnsBeforeARandomTerrainReplacesTheOld) {
  operations.randomTerrain = [this](bool askFirst) {
    calls.emplace_back(askFirst ? "ask" : "do not ask");
    return true;
  };
  RunCommand(kCommandRandomTerrain);
  EXPECT_THAT(calls, ElementsAre("ask"));
}

TEST_F(CommandsTest, OldGamesAreRefusedForThreeGenerations) {
  operations.openShadowDialog = [this] { calls.emplace_back("shadows"); };
  operations.mergeTerrainLightmaps = [this] { calls.emplace_back("merge"); };
  operations.generateObjectLightmaps = [this] { calls.emplace_back("objects"); };
  editor.installedGameVersion = ParseGameVersion("1.01.100");
  scripted::script.answers.assign(3, PromptAnswer::Ok);
  RunCommand(kCommandGenerateShadows);
  RunCommand(kCommandMergeLightmaps);
  RunCommand(kCommandGenerateObjectLightmaps);
  EXPECT_THAT(calls, IsEmpty());
  ASSERT_EQ(scripted::script.prompts.size(), 3u);
  EXPECT_EQ(scripted::script.prompts[1].text,
            "The installed verion of Varnhold on your machine\nis 1.011.\n\nYou must upgrade your "
            "version of Varnhold\nto 1.040 before being able to merge terrain lightmaps.");
  EXPECT_EQ(scripted::script.prompts[1].caption, "Generation Error");

  editor.installedGameVersion = ParseGameVersion("1.04.000");
  RunCommand(kCommandGenerateShadows);
  RunCommand(kCommandMergeLightmaps);
  RunCommand(kCommandGenerateObjectLightmaps);
  EXPECT_THAT(calls, ElementsAre("shadows", "merge", "objects")) << "equal passes";
}

TEST_F(CommandsTest, ExitAsksOnlyWhenSomethingChanged) {
  shell.closeMainWindow = [this] { calls.emplace_back("close"); };
  RunCommand(kCommandExit);
  editor.levelLoaded = false;
  editor.levelModified = true;
  RunCommand(kCommandExit);
  EXPECT_THAT(scripted::script.prompts, IsEmpty()) << "there is no level that could be saved";
  editor.levelLoaded = true;
  scripted::script.answers = {PromptAnswer::No};
  RunCommand(kCommandExit);
  EXPECT_THAT(calls, ElementsAre("close", "close", "close"));
  ASSERT_EQ(scripted::script.prompts.size(), 1u);
  EXPECT_EQ(scripted::script.prompts[0].text,
            "Would you like to save your changes before exiting?");
}

TEST_F(CommandsTest, CancelOrAFailedSaveGoesBack) {
  shell.closeMainWindow = [this] { calls.emplace_back("close"); };
  operations.newLevel = [this] { return calls.emplace_back("new"), true; };
  editor.levelLoaded = editor.levelModified = true;
  for (const CommandId id : {kCommandExit, kCommandNewLevel, kCommandOpenLevel}) {
    scripted::script.answers = {PromptAnswer::Yes, PromptAnswer::Ok};
    RunCommand(id);
    EXPECT_TRUE(scripted::script.answers.empty()) << "asked, then told that saving failed";
    scripted::script.answers = {PromptAnswer::Cancel};
    RunCommand(id);
    EXPECT_EQ(scripted::script.prompts.back().buttons, PromptButtons::YesNoCancel);
  }
  EXPECT_THAT(calls, IsEmpty());
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(CommandsTest, MeshViewKeysWorkInTheObjectMapperOnly) {
  operations.objectToolbarCommand = [this](CommandId id) { calls.push_back(std::to_string(id)); };
  RunCommand(kCommandTerrainMapper);
  RunCommand(kCommandViewBoundingBox);
  RunCommand(kCommandObjectMapper);
  RunCommand(kCommandViewBoundingBox);
  EXPECT_THAT(calls, ElementsAre("4005"));
}

TEST_F(CommandsTest, WhatWorksOnALevelDoesNothingWithoutOne) {
  editor.levelLoaded = false;
  const auto note = [this] { calls.emplace_back("done"); };
  for (Operations::Action* const operation :
       {&operations.copy, &operations.importHeightmap, &operations.exportHeightmap,
        &operations.generateMaterialMap, &operations.testLevel, &operations.generateInGameMap,
        &operations.snapAllToGround, &operations.levelStatistics, &operations.lightSettings,
        &operations.waterSettings, &shell.addFileDialog, &operations.openSurfaceAssignments}) {
    *operation = note;
  }
  operations.generateSurfaceMaps = [note] { return note(), true; };
  for (const CommandSpec& spec : CommandTable()) {
    if (NeedsLevel(spec.id)) RunCommand(spec.id);
  }
  EXPECT_THAT(calls, IsEmpty());
  EXPECT_THAT(scripted::script.prompts, IsEmpty());
}

TEST_F(CommandsTest, HelpOpensThePagesOfTheWorkingFolderAndSaysWhenItCannot) {
  RunCommand(kCommandUsersGuide);
  EXPECT_THAT(scripted::script.status[1], IsEmpty());
  scripted::script.documentsOpen = false;
  RunCommand(kCommandTutorial);
  EXPECT_THAT(scripted::script.openedDocuments, ElementsAre("guide.htm", "tutorial.htm"));
  EXPECT_THAT(scripted::script.status[1], ElementsAre("Could not open tutorial.htm."));
}

TEST_F(CommandsTest, VersionTexts) {
  EXPECT_FLOAT_EQ(ParseGameVersion("1.04.000"), 1.04f);
  EXPECT_FLOAT_EQ(ParseGameVersion("1.01.100"), 1.011f);
  EXPECT_FLOAT_EQ(ParseGameVersion("1.4"), 1.4f);
  EXPECT_FLOAT_EQ(ParseGameVersion("104"), 104);
  EXPECT_FLOAT_EQ(ParseGameVersion(""), 0);
  ReadInstalledVersion();
  EXPECT_FLOAT_EQ(editor.installedGameVersion, 1.011f) << "no record of an installed game";
  scripted::script.gameSettings["INSTALLEDVERSION"] = std::string(40, '9');
  ReadInstalledVersion();
  EXPECT_FLOAT_EQ(editor.installedGameVersion, 1.011f) << "too long to be one";
}

TEST_F(CommandsTest, PluginsThatAreMissingOrLackAnEntryPointAreNamed) {
  scripted::script.missingModules = {"mw_amm.mwp", "mw_smg.mwp"};
  scripted::script.missingFunctions = {"generateMatMap"};
  scripted::script.answers.assign(2, PromptAnswer::Ok);
  EXPECT_FALSE(LoadPlugins());
  scripted::script.missingModules.clear();
  EXPECT_FALSE(LoadPlugins());
  ASSERT_EQ(scripted::script.prompts.size(), 2u);
  EXPECT_EQ(scripted::script.prompts[0].text, "Unable to load plugin 'mw_smg.mwp'!");
  EXPECT_EQ(scripted::script.prompts[0].caption, "ERROR");
  EXPECT_EQ(scripted::script.prompts[1].text,
            "The plugin 'mw_amm.mwp' cannot be used: it has no function 'generateMatMap'.");
  scripted::script.missingFunctions.clear();
  EXPECT_TRUE(LoadPlugins());
  UnloadPlugins();
}

TEST_F(CommandsTest, TheWelcomeDialogComesBackUntilALevelIsOpen) {
  std::vector<WelcomeChoice> choices{WelcomeChoice::OpenLevel, WelcomeChoice::NewLevel,
                                     WelcomeChoice::NewLevel};
  std::size_t shown = 0;
  shell.welcomeDialog = [&] { return choices.at(shown++); };
  operations.newLevel = [&] { return shown == 3; };
  EXPECT_TRUE(RunWelcomeLoop());
  EXPECT_EQ(shown, 3u);
}

}  // namespace
}  // namespace mw
