#include "app/ui/object_connections.h"

#include "app/operations.h"
#include "app/shell.h"
#include "app/ui/level_tree_panel.h"
#include "app/ui/main_window.h"
#include "app/ui/mode_toolbars.h"
#include "core/hooks.h"
#include "objects/level_tree.h"
#include "objects/ui/environment_dialogs.h"
#include "objects/ui/object_browser_dialog.h"
#include "objects/ui/object_toolbar.h"
#include "objects/ui/property_sheet_dialog.h"

namespace mw {
namespace {

void ConnectObjectDialogs(MainWindow& window) {
  hooks.runPropertySheet = [&](PropertySheet& sheet) { return RunPropertySheet(&window, sheet); };
  operations.objectBrowser = [&] { ObjectBrowserDialog(&window, shell.renderFrameNow); };
  operations.lightSettings = [&] { LightSettingsDialog(&window); };
  operations.fogSettings = [&] { FogSettingsDialog(&window); };
  operations.shadowSettings = [&] { ShadowSettingsDialog(&window); };
  operations.waterSettings = [&] { WaterSettingsDialog(&window); };
  operations.teamSelection = [&] { TeamSelectionDialog(&window); };
}

}  // namespace

void ConnectObjectWindows(MainWindow& window) {
  ObjectToolbar* const toolbar = window.modeToolbars()->objectToolbar();
  hooks.refreshObjectToolbar = [toolbar] { toolbar->Refresh(); };
  ConnectObjectDialogs(window);
  levelTree.view = window.treePanel()->View();
  BuildTree();
}

void DisconnectObjectWindows() {
  hooks.runPropertySheet = Hooks{}.runPropertySheet;
  hooks.refreshObjectToolbar = Hooks{}.refreshObjectToolbar;
  levelTree.view = LevelTreeView{};
}

}  // namespace mw
