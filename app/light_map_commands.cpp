#include "app/light_map_commands.h"

#include <functional>
#include <string>

#include "app/level.h"
#include "app/undo.h"
#include "core/editor_state.h"
#include "core/text.h"
#include "data/game_file.h"
#include "data/mod_config.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "platform/processes.h"
#include "platform/prompts.h"
#include "terrain/level_textures.h"
#include "terrain/shadow_work.h"
#include "terrain/surface_maps.h"

namespace mw {
namespace {

bool Confirm(const char* question, const char* caption, PromptIcon icon) {
  return ShowPrompt(question, caption, PromptButtons::YesNo, icon) == PromptAnswer::Yes;
}

// Each asks when the level has already what is to be written.
bool MayReplaceShadows() {
  return !HasShadowBits() ||
         ConfirmReplacing("This will replace the terrain shadows of the level.");
}

bool MayReplaceTiles() {
  const int count = CountTilesInLevel(TilesToTrace());
  return count == 0 || ConfirmReplacing(FormatText(
                           "This will replace %i surface %s of the level by %s with "
                           "shadows.",
                           count, count == 1 ? "map" : "maps", count == 1 ? "one" : "those"));
}

bool MayReplaceObjectLightMaps() {
  return !HasObjectLightMaps() ||
         ConfirmReplacing("This will replace object light maps of the level.");
}

// The game reads the level as it is on disk. False when the command is not to go on.
bool IsReadyForTheGame(const char* question) {
  if (!editor.levelLoaded) return false;
  if (!editor.levelModified) return true;
  return Confirm(question, "Save?", PromptIcon::Information) && SaveLevel();
}

// Writes the group, and shows what could not be written; true when nothing failed.
bool WriteOrReport(const std::function<bool()>& write) {
  const std::string failure = WriteAsOneChange(write);
  if (failure.empty()) return true;
  ShowArrowCursor();
  SetStatusText(1, "");
  ShowPrompt(failure, "Error", PromptButtons::Ok, PromptIcon::Stop);
  return false;
}

// Runs the game's program on the scratch folder. `task` is the switch, `argument` follows the
// level's path in the same quotes. A closing backslash belongs to the path, not to the quote. What
// comes out goes into the open level, so meanwhile the user cannot open another or change this one,
// only cancel.
ProcessEnd RunTracer(const char* task, const char* argument, const char* title,
                     const std::string& activity) {
  const UndoPause pause;
  const char* const game = modConfig.GamePath.c_str();
  return RunCancellableProcess(
      FormatText("\"%svarnhold.exe\" +workingFolder \"%sShadowWork\\\" +%s "
                 "\"varnhold\\levels\\%s\\%s\"",
                 game, game, task, modConfig.LevelName.c_str(), argument),
      game, title, activity);
}

std::string CountOfTiles() {
  const auto count = static_cast<int>(TilesToTrace().size());
  return FormatText("%i %s", count, count == 1 ? "tile" : "tiles");
}

// Takes the lighting scripts back that were written for the game; nothing else of the level has
// been touched then.
void ShowCancelled(const char* text, const LightingScripts& scriptsBefore) {
  ShowArrowCursor();
  if (WriteOrReport([&] { return RestoreLightingScripts(scriptsBefore); })) {
    SetStatusText(1, text + std::string(" The level is as it was."));
  }
}

// Of a run that was not cancelled.
std::string WhatWentWrong(ProcessEnd end) {
  return end == ProcessEnd::NotStarted ? "The game could not be started." : "";
}

// The closing words of a command, with what there is to add.
void ShowCompleted(const char* text, const std::string& addition) {
  SetStatusText(1, addition.empty() ? text : text + (" " + addition));
}

// Counts those that the game did not make.
bool TakeMergedTiles(int& missing) {
  const std::vector<TileIndex> tiles = TilesToTrace();
  int number = 0;
  bool written = true;
  for (const TileIndex& tile : tiles) {
    SetStatusText(1, FormatText("Compressing Surface Map %i of %i...", ++number,
                                static_cast<int>(tiles.size())));
    const TileTaken taken = TakeMergedTile(tile);
    if (taken == TileTaken::Missing) ++missing;
    written &= taken != TileTaken::NotWritten;
  }
  return written;
}

// Says so when the tiles that were selected have no surface.
bool HasTilesToTrace() {
  if (!TilesToTrace().empty()) return true;
  if (IsAnyShadowSelected()) {
    ShowArrowCursor();
    ShowPrompt(
        "None of the selected tiles has a surface map assigned.\n\n"
        "Assign surface maps to them first, or select tiles that have one.",
        "Generate Terrain Shadows", PromptButtons::Ok, PromptIcon::Information);
  } else {
    SetStatusText(1, "No tiles are selected for terrain shadows.");
  }
  return false;
}

bool PrepareTracing() {
  return WriteOrReport([] {
    bool written = WriteTileList();
    written &= WriteLightingScripts();
    return written;
  });
}

// What the last run left, so that only new light maps come into the level.
bool EmptyScratchObjectLightMaps() {
  const std::string folder = ScratchObjectLightMapsFolder();
  if (!MakeScratchFolder(folder)) return false;
  bool emptied = true;
  for (const std::string& name : ListFiles(folder, "")) {
    if (DeleteDiskFile(folder + "\\" + name)) continue;
    SetGameFileError("The file " + SystemPath(folder + "\\" + name) + " could not be deleted.");
    emptied = false;
  }
  return emptied;
}

bool PrepareObjectTracing() {
  return WriteOrReport([] {
    bool written = WriteLightingScripts();
    written &= EmptyScratchObjectLightMaps();
    return written;
  });
}

bool TakeNewObjectLightMaps() {
  const std::string folder = ScratchObjectLightMapsFolder();
  const bool hasPalette = !textureSet.objectPalette.loaded || WriteObjectPalette(folder);
  if (!hasPalette) {
    SetGameFileError("The file " + SystemPath(folder + "\\Palette.pal") + " could not be written.");
  }
  return TakeObjectLightMaps() && hasPalette;
}

// The game merges the shadows of its last run, and the level gets the tiles.
void MergeTracedTiles() {
  ShowWaitCursor();
  SetStatusText(1, "Merging Terrain Lightmaps...");
  const ProcessEnd end = RunTracer("mergeTerrainShadows", " 1.5 0.6", "Merging Terrain Lightmaps",
                                   "The game darkens " + CountOfTiles() + " by their shadows.");
  if (end == ProcessEnd::Cancelled) {
    ShowCancelled("Cancelled Merging Terrain Lightmaps.", {});
    return;
  }
  int missing = 0;
  if (WriteOrReport([&] { return TakeMergedTiles(missing); })) {
    std::string addition = WhatWentWrong(end);
    if (missing > 0) {
      addition +=
          FormatText("%s%i merged %s missing or of another size.", addition.empty() ? "" : " ",
                     missing, missing == 1 ? "tile was" : "tiles were");
    }
    ShowCompleted("Completed Merging Terrain Lightmaps.", addition);
  }
  LoadLevelTextures(LevelTextureLoad::Reloading);
}

}  // namespace

void GenerateTerrainShadows() {
  if (!IsReadyForTheGame("In order to generate terrain shadows, you must save your map.\n\n"
                         "Would you like to save your map now?")) {
    return;
  }
  if (!HasTilesToTrace() || !MayReplaceShadows()) return;
  ShowWaitCursor();
  SetStatusText(1, "Generating Terrain Shadows...");
  const LightingScripts scriptsBefore = ReadLightingScripts();
  if (!PrepareTracing()) return;
  const ProcessEnd end = RunTracer("traceTerrainShadows", "", "Generating Terrain Shadows",
                                   "The game traces the shadows of " + CountOfTiles() + ".");
  if (end == ProcessEnd::Cancelled) {
    ShowCancelled("Cancelled Terrain Shadow Generation.", scriptsBefore);
    return;
  }
  ShowCompleted("Completed Terrain Shadow Generation.", WhatWentWrong(end));
  if (Confirm("After generating Terrain Shadow Maps, they must be merged \n"
              "into the surface map before any changes can be seen.  However, \n"
              "you can Merge Surface Maps later from the Tools menu if you wish.\n\n"
              "Would you like to Merge Surface Light Maps now?",
              "Merge Surface Light Maps", PromptIcon::Question)) {
    MergeTracedTiles();
  }
  WriteOrReport(TakeShadowBits);
  LoadLevelTextures(LevelTextureLoad::Reloading);
}

void MergeTerrainLightmaps() {
  if (!IsReadyForTheGame("In order to merge terrain lightmaps, you must save your map.\n\n"
                         "Would you like to save your map now?")) {
    return;
  }
  if (MayReplaceTiles()) MergeTracedTiles();
}

void GenerateObjectLightmaps() {
  if (!IsReadyForTheGame("In order to generate object lightmaps, you must save your map.\n\n"
                         "Would you like to save your map now?")) {
    return;
  }
  if (!Confirm("This process will generate a lightmap for every object placed in the level.\n"
               "If you move an object, you will have to regenerate all lightmaps again.  It\n"
               "is recommended that you do this process as the last step of the level\n"
               "building process since this process can take quite a while.\n\n"
               "Would you like to Generate Object Light Maps now?",
               "Generate Object Light Maps", PromptIcon::Question) ||
      !MayReplaceObjectLightMaps()) {
    return;
  }
  ShowWaitCursor();
  SetStatusText(1, "Generating Object Light Maps...");
  const LightingScripts scriptsBefore = ReadLightingScripts();
  if (!PrepareObjectTracing()) return;
  const ProcessEnd end = RunTracer("traceObjectShadows", "", "Generating Object Light Maps",
                                   "The game traces the light of all placed objects.");
  if (end == ProcessEnd::Cancelled) {
    ShowCancelled("Cancelled Generating Object Light Maps.", scriptsBefore);
    return;
  }
  if (WriteOrReport(TakeNewObjectLightMaps)) {
    ShowCompleted("Completed Generating Object Light Maps.", WhatWentWrong(end));
  }
  LoadLevelTextures(LevelTextureLoad::Reloading);
}

}  // namespace mw
