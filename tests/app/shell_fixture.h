// A shell without windows for the tests of its logic: a small flat level that counts as open, an
// existing terrain, and a record of what the windows were told.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "app/operations.h"
#include "app/session.h"
#include "app/shell.h"
#include "core/editor_state.h"
#include "data/mod_config.h"
#include "support/sandbox.h"
#include "terrain/terrain.h"

namespace mw {

class ShellTest : public SandboxTest {
 protected:
  ShellTest() {
    ResetProgramState();
    operations = Operations{};
    modConfig.MaterialSize = 256;
    modConfig.WorldSize = 1024;
    modConfig.HeightScale = 0.5f;
    CreateTerrain();
    InitGrid();
    editor.viewReady = editor.levelLoaded = true;
    shell.setCommandChecked = [this](CommandId id, bool on) { checked[id] = on; };
    shell.setCommandEnabled = [this](CommandId id, bool on) { enabled[id] = on; };
  }
  ~ShellTest() override {
    ResetProgramState();
    operations = Operations{};
  }

  std::map<CommandId, bool> checked, enabled;
  std::vector<std::string> calls;  // what the test's own operations recorded
};

}  // namespace mw
