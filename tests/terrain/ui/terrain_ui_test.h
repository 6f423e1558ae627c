// A landscape of 512 samples, and texture sets in the game's folder.
#pragma once

#include "app/story.h"
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

namespace mw {

struct TerrainUiTest : StoryTest {
  TerrainUiTest() {
    ResetDataState();
    ResetTerrainState();
    MakeLandscape(512);
    CreateMaterialMapper();
    editor.textureSetName = "Default";
    for (const char* name : {"", "Winter", "Default", "old.set"})
      CreateFolder(std::string("TextureSets/") + name);
    EXPECT_TRUE(WriteWholeFile("TextureSets/Winter/index.dat", "Texture=2,Snow,snow.bmp\n"));
  }
  ~TerrainUiTest() override {
    ResetTerrainState();
    ResetDataState();
  }
};

}  // namespace mw
