#include "app/ui/main_window.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolBar>
#include <gmock/gmock.h>

#include "app/modes.h"
#include "app/ui/mode_toolbars.h"
#include "app/ui/window_fixture.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

using MainWindowTest = WindowTest;

QMenu* MenuOf(const QList<QAction*>& actions, const QString& title) {
  for (QAction* action : actions) {
    if (action->menu() && action->text().remove('&') == title) return action->menu();
  }
  return nullptr;
}

std::vector<std::string> Captions(const QMenu* menu) {
  std::vector<std::string> captions;
  for (QAction* action : menu->actions()) {
    if (!action->isSeparator()) captions.push_back(action->text().toStdString());
  }
  return captions;
}

QAction* Entry(MainWindow& window, const char* menu, const char* caption) {
  for (QAction* action : MenuOf(window.menuBar()->actions(), menu)->actions()) {
    if (action->text() == QString(caption)) return action;
  }
  return nullptr;
}

QWidget* Button(MainWindow& window, const char* toolTip) {
  for (QAction* action : window.mainToolbar()->actions()) {
    if (!action->isSeparator() && action->toolTip() == QString(toolTip)) {
      return window.mainToolbar()->widgetForAction(action);
    }
  }
  return nullptr;
}

TEST_F(MainWindowTest, FileMenuShowsItsCaptionsWithTheirKeyTexts) {
  const QMenu* file = MenuOf(window.menuBar()->actions(), "File");
  ASSERT_TRUE(file);
  EXPECT_THAT(Captions(file),
              ElementsAre("&New Level\tCtrl-N", "&Open Level\tCtrl-O", "&Save Level\tCtrl-S",
                          "New Mod Configuration", "Edit Current Mod Configuration", "Import",
                          "Export", "E&xit"));
  EXPECT_THAT(Captions(MenuOf(file->actions(), "Import")), ElementsAre("Heightmap"));
  EXPECT_THAT(Captions(MenuOf(file->actions(), "Export")), ElementsAre("Heightmap"));
}

TEST_F(MainWindowTest, WhatWorksOnALevelIsGreyWithoutOne) {
  for (const bool open : {false, true}) {
    shell.setLevelOpen(open);
    EXPECT_EQ(Entry(window, "File", "&Save Level\tCtrl-S")->isEnabled(), open);
    EXPECT_EQ(Button(window, "Save This Level")->isEnabled(), open);
    EXPECT_EQ(window.modeToolbars()->isEnabled(), open);
    EXPECT_TRUE(Entry(window, "File", "&Open Level\tCtrl-O")->isEnabled());
  }
}

TEST_F(MainWindowTest, ToolbarHasItsButtonsInOrder) {
  std::vector<std::string> toolTips;
  for (const QAction* action : window.mainToolbar()->actions()) {
    toolTips.push_back(action->isSeparator() ? "-" : action->toolTip().toStdString());
  }
  EXPECT_THAT(toolTips,
              ElementsAre("-", "Create New Level", "Load Existing Level", "Save This Level", "-",
                          "Cut Selected Entities", "Copy Selected Entities",
                          "Paste Copied Entities", "-", "Light Settings", "Fog Settings",
                          "Shadow Settings", "Water Settings", "Surface Map Assigments", "-",
                          "Camera On Terrain Mode", "Camera Fly Mode", "Camera Top-Down Mode", "-",
                          "Wireframe Mode", "Textured Surface Mode", "Textured Wireframe Mode", "-",
                          "Terrain Mapper", "Material Mapper", "Object Mapper"));
}

TEST_F(MainWindowTest, NoTwoShortcutsShareTheirKeys) {
  std::vector<QKeySequence> keys;
  for (const QShortcut* shortcut : window.findChildren<QShortcut*>()) {
    EXPECT_FALSE(shortcut->key().isEmpty());
    EXPECT_EQ(std::count(keys.begin(), keys.end(), shortcut->key()), 0)
        << shortcut->key().toString().toStdString();
    keys.push_back(shortcut->key());
  }
  EXPECT_EQ(keys.size(), 19u);
}

TEST_F(MainWindowTest, ChoosingAModeChecksItAloneAndShowsItsToolbar) {
  Entry(window, "Tools", "&Object Mapper")->trigger();
  Entry(window, "Tools", "&Material Mapper")->trigger();
  Entry(window, "Tools", "&Material Mapper")->trigger();

  EXPECT_FALSE(Entry(window, "Tools", "&Terrain Mapper")->isChecked());
  EXPECT_TRUE(Entry(window, "Tools", "&Material Mapper")->isChecked());
  EXPECT_FALSE(Entry(window, "Tools", "&Object Mapper")->isChecked());
  EXPECT_TRUE(IsEditMode(EditMode::MaterialMapper));
  EXPECT_EQ(window.modeToolbars()->currentWidget()->objectName(), "Material Mapper Tools");
}

TEST_F(MainWindowTest, PendingPasteDisablesTheClipboardButtonsButNotTheMenu) {
  editor.somethingCopied = true;
  Entry(window, "Tools", "&Object Mapper")->trigger();
  EXPECT_TRUE(Button(window, "Paste Copied Entities")->isEnabled());

  Entry(window, "Edit", "&Paste\tCrtl-V")->trigger();

  EXPECT_FALSE(Button(window, "Cut Selected Entities")->isEnabled());
  EXPECT_FALSE(Button(window, "Copy Selected Entities")->isEnabled());
  EXPECT_FALSE(Button(window, "Paste Copied Entities")->isEnabled());
  EXPECT_TRUE(Entry(window, "Edit", "&Paste\tCrtl-V")->isEnabled());
}

TEST_F(MainWindowTest, TitleNamesTheLevelAndMarksUnsavedChanges) {
  const struct {
    bool loaded, modified;
    const char* title;
  } cases[] = {{false, true, "Mapwright - Varnhold Level Editor"},
               {true, false, "K\u00fcste - Mapwright"},
               {true, true, "K\u00fcste* - Mapwright"},
               {true, false, "K\u00fcste - Mapwright"},
               {false, false, "Mapwright - Varnhold Level Editor"}};
  for (const auto& [loaded, modified, title] : cases) {
    modConfig.LevelName = "K\u00fcste";
    editor.levelLoaded = loaded;
    editor.levelModified = modified;
    window.ShowLevelInTitle();
    EXPECT_EQ(window.windowTitle().toStdString(), title);
  }
}

// The close box of the window is the Exit command.
class ClosingTest : public MainWindowTest {
 protected:
  ClosingTest() { window.show(); }
  // Closing ends the event loop, and with it all those that a later test would start.
  ~ClosingTest() override {
    QTimer::singleShot(0, qApp, [] { QApplication::exit(); });
    QApplication::exec();
  }
  bool CloseWith(std::vector<PromptAnswer> answers) {
    scripted::script.answers = std::move(answers);
    window.close();
    return !window.isVisible();
  }
};

TEST_F(ClosingTest, UnchangedLevelClosesWithoutAQuestion) {
  EXPECT_TRUE(CloseWith({}));
  EXPECT_TRUE(scripted::script.prompts.empty());
}

TEST_F(ClosingTest, NoLeavesWithoutSaving) {
  editor.levelLoaded = true;
  editor.levelModified = true;
  EXPECT_TRUE(CloseWith({PromptAnswer::No}));
  ASSERT_EQ(scripted::script.prompts.size(), 1u);
  EXPECT_EQ(scripted::script.prompts[0].text,
            "Would you like to save your changes before exiting?");
}

TEST_F(ClosingTest, WindowStaysWhenTheSaveFails) {
  editor.levelLoaded = true;
  editor.levelModified = true;  // and its archive is not open, so that it cannot be saved
  EXPECT_FALSE(CloseWith({PromptAnswer::Yes, PromptAnswer::Ok}));
  EXPECT_TRUE(editor.levelModified);
}

}  // namespace
}  // namespace mw
