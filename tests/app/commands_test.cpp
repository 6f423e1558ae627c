#include "app/commands.h"

#include <gmock/gmock.h>
#include <set>

#include "app/command_table.h"
#include "app/shell_fixture.h"
#include "app/start_up.h"

namespace mw {
namespace {

using scripted::script;
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
  Do("choose a mod", [] { return shell.selectMod(true); }, {PromptAnswer::Ok});
  Do("welcome", RunWelcomeLoop, {PromptAnswer::Ok});
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

TEST_F(CommandsTest, TheMenuWarnsBeforeARandomTerrainWithWaterReplacesTheOld) {
  shell.randomTerrainDialog = [] { return RandomTerrainParameters{}; };
  editor.levelHasWater = false;  // as a level of an earlier run of the program
  SetInitialValues();
  modConfig.WaterLevel = 0;
  for (const PromptAnswer answer : {PromptAnswer::Cancel, PromptAnswer::Ok}) {
    const bool agreed = answer == PromptAnswer::Ok;
    Do("random terrain", [] { RunCommand(kCommandRandomTerrain); }, {answer});
    EXPECT_EQ(editor.levelModified, agreed);
    EXPECT_EQ(terrain.grid[100][100].h != kFlatHeight, agreed);
    EXPECT_EQ(modConfig.WaterLevel > 0, agreed);
  }
}

TEST_F(CommandsTest, OldGamesAreRefusedForThreeGenerations) {
  shell.terrainShadowsDialog = [this] { return Tell("the shadow dialog"), true; };
  editor.levelModified = true;  // and would have to be saved first
  for (const CommandId id :
       {kCommandGenerateShadows, kCommandMergeLightmaps, kCommandGenerateObjectLightmaps}) {
    for (const auto& [version, answer] :
         {std::pair{"1.01.100", PromptAnswer::Ok}, {"1.04.000", PromptAnswer::No}}) {
      editor.installedGameVersion = ParseGameVersion(version);
      Do(version, [id] { RunCommand(id); }, {answer});
    }
  }
}

TEST_F(CommandsTest, WhatReplacesTheLevelAsksOnlyWhenSomethingChangedAndGoesBackOnCancel) {
  shell.closeMainWindow = [this] { Tell("closed"); };
  const auto run = [](CommandId id) { return [id] { RunCommand(id); }; };
  Do("exit without edits", run(kCommandExit));
  editor.levelLoaded = false;
  editor.levelModified = true;
  Do("exit without a level", run(kCommandExit));
  editor.levelLoaded = true;
  Do("exit without saving", run(kCommandExit), {PromptAnswer::No});
  for (const CommandId id : {kCommandExit, kCommandNewLevel, kCommandOpenLevel}) {
    Do("save, which fails", run(id), {PromptAnswer::Yes, PromptAnswer::Ok});
    Do("cancel", run(id), {PromptAnswer::Cancel});
  }
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(CommandsTest, HelpOpensThePagesOfTheWorkingFolderAndSaysWhenItCannot) {
  Do("guide", [] { RunCommand(kCommandUsersGuide); });
  script.documentsOpen = false;
  Do("tutorial", [] { RunCommand(kCommandTutorial); });
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
  Do("without files", LoadPlugins, {PromptAnswer::Ok});
  script.missingModules.clear();
  Do("without a function", LoadPlugins, {PromptAnswer::Ok});
  script.missingFunctions.clear();
  Do("with all", LoadPlugins);
  UnloadPlugins();
}

}  // namespace
}  // namespace mw
