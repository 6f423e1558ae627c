#include "app/ui/shell_windows.h"

#include "app/mini_map_look.h"
#include "app/shell.h"
#include "app/ui/check_level_dialog.h"
#include "app/ui/frame_loop.h"
#include "app/ui/level_statistics_dialog.h"
#include "app/ui/level_tree_panel.h"
#include "app/ui/level_tree_widget.h"
#include "app/ui/load_level_dialog.h"
#include "app/ui/main_window.h"
#include "app/ui/mini_map_window.h"
#include "app/ui/mode_toolbars.h"
#include "app/ui/new_level_dialog.h"
#include "app/ui/object_connections.h"
#include "app/ui/picture_dialog.h"
#include "app/ui/sample_game_window.h"
#include "app/ui/save_picture_dialog.h"
#include "app/ui/view_widget.h"
#include "app/ui/welcome_dialog.h"
#include "app/undo.h"
#include "core/history.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "data/mods.h"
#include "data/ui/add_file_dialog.h"
#include "data/ui/environment_dialogs.h"
#include "data/ui/mod_dialogs.h"
#include "objects/ui/object_browser_dialog.h"
#include "terrain/ui/random_terrain_dialog.h"
#include "terrain/ui/road_dialog.h"
#include "terrain/ui/sample_bits_dialog.h"
#include "terrain/ui/shadow_dialog.h"
#include "terrain/ui/surface_assignments_dialog.h"

namespace mw {
namespace {

// A dialog that changes the level's settings is one step.
void AsStep(const char* name, const std::function<void()>& dialog) {
  const HistoryStep step(name);
  KeepSetting(modConfig);
  dialog();
}

// All of the record, so that a function that is added there cannot be forgotten here.
Shell ShellOf(MainWindow& window) {
  MainWindow* const owner = &window;
  ViewWidget* const view = window.view();
  return {
      .setCommandChecked = [&](CommandId id, bool on) { window.SetCommandChecked(id, on); },
      .setCommandEnabled = [&](CommandId id, bool on) { window.SetCommandEnabled(id, on); },
      .showUndoSteps = [&](const std::string& undo, const std::string& redo,
                           bool usable) { window.ShowUndoSteps(undo, redo, usable); },
      .setLevelOpen = [&](bool open) { window.SetLevelOpen(open); },
      .showModeToolbar = [&](EditMode mode) { window.modeToolbars()->ShowMode(mode); },
      .showMiniMap = [&] { window.miniMap()->ShowAsWanted(); },
      .mainWindowActive = [owner] { return IsWindowInUse(owner); },
      .viewHasFocus = [view] { return view->hasFocus(); },
      .focusView =
          [view] {
            if (!view->hasFocus()) view->setFocus(Qt::MouseFocusReason);
          },
      .focusTreePanel = [&] { window.treePanel()->tree()->setFocus(Qt::ShortcutFocusReason); },
      .focusFindField = [&] { window.treePanel()->FocusFindField(); },
      .closeMainWindow = [&] { window.CloseForGood(); },
      .renderFrameNow = [view] { view->ShowFrame(); },

      .selectMod = [owner](bool cancelAllowed) { return SelectModDialog(owner, cancelAllowed); },
      .newModConfig = [owner](bool cancelAllowed) { return NewModConfig(owner, cancelAllowed); },
      .editModSettings =
          [owner](bool cancelAllowed) { return EditModSettings(owner, cancelAllowed); },
      .loadLevelDialog = [owner] { return RunLoadLevelDialog(owner); },
      .createRoadDialog = [owner] { return CreateRoadDialog(owner); },
      .terrainShadowsDialog = [owner] { return ShadowDialog(owner); },
      .newLevelDialog = [owner] { return RunNewLevelDialog(owner); },
      .randomTerrainDialog = [owner] { return RandomTerrainDialog(owner); },
      .sampleBitsDialog = [owner](const char* title) { return SampleBitsDialog(owner, title); },
      .replaceDialog = [owner] { return ReplaceDialog(owner, shell.renderFrameNow); },
      .welcomeDialog =
          [owner](const std::vector<RecentLevel>& recent) {
            const bool sampleGame = modList.names.empty() && HasSampleGameWriter();
            return WelcomeDialog(owner, {sampleGame, recent}).Ask();
          },
      .writeSampleGame =
          [owner](const std::string& game, const std::string& work) {
            return WriteSampleGame(owner, game, work);
          },
      .addFileDialog = [owner] { AddFileDialog(owner); },
      .savePictureDialog = [owner, view] { SavePictureDialog(owner, *view); },
      .levelStatisticsDialog = [owner] { LevelStatisticsDialog(owner); },
      .checkLevelDialog = [owner] { CheckLevelDialog(owner); },
      .surfaceAssignmentsDialog =
          [owner] { SurfaceAssignmentsDialog(owner, shell.renderFrameNow); },
      .lightSettingsDialog =
          [owner] { AsStep("Light Settings", [owner] { LightSettingsDialog(owner); }); },
      .fogSettingsDialog =
          [owner] { AsStep("Fog Settings", [owner] { FogSettingsDialog(owner); }); },
      .shadowSettingsDialog =
          [owner] { AsStep("Shadow Settings", [owner] { ShadowSettingsDialog(owner); }); },
      .waterSettingsDialog =
          [owner] { AsStep("Water Settings", [owner] { WaterSettingsDialog(owner); }); },
      .teamSelectionDialog =
          [owner] { AsStep("Team Selection", [owner] { TeamSelectionDialog(owner); }); },
      .objectBrowserDialog = [owner] { ObjectBrowserDialog(owner, shell.renderFrameNow); },
      .aboutDialog = [owner] { SplashDialog(owner).exec(); },
      .creditsDialog = [owner] { CreditsDialog(owner).exec(); },
  };
}

}  // namespace

void ConnectShell(MainWindow& window) {
  shell = ShellOf(window);
  ConnectUndo();
  // Part of the next frame, which this costs nothing more while one follows another.
  hooks.invalidateMiniMap = [view = window.view()] { view->RequestFrame(); };
  ConnectObjectWindows(window);
  RecallMiniMap();
}

void DisconnectShell() {
  DisconnectObjectWindows();
  shell = ShellWithoutWindows();
  hooks.invalidateMiniMap = [] {};
}

}  // namespace mw
