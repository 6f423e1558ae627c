#include "app/ui/shell_windows.h"

#include "app/operations.h"
#include "app/shell.h"
#include "app/ui/frame_loop.h"
#include "app/ui/height_operations.h"
#include "app/ui/level_operations.h"
#include "app/ui/level_tree_panel.h"
#include "app/ui/level_tree_widget.h"
#include "app/ui/load_level_dialog.h"
#include "app/ui/main_window.h"
#include "app/ui/mapper_operations.h"
#include "app/ui/mode_toolbars.h"
#include "app/ui/object_connections.h"
#include "app/ui/picture_dialog.h"
#include "app/ui/view_widget.h"
#include "app/ui/welcome_dialog.h"
#include "core/hooks.h"
#include "data/ui/add_file_dialog.h"
#include "data/ui/mod_dialogs.h"
#include "terrain/ui/road_dialog.h"

namespace mw {
namespace {

void ConnectWindows(MainWindow& window) {
  ViewWidget* const view = window.view();
  shell.setCommandChecked = [&](CommandId id, bool on) { window.SetCommandChecked(id, on); };
  shell.setCommandEnabled = [&](CommandId id, bool on) { window.SetCommandEnabled(id, on); };
  shell.setLevelOpen = [&](bool open) { window.SetLevelOpen(open); };
  shell.showModeToolbar = [&](EditMode mode) { window.modeToolbars()->ShowMode(mode); };
  shell.mainWindowActive = [&] { return IsWindowInUse(&window); };
  shell.viewHasFocus = [view] { return view->hasFocus(); };
  shell.focusView = [view] {
    if (!view->hasFocus()) view->setFocus(Qt::MouseFocusReason);
  };
  shell.focusTreePanel = [&] { window.treePanel()->tree()->setFocus(Qt::ShortcutFocusReason); };
  shell.closeMainWindow = [&] { window.CloseForGood(); };
  shell.renderFrameNow = [view] { view->repaint(); };
  // Part of the next frame, which this costs nothing more while one follows another.
  hooks.invalidateMiniMap = [view] { view->update(); };
}

void ConnectDialogs(MainWindow& window) {
  shell.selectMod = [&](bool cancelAllowed) { return SelectModDialog(&window, cancelAllowed); };
  shell.newModConfig = [&](bool cancelAllowed) { return NewModConfig(&window, cancelAllowed); };
  shell.editModSettings = [&](bool cancelAllowed) {
    return EditModSettings(&window, cancelAllowed);
  };
  shell.loadLevelDialog = [&] { return RunLoadLevelDialog(&window); };
  shell.createRoadDialog = [&] { return CreateRoadDialog(&window); };
  shell.addFileDialog = [&] { AddFileDialog(&window); };
  shell.aboutDialog = [&] { SplashDialog(&window).exec(); };
  shell.creditsDialog = [&] { CreditsDialog(&window).exec(); };
  shell.welcomeDialog = [&] { return WelcomeDialog(&window).Ask(); };
}

}  // namespace

void ConnectShell(MainWindow& window) {
  ConnectWindows(window);
  ConnectDialogs(window);
  ConnectTerrainTools(*window.modeToolbars()->terrainToolbar());
  ConnectMaterialTools(*window.modeToolbars()->materialToolbar());
  ConnectSurfaceDialogs(window);
  ConnectHeightOperations(window);
  ConnectObjectWindows(window);
  ConnectLevelOperations(window);
}

void DisconnectShell() {
  DisconnectObjectWindows();
  shell = Shell{};
  operations = Operations{};
  hooks.invalidateMiniMap = [] {};
}

}  // namespace mw
