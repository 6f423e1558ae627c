#include "app/level_parts.h"

#include "app/operations.h"
#include "core/editor_state.h"
#include "core/text.h"
#include "data/level_settings.h"
#include "data/mod_config.h"
#include "data/mods.h"
#include "objects/object_store.h"
#include "platform/prompts.h"
#include "terrain/level_textures.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

bool TerrainSizeIsSupported() {
  const int samples = modConfig.MaterialSize;
  if ((samples == 256 || samples == 512 || samples == 1024) && modConfig.WorldSize >= samples) {
    return true;
  }
  ShowPrompt(FormatText("The terrain size of this level is not supported (%i samples over %i "
                        "units).\n\nNo level is open.",
                        samples, modConfig.WorldSize),
             "Error", PromptButtons::Ok, PromptIcon::Stop);
  return false;
}

void WriteTerrainParts() {
  SaveHeightmap();
  WriteLevelSettings();
  operations.saveMaterialMap();
}

}  // namespace

bool LoadLevelParts() {
  ReloadModConfig();  // nothing of the level before stays
  SetStatusText(1, "Loading Init Script...");
  ReadLevelSettings();
  if (!TerrainSizeIsSupported()) return false;
  SetStatusText(1, "Loading Surface Maps...");
  LoadLevelTextures(LevelTextureLoad::Opening);
  SetStatusText(1, "Loading Terrain...");
  InitGrid();
  LoadHeightsFromBuffer();
  SetStatusText(1, "Loading Material Map...");
  operations.loadMaterialMap();
  SetStatusText(1, "Loading Objects...");
  operations.loadStaticObjects();
  editor.levelLoaded = true;
  editor.levelModified = false;
  SetStatusText(1, FormatText("Loaded level %s", modConfig.LevelName.c_str()));
  return true;
}

void WriteLevelParts() {
  WriteTerrainParts();
  operations.saveStaticObjects();
  SetStatusText(1, "Saving Environment Maps...");
  WriteTextureSetToLevel();
}

void WriteEditedParts() {
  WriteTerrainParts();
  // What could not all be read is left to the level's own files, as saving does.
  if (!objectStore.loadedIncompletely) operations.saveStaticObjects();
}

}  // namespace mw
