#include "app/commands.h"

#include "app/camera_control.h"
#include "app/camera_places.h"
#include "app/command_table.h"
#include "app/level.h"
#include "app/modes.h"
#include "app/operations.h"
#include "app/save_questions.h"
#include "app/shell.h"
#include "core/text.h"
#include "platform/processes.h"
#include "platform/prompts.h"
#include "terrain/level_textures.h"

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

void CheckGroupButton(CommandId id) {
  const CommandSpec* spec = FindCommand(id);
  if (!spec) return;
  for (const CommandId member : GroupMembers(spec->group)) {
    shell.setCommandChecked(member, member == id);
  }
}

void SetDrawing(bool grid, bool textures) {
  editor.ShowGrid = grid;
  editor.ShowTextures = textures;
}

void SetReliefShading(bool on) {
  editor.ReliefShading = on;
  shell.setCommandChecked(kCommandReliefShading, on);
}

void CopySelection() {
  operations.copy();
  UpdateClipboardButtons(true);
}

void StartPaste() {
  editor.pastePending = true;
  UpdateClipboardButtons(true);
}

void GenerateSurfaceMaps() {
  if (!operations.generateSurfaceMaps()) return;
  DeleteLevelTextures();
  LoadLevelTextures(LevelTextureLoad::Reloading);
}

void RunFileCommand(CommandId id) {
  switch (id) {
    case kCommandNewLevel:
      if (OfferToSave("before creating a new map")) operations.newLevel();
      break;
    case kCommandOpenLevel:
      if (OfferToSave("before opening a new map")) OpenLevel();
      break;
    case kCommandSaveLevel:
      SaveLevel();
      break;
    case kCommandNewMod:
      shell.newModConfig(true);
      break;
    case kCommandEditMod:
      shell.editModSettings(true);
      break;
    case kCommandImportHeightmap:
      operations.importHeightmap();
      break;
    case kCommandExportHeightmap:
      operations.exportHeightmap();
      break;
    case kCommandExit:
      if (ConfirmExit()) shell.closeMainWindow();
      break;
    default:
      break;
  }
}

void RunViewCommand(CommandId id) {
  switch (id) {
    case kCommandCameraOnTerrain:
      SetCameraMode(CameraMode::OnTerrain);
      break;
    case kCommandCameraFly:
      SetCameraMode(CameraMode::Fly);
      break;
    case kCommandCameraTopDown:
      SetCameraMode(CameraMode::TopDown);
      break;
    case kCommandWireframe:
      SetDrawing(true, false);
      break;
    case kCommandTextured:
      SetDrawing(false, true);
      break;
    case kCommandTexturedWireframe:
      SetDrawing(true, true);
      break;
    case kCommandShowWholeLevel:
      ShowWholeLevel();
      break;
    case kCommandReliefShading:
      SetReliefShading(!editor.ReliefShading);
      break;
    case kCommandLevelStatistics:
      operations.levelStatistics();
      break;
    case kCommandTerrainMapper:
      SetEditMode(EditMode::TerrainMapper);
      break;
    case kCommandMaterialMapper:
      SetEditMode(EditMode::MaterialMapper);
      break;
    case kCommandObjectMapper:
      SetEditMode(EditMode::ObjectMapper);
      break;
    case kCommandFocusTree:
      shell.focusTreePanel();
      break;
    case kCommandViewBoundingBox:
    case kCommandViewCollisionMesh:
    case kCommandViewDetailMesh:
    case kCommandViewTexturedMesh:
      if (IsEditMode(EditMode::ObjectMapper)) operations.objectToolbarCommand(id);
      break;
    default:
      break;
  }
}

void RunToolsCommand(CommandId id) {
  switch (id) {
    case kCommandRandomTerrain:
      operations.randomTerrain(true);
      break;
    case kCommandGenerateMaterialMap:
      operations.generateMaterialMap();
      break;
    case kCommandTestLevel:
      operations.testLevel();
      break;
    case kCommandGenerateSurfaceMaps:
      GenerateSurfaceMaps();
      break;
    case kCommandGenerateShadows:
      if (PassesVersionGate("generate terrain shadows")) operations.openShadowDialog();
      break;
    case kCommandMergeLightmaps:
      if (PassesVersionGate("merge terrain lightmaps")) operations.mergeTerrainLightmaps();
      break;
    case kCommandGenerateObjectLightmaps:
      if (PassesVersionGate("generate object lightmaps")) operations.generateObjectLightmaps();
      break;
    case kCommandGenerateInGameMap:
      operations.generateInGameMap();
      break;
    case kCommandAddFile:
      shell.addFileDialog();
      break;
    case kCommandSnapAllToGround:
      operations.snapAllToGround();
      break;
    case kCommandSurfaceAssignments:
      operations.openSurfaceAssignments();
      break;
    case kCommandStockLevelLoad:
      RunStockLevelLoad();
      break;
    default:
      break;
  }
}

// The pages lie in the working folder.
void OpenHelp(const char* page) {
  if (!OpenDocument(page)) SetStatusText(1, FormatText("Could not open %s.", page));
}

void RunOtherCommand(CommandId id) {
  switch (id) {
    case kCommandCut:
    case kCommandCopy:
      CopySelection();
      break;
    case kCommandPaste:
      StartPaste();
      break;
    case kCommandLightSettings:
      operations.lightSettings();
      break;
    case kCommandFogSettings:
      operations.fogSettings();
      break;
    case kCommandShadowSettings:
      operations.shadowSettings();
      break;
    case kCommandWaterSettings:
      operations.waterSettings();
      break;
    case kCommandAbout:
      shell.aboutDialog();
      break;
    case kCommandCredits:
      shell.creditsDialog();
      break;
    case kCommandUsersGuide:
      OpenHelp("guide.htm");
      break;
    case kCommandTutorial:
      OpenHelp("tutorial.htm");
      break;
    default:
      break;  // Undo and Redo do nothing
  }
}

}  // namespace

bool OfferToSave(const char* occasion) {
  const SavingQuestion question = QuestionBeforeClosing(occasion);
  if (question.text.empty()) return true;
  switch (ShowPrompt(question.text, "Save?", PromptButtons::YesNoCancel, PromptIcon::Information)) {
    case PromptAnswer::Yes:
      return SaveLevel(question.foreign);
    case PromptAnswer::No:
      return true;
    default:
      return false;
  }
}

bool ConfirmExit() { return OfferToSave("before exiting"); }

void RunCommand(CommandId id) {
  // Not every way to a command is an input: a screen reader's is not. Switches and the commands of
  // groups change only what is shown and which tool is next.
  const CommandSpec* const spec = FindCommand(id);
  if (IsInputIgnored() && spec && spec->group == CommandGroup::None && !spec->isSwitch) return;
  if (NeedsLevel(id) && !editor.levelLoaded) return;
  CheckGroupButton(id);
  // A command belongs to exactly one of these; the others pass it over.
  RunFileCommand(id);
  RunViewCommand(id);
  RunToolsCommand(id);
  RunOtherCommand(id);
}

}  // namespace mw
