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
