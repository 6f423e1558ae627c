// The commands of the main window as actions: its menus, its main toolbar and its keys, all made
// from the command table.
#pragma once

#include <QMap>

#include "app/command_ids.h"

class QAction;
class QMainWindow;
class QMenu;
class QMenuBar;
class QToolBar;
class QWidget;

namespace mw {

class CommandActions {
 public:
  // The actions and their keys belong to the window.
  explicit CommandActions(QMainWindow* window);

  void FillMenuBar(QMenuBar* bar) const;
  // The menu that the command stands in, once the menu bar is filled; else null.
  QMenu* MenuOf(CommandId id) const;
  void FillMainToolbar(QToolBar* toolbar) const;
  // The command's action, or null.
  QAction* Find(CommandId id) const { return actions_.value(id, nullptr); }

 private:
  QMap<int, QAction*> actions_;
};

}  // namespace mw
