// A landscape of 512 samples with both toolbars over it, and texture sets in the game's folder.
#pragma once

#include <QAction>
#include <QToolBar>
#include <stdexcept>

#include "bench/plain/terrain_scene.h"
#include "core/editor_state.h"
#include "data/data_state.h"
#include "data/mod_config.h"
#include "platform/disk.h"
#include "support/test.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"
#include "terrain/terrain.h"
#include "terrain/terrain_state.h"
#include "terrain/ui/material_toolbar.h"
#include "terrain/ui/terrain_toolbar.h"

namespace mw {

// What the toolbars show when they are made.
struct TerrainInSandbox : SandboxTest {
  TerrainInSandbox() {
    ResetDataState();
    ResetTerrainState();
    MakeLandscape(512);
    CreateMaterialMapper();
    editor.textureSetName = "Default";
    for (const char* name : {"", "Winter", "Default", "old.set"})
      CreateFolder(std::string("TextureSets/") + name);
    EXPECT_TRUE(WriteWholeFile("TextureSets/Winter/index.dat", "Texture=2,Snow,snow.bmp\n"));
  }
  ~TerrainInSandbox() override {
    ResetTerrainState();
    ResetDataState();
  }
};

class TerrainUiTest : public TerrainInSandbox {
 protected:
  static QAction& Button(const QToolBar& toolbar, const QString& toolTip) {
    for (QAction* action : toolbar.actions()) {
      if (action->toolTip() == toolTip) return *action;
    }
    throw std::logic_error(toolTip.toStdString());
  }
  template <typename Widget>
  static Widget& Setting(const QToolBar& toolbar, const char* name) {
    auto* const widget = toolbar.findChild<Widget*>(name);
    if (!widget) throw std::logic_error(name);
    return *widget;
  }

  TerrainToolbar terrainToolbar{nullptr};
  MaterialToolbar materialToolbar{nullptr};
};

}  // namespace mw
