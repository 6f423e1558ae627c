#include "app/command_deeds.h"

#include "app/commands.h"
#include "app/level.h"
#include "app/light_map_commands.h"
#include "app/modes.h"
#include "app/new_level.h"
#include "app/shell.h"
#include "app/start_up.h"
#include "core/editor_state.h"
#include "core/text.h"
#include "objects/object_clipboard.h"
#include "platform/processes.h"
#include "platform/prompts.h"
#include "terrain/level_textures.h"
#include "terrain/material_generation.h"
#include "terrain/surface_maps.h"

namespace mw {
namespace {

// True when the installed game is new enough for the generation that `purpose` names.
bool PassesVersionGate(const char* purpose) {
  if (editor.installedGameVersion >= editor.requiredGameVersion) return true;
  ShowPrompt(FormatText("The installed verion of Varnhold on your machine\nis %.3f.\n\n"
                        "You must upgrade your version of Varnhold\nto %.3f before being able to "
                        "%s.",
                        static_cast<double>(editor.installedGameVersion),
                        static_cast<double>(editor.requiredGameVersion), purpose),
             "Generation Error", PromptButtons::Ok, PromptIcon::Stop);
  return false;
}

void SetDrawing(bool grid, bool textures) {
  editor.ShowGrid = grid;
  editor.ShowTextures = textures;
}

void OpenHelp(const char* page) {
  if (!OpenDocument(page)) SetStatusText(1, FormatText("Could not open %s.", page));
}

}  // namespace

void CreateLevelOnCommand() {
  if (OfferToSave("before creating a new map")) NewLevel(shell.newLevelDialog);
}

void OpenLevelOnCommand() {
  if (OfferToSave("before opening a new map")) OpenLevel();
}

void ExitOnCommand() {
  if (ConfirmExit()) shell.closeMainWindow();
}

void CopyOnCommand() {
  CopySelected();
  UpdateClipboardButtons(true);
}

void PasteOnCommand() {
  editor.pastePending = true;
  UpdateClipboardButtons(true);
}

void ShowWireframe() { SetDrawing(true, false); }

void ShowTextured() { SetDrawing(false, true); }

void ShowTexturedWireframe() { SetDrawing(true, true); }

void SwitchReliefShading() {
  editor.ReliefShading = !editor.ReliefShading;
  shell.setCommandChecked(kCommandReliefShading, editor.ReliefShading);
}

void GenerateMaterialMapOnCommand() { GenerateMaterialMap(LoadedMaterialPlugin()); }

void GenerateSurfaceMapsOnCommand() {
  if (GenerateSurfaceMaps(LoadedSurfacePlugin())) LoadLevelTextures(LevelTextureLoad::Reloading);
}

void GenerateTerrainShadowsOnCommand() {
  if (!PassesVersionGate("generate terrain shadows") || !shell.terrainShadowsDialog()) return;
  ShowWaitCursor();
  GenerateTerrainShadows();
}

void MergeTerrainLightmapsOnCommand() {
  if (PassesVersionGate("merge terrain lightmaps")) MergeTerrainLightmaps();
}

void GenerateObjectLightmapsOnCommand() {
  if (PassesVersionGate("generate object lightmaps")) GenerateObjectLightmaps();
}

void OpenUsersGuide() { OpenHelp("guide.htm"); }

void OpenTutorial() { OpenHelp("tutorial.htm"); }

}  // namespace mw
