#include "data/data_state.h"

#include "data/archive.h"
#include "data/mod_config.h"
#include "data/mods.h"
#include "data/open_level.h"
#include "data/textures.h"

namespace mw {

ArchiveList archives;
ModConfig modConfig;
ModList modList;
OpenedLevel openLevel;
TextureSet textureSet;

void ResetDataState() {
  archives = ArchiveList{};
  modConfig = ModConfig{};
  modList = ModList{};
  openLevel = OpenedLevel{};
  textureSet = TextureSet{};
}

}  // namespace mw
