// The main window: menu bar, main toolbar, the level tree panel at the left, the mode toolbars and
// the 3D view at the right, and the status bar.
#pragma once

#include <QMainWindow>
#include <string>

#include "app/ui/command_actions.h"

class QLabel;

namespace mw {

class LevelTreePanel;
class MiniMapWindow;
class ModeToolbars;
class ViewWidget;

class MainWindow : public QMainWindow {
 public:
  MainWindow();

  // Hides the window for good, without asking anything more, and ends the event loop.
  void CloseForGood();

  void SetCommandChecked(CommandId id, bool checked);
  // The level's name and whether it has unsaved changes. Costs nothing while they stay the same.
  void ShowLevelInTitle();
  // Of the command's button in the main toolbar; its menu entry is always there.
  void SetCommandEnabled(CommandId id, bool enabled);
  // The captions name the steps; without one the command is disabled.
  void ShowUndoSteps(const std::string& undo, const std::string& redo, bool usable);
  // Enables the commands, tools and trees that work on a level.
  void SetLevelOpen(bool open);

  ViewWidget* view() const { return view_; }
  MiniMapWindow* miniMap() const { return miniMap_; }
  LevelTreePanel* treePanel() const { return treePanel_; }
  ModeToolbars* modeToolbars() const { return modeToolbars_; }
  QToolBar* mainToolbar() const { return mainToolbar_; }
  QLabel* progressLabel() const { return progressLabel_; }
  QLabel* readingLabel() const { return readingLabel_; }
  QLabel* frameRateLabel() const { return frameRateLabel_; }

 protected:
  // Closing is the Exit command.
  void closeEvent(QCloseEvent* event) override;
  // A level's archive, dropped anywhere, is opened.
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;

 private:
  void ShowStep(CommandId id, const std::string& step, bool usable);
  void BuildToolbar();
  void BuildCentre();
  QLabel* AddStatusLabel(const char* name, QSizePolicy::Policy width);
  void BuildStatusBar();

  CommandActions actions_;
  std::string titleLevel_;
  bool titleModified_ = false;
  QToolBar* mainToolbar_ = nullptr;
  LevelTreePanel* treePanel_ = nullptr;
  ModeToolbars* modeToolbars_ = nullptr;
  ViewWidget* view_ = nullptr;
  MiniMapWindow* miniMap_ = nullptr;
  QLabel *progressLabel_ = nullptr, *readingLabel_ = nullptr, *frameRateLabel_ = nullptr;
};

}  // namespace mw
