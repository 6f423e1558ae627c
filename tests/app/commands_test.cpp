#include "app/commands.h"

#include <gmock/gmock.h>
#include <set>

#include "app/command_table.h"
#include "app/shell_fixture.h"
#include "app/start_up.h"

namespace mw {
namespace {

using scripted::script;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class CommandsTest : public ShellTest {};

TEST_F(CommandsTest, EveryToolbarButtonHasATipAndEveryIdStandsOnce) {
  std::set<int> ids;
  for (const CommandSpec& spec : CommandTable()) EXPECT_TRUE(ids.insert(spec.id).second) << spec.id;
  for (const CommandId id : MainToolbar()) {
    if (id == kCommandNone) continue;
    const CommandSpec* spec = FindCommand(id);
    ASSERT_TRUE(spec) << id;
    EXPECT_FALSE(spec->toolTip.empty() || spec->icon.empty()) << id;
  }
}

TEST_F(CommandsTest, CommandsOpenTheirWindowsUnlessInputIsIgnored) {
  const std::pair<CommandId, WindowFunction<void()>*> rows[] = {
      {kCommandAddFile, &shell.addFileDialog},
      {kCommandLevelStatistics, &shell.levelStatisticsDialog},
      {kCommandSurfaceAssignments, &shell.surfaceAssignmentsDialog},
      {kCommandLightSettings, &shell.lightSettingsDialog},
      {kCommandFogSettings, &shell.fogSettingsDialog},
      {kCommandShadowSettings, &shell.shadowSettingsDialog},
      {kCommandWaterSettings, &shell.waterSettingsDialog},
      {kCommandAbout, &shell.aboutDialog},
      {kCommandCredits, &shell.creditsDialog},
      {kCommandFocusTree, &shell.focusTreePanel}};
  for (const auto& [id, window] : rows) {
    int opened = 0;
    *window = [&opened] { ++opened; };
    for (const bool ignored : {true, false}) {
      script.inputIgnored = ignored;
      RunCommand(id);
      EXPECT_EQ(opened, ignored ? 0 : 1) << id;
    }
  }
}

TEST_F(CommandsTest, WhatWorksOnALevelDoesNothingWithoutOne) {
  editor.levelLoaded = false;
  for (const CommandSpec& spec : CommandTable()) {
    if (NeedsLevel(spec.id)) RunCommand(spec.id);  // would say that it lacks its window
  }
  EXPECT_THAT(script.status[1], IsEmpty());
  EXPECT_FALSE(editor.pastePending || editor.levelModified);
}

TEST_F(CommandsTest, AWindowThatIsNotConnectedIsNoSuccess) {
  script.answers.assign(3, PromptAnswer::Ok);
  EXPECT_FALSE(shell.selectMod(true));
  EXPECT_EQ(shell.newLevelDialog(), std::nullopt);
  EXPECT_FALSE(RunWelcomeLoop());
  EXPECT_THAT(script.prompts.at(2).text, HasSubstr("could not be done"));
}

TEST_F(CommandsTest, ACommandOfAGroupChecksItsButtonAndNoOther) {
  const struct {
    CommandId id;
    bool (*isInEffect)();
  } rows[] = {{kCommandTexturedWireframe, [] { return editor.ShowGrid && editor.ShowTextures; }},
              {kCommandWireframe, [] { return editor.ShowGrid && !editor.ShowTextures; }},
              {kCommandTextured, [] { return !editor.ShowGrid && editor.ShowTextures; }},
              {kCommandCameraOnTerrain, [] { return editor.cameraMode == CameraMode::OnTerrain; }},
              {kCommandCameraTopDown, [] { return editor.cameraMode == CameraMode::TopDown; }},
              {kCommandCameraFly, [] { return editor.cameraMode == CameraMode::Fly; }},
              {kCommandObjectMapper, [] { return IsEditMode(EditMode::ObjectMapper); }},
              {kCommandMaterialMapper, [] { return IsEditMode(EditMode::MaterialMapper); }},
              {kCommandTerrainMapper, [] { return IsEditMode(EditMode::TerrainMapper); }}};
  for (const auto& row : rows) {
    checked.clear();
    RunCommand(row.id);
    EXPECT_TRUE(row.isInEffect()) << row.id;
    EXPECT_EQ(checked.size(), 3u) << "other groups are left alone";
    for (const auto& [id, on] : checked) EXPECT_EQ(on, id == row.id) << id;
  }
  for (const bool on : {true, false}) {
    RunCommand(kCommandReliefShading);
    EXPECT_TRUE(editor.ReliefShading == on && checked[kCommandReliefShading] == on);
  }
}

TEST_F(CommandsTest, MeshViewKeysWorkInTheObjectMapperOnly) {
  const std::pair<CommandId, ViewMode> rows[] = {
      {kCommandViewCollisionMesh, ViewMode::CollisionMesh},
      {kCommandViewDetailMesh, ViewMode::DetailMesh},
      {kCommandViewTexturedMesh, ViewMode::TexturedMesh},
      {kCommandViewBoundingBox, ViewMode::BoundingBox}};
  for (const auto& [id, view] : rows) {
    RunCommand(kCommandTerrainMapper);
    RunCommand(id);
    EXPECT_NE(objectStore.viewMode, view);
    RunCommand(kCommandObjectMapper);
    RunCommand(id);
    EXPECT_EQ(objectStore.viewMode, view);
  }
}

TEST_F(CommandsTest, TheMenuWarnsBeforeARandomTerrainReplacesTheOld) {
  shell.randomTerrainDialog = [] { return RandomTerrainParameters{}; };
  for (const bool agreed : {false, true}) {
    script.answers = {agreed ? PromptAnswer::Ok : PromptAnswer::Cancel};
    RunCommand(kCommandRandomTerrain);
    EXPECT_EQ(editor.levelModified, agreed);
    EXPECT_EQ(terrain.grid[100][100].h != kFlatHeight, agreed);
  }
}

TEST_F(CommandsTest, OldGamesAreRefusedForThreeGenerations) {
  bool asked = false;
  shell.terrainShadowsDialog = [&asked] { return asked = true; };
  editor.levelModified = true;  // and would have to be saved first
  for (const auto& [id, purpose] :
       {std::pair{kCommandGenerateShadows, "generate terrain shadows"},
        {kCommandMergeLightmaps, "merge terrain lightmaps"},
        {kCommandGenerateObjectLightmaps, "generate object lightmaps"}}) {
    editor.installedGameVersion = ParseGameVersion("1.01.100");
    script.answers = {PromptAnswer::Ok, PromptAnswer::No};
    RunCommand(id);
    EXPECT_EQ(script.prompts.back().text,
              std::string("The installed verion of Varnhold on your machine\nis 1.011.\n\nYou must "
                          "upgrade your version of Varnhold\nto 1.040 before being able to ") +
                  purpose + ".");
    EXPECT_EQ(script.prompts.back().caption, "Generation Error");
    EXPECT_EQ(asked, id != kCommandGenerateShadows);
    editor.installedGameVersion = ParseGameVersion("1.04.000");
    RunCommand(id);
    EXPECT_THAT(script.prompts.back().text, HasSubstr(std::string("In order to ") + purpose));
    EXPECT_TRUE(asked) << "an equal one passes";
  }
}

TEST_F(CommandsTest, WhatReplacesTheLevelAsksOnlyWhenSomethingChangedAndGoesBackOnCancel) {
  int closed = 0;
  shell.closeMainWindow = [&closed] { ++closed; };
  RunCommand(kCommandExit);
  editor.levelLoaded = false;
  editor.levelModified = true;
  RunCommand(kCommandExit);
  EXPECT_THAT(script.prompts, IsEmpty()) << "there is no level that could be saved";
  editor.levelLoaded = true;
  script.answers = {PromptAnswer::No};
  RunCommand(kCommandExit);
  EXPECT_EQ(script.prompts.at(0).text, "Would you like to save your changes before exiting?");
  EXPECT_EQ(closed, 3);
  for (const CommandId id : {kCommandExit, kCommandNewLevel, kCommandOpenLevel}) {
    script.answers = {PromptAnswer::Yes, PromptAnswer::Ok};
    RunCommand(id);
    EXPECT_TRUE(script.answers.empty()) << "asked, then told that saving failed";
    script.answers = {PromptAnswer::Cancel};
    RunCommand(id);
  }
  EXPECT_EQ(closed, 3);
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(CommandsTest, HelpOpensThePagesOfTheWorkingFolderAndSaysWhenItCannot) {
  RunCommand(kCommandUsersGuide);
  EXPECT_THAT(script.status[1], IsEmpty());
  script.documentsOpen = false;
  RunCommand(kCommandTutorial);
  EXPECT_THAT(script.openedDocuments, ElementsAre("guide.htm", "tutorial.htm"));
  EXPECT_THAT(script.status[1], ElementsAre("Could not open tutorial.htm."));
}

TEST_F(CommandsTest, VersionTexts) {
  const std::pair<const char*, float> rows[] = {
      {"1.04.000", 1.04f}, {"1.01.100", 1.011f}, {"1.4", 1.4f}, {"104", 104}, {"", 0}};
  for (const auto& [text, version] : rows) EXPECT_FLOAT_EQ(ParseGameVersion(text), version) << text;
  ReadInstalledVersion();
  EXPECT_FLOAT_EQ(editor.installedGameVersion, 1.011f) << "no record of an installed game";
  script.gameSettings["INSTALLEDVERSION"] = std::string(40, '9');
  ReadInstalledVersion();
  EXPECT_FLOAT_EQ(editor.installedGameVersion, 1.011f) << "too long to be one";
}

TEST_F(CommandsTest, PluginsThatAreMissingOrLackAnEntryPointAreNamed) {
  script.missingModules = {"mw_amm.mwp", "mw_smg.mwp"};
  script.missingFunctions = {"generateMatMap"};
  script.answers.assign(2, PromptAnswer::Ok);
  EXPECT_FALSE(LoadPlugins());
  EXPECT_EQ(script.prompts.at(0).text, "Unable to load plugin 'mw_smg.mwp'!");
  EXPECT_EQ(script.prompts[0].caption, "ERROR");
  script.missingModules.clear();
  EXPECT_FALSE(LoadPlugins());
  EXPECT_EQ(script.prompts.at(1).text,
            "The plugin 'mw_amm.mwp' cannot be used: it has no function 'generateMatMap'.");
  script.missingFunctions.clear();
  EXPECT_TRUE(LoadPlugins());
  UnloadPlugins();
}

TEST_F(CommandsTest, TheWelcomeDialogComesBackWhenNoLevelWasOpened) {
  std::vector<WelcomeChoice> choices{WelcomeChoice::OpenLevel, WelcomeChoice::NewLevel,
                                     WelcomeChoice::Close};
  std::size_t shown = 0;
  shell.welcomeDialog = [&](const auto&) { return choices.at(shown++); };
  shell.selectMod = [](bool) { return false; };
  EXPECT_FALSE(RunWelcomeLoop());
  EXPECT_EQ(shown, 3u);
}

}  // namespace
}  // namespace mw
