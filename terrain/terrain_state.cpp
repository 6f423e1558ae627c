#include "terrain/terrain_state.h"

#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"

namespace mw {

Terrain terrain;
std::unique_ptr<MaterialMapper> materialMapper;
LevelTextures levelTextures;

void ResetTerrainState() {
  terrain = Terrain{};
  materialMapper.reset();
  levelTextures = LevelTextures{};
}

}  // namespace mw
