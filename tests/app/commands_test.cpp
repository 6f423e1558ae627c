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
