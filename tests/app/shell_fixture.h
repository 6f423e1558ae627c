// A shell without windows for the tests of its logic: a small flat level that counts as open, an
// existing terrain, and a record of what the windows were told. Dialogs are not connected: one that
// opens unexpectedly fails the test.
#pragma once

#include <map>

#include "app/session.h"
#include "app/shell.h"
#include "app/story.h"
#include "core/editor_state.h"
#include "core/game_random.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"

namespace mw {

class ShellTest : public StoryTest {
 protected:
  ShellTest() {
    ResetProgramState();
    SeedGameRandom(1);
    modConfig.MaterialSize = 256;
    modConfig.WorldSize = 1024;
    modConfig.HeightScale = 0.5f;
    CreateTerrain();
    CreateMaterialMapper();
    InitGrid();
    editor.viewReady = editor.levelLoaded = true;
    shell.setCommandChecked = [](CommandId, bool) {};
    shell.setCommandEnabled = [this](CommandId id, bool on) { enabled[id] = on; };
    shell.setLevelOpen = [](bool) {};
    shell.showUndoSteps = [](const auto&, const auto&, bool) {};
    shell.showModeToolbar = [](EditMode) {};
    shell.showMiniMap = [] {};
    shell.mainWindowActive = shell.viewHasFocus = [] { return true; };
    shell.focusView = [] {};
    shell.renderFrameNow = [this] { ++frames; };
  }
  ~ShellTest() override {
    DestroyMaterialMapper();
    DestroyTerrain();
    ResetProgramState();
  }

  std::map<CommandId, bool> enabled;
  int frames = 0;
};

}  // namespace mw
