#include "app/level_parts.h"

#include "app/damaged_parts.h"
#include "core/editor_state.h"
#include "core/history.h"
#include "core/text.h"
#include "data/level_settings.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/mods.h"
#include "objects/level_files.h"
#include "objects/static_objects.h"
#include "objects/unknown_objects.h"
#include "platform/prompts.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

void ShowTerrainSize() {
  ShowPrompt(FormatText("The terrain size of this level is not supported (%i samples over %i "
                        "units).\n\nNo level is open.",
                        modConfig.MaterialSize, modConfig.WorldSize),
             "Error", PromptButtons::Ok, PromptIcon::Stop);
}

bool ReadLevelParts() {
  if (!ReadLevelFiles()) {
    ShowTerrainSize();
    return false;
  }
  NoteUnknownObjects();
  NoteDamagedRest();
  return true;
}

}  // namespace

bool LoadLevelParts() {
  ReloadModConfig();  // nothing of the level before stays
  BeginLoadReport();
  const bool read = ReadLevelParts();
  EndLoadReport();
  if (!read) return false;
  editor.levelLoaded = true;
  editor.levelModified = false;
  ClearHistory();
  SetStatusText(1, FormatText("Loaded level %s", modConfig.LevelName.c_str()));
  return true;
}

bool WriteLevelParts() {
  bool written = !MayWrite(LevelPart::HeightMap) || SaveHeightmap();
  written &= WriteLevelSettings();
  if (MayWrite(LevelPart::MaterialMap)) written &= SaveMaterialMap();
  written &= SaveStaticObjects();
  SetStatusText(1, "Saving Environment Maps...");
  written &= WriteTextureSetToLevel();
  return written;
}

bool WriteEditedParts() {
  bool written = SaveHeightmap();
  written &= WriteLevelSettings();
  written &= SaveMaterialMap();
  written &= SaveStaticObjects();
  return written;
}

}  // namespace mw
