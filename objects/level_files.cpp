#include "objects/level_files.h"

#include "data/level_settings.h"
#include "data/level_size.h"
#include "objects/static_objects.h"
#include "platform/prompts.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"

namespace mw {

bool ReadLevelFiles() {
  SetStatusText(1, "Loading Init Script...");
  ReadLevelSettings();
  if (!HasSupportedTerrainSize()) return false;
  SetStatusText(1, "Loading Surface Maps...");
  LoadLevelTextures(LevelTextureLoad::Opening);
  SetStatusText(1, "Loading Terrain...");
  InitGrid();
  LoadHeightsFromBuffer();
  SetStatusText(1, "Loading Material Map...");
  LoadMaterialMap();
  SetStatusText(1, "Loading Objects...");
  LoadStaticObjects();
  return true;
}

}  // namespace mw
