#include "app/ui/object_connections.h"

#include "app/operations.h"
#include "app/shell.h"
#include "app/ui/level_tree_panel.h"
#include "app/ui/main_window.h"
#include "app/ui/mode_toolbars.h"
#include "objects/level_tree.h"
#include "objects/object_windows.h"
#include "objects/ui/environment_dialogs.h"
#include "objects/ui/object_browser_dialog.h"
#include "objects/ui/object_toolbar.h"
#include "objects/ui/property_sheet_dialog.h"

namespace mw {
namespace {

void ConnectObjectDialogs(MainWindow& window) {
  objectWindows.runPropertySheet = [&](PropertySheet& sheet) {
    return RunPropertySheet(&window, sheet);
  };
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
  objectWindows.refreshToolbar = [toolbar] { toolbar->Refresh(); };
  ConnectObjectDialogs(window);
  levelTree.view = window.treePanel()->View();
  BuildTree();
}

void DisconnectObjectWindows() {
  objectWindows = ObjectWindows{};
  levelTree.view = LevelTreeView{};
}

}  // namespace mw
