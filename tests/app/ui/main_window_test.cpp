#include "app/ui/main_window.h"

#include <QAction>
#include <QDropEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QShortcut>
#include <QToolBar>
#include <QUrl>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

#include "app/modes.h"
#include "app/ui/mode_toolbars.h"
#include "app/ui/sample_game_window.h"
#include "app/ui/window_fixture.h"
#include "core/history.h"
#include "support/golden.h"
#include "support/prompts.h"

namespace mw {
namespace {

using MainWindowTest = WindowTest;

QMenu* MenuOf(const QList<QAction*>& actions, const QString& title) {
  for (QAction* action : actions) {
    if (action->menu() && action->text().remove('&') == title) return action->menu();
  }
  return nullptr;
}

// What a row of entries shows, an entry a line: the captions of menus or the tips of buttons.
std::string Listing(const QList<QAction*>& actions, const std::string& indent = {}) {
  std::string text;
  for (const QAction* action : actions) {
    const bool inMenu = action->menu() || !indent.empty();
    const QString shown = inMenu ? action->text() : action->toolTip();
    text += indent + (action->isSeparator() ? "-" : shown.toStdString());
    if (action->isCheckable()) text += " (can be checked)";
    const QVariant control = action->property("controlId");
    if (control.isValid()) text += " " + std::to_string(control.toInt());
    text += '\n';
    if (action->menu()) text += Listing(action->menu()->actions(), indent + "  ");
  }
  return text;
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

TEST_F(MainWindowTest, UndoAndRedoNameTheirSteps) {
  static int setting = 0;
  const QList<QAction*> entries = MenuOf(window.menuBar()->actions(), "Edit")->actions();
  const QAction& undo = *entries[0];
  const QAction& redo = *entries[1];
  EXPECT_EQ(undo.text(), "&Undo\tCtrl-Z");
  {
    const HistoryStep step("Raising");
    KeepSetting(setting);
    ++setting;
    EXPECT_EQ(undo.text(), "&Undo\tCtrl-Z") << "it is under way";
  }
  EXPECT_EQ(undo.text(), "&Undo Raising\tCtrl-Z");
  EXPECT_TRUE(undo.isEnabled());
  EXPECT_FALSE(redo.isEnabled());
  Undo();
  EXPECT_EQ(redo.text(), "&Redo Raising\tCtrl-Y");
  EXPECT_TRUE(redo.isEnabled());
  shell.setLevelOpen(true);
  EXPECT_FALSE(undo.isEnabled());
}

TEST_F(MainWindowTest, TheRecentMenuIsFilledEachTimeAndForgetsALevelThatIsGone) {
  QMenu* const file = MenuOf(window.menuBar()->actions(), "File");
  auto* const recent = window.findChild<QMenu*>("recentMenu");
  file->aboutToShow();
  EXPECT_FALSE(recent->menuAction()->isEnabled());
  scripted::script.editorSettings["RecentLevels"] = "/no/a&b.vra\tm\n";
  file->aboutToShow();
  EXPECT_TRUE(recent->menuAction()->isEnabled());
  ASSERT_EQ(recent->actions().size(), 1);
  EXPECT_EQ(recent->actions()[0]->text(), "&1  a&&b (m)");
  Answer({PromptAnswer::Ok});
  recent->actions()[0]->trigger();
  QApplication::processEvents();
  ExpectPrompts({"/no/a&b.vra"});
  file->aboutToShow();
  EXPECT_TRUE(recent->actions().isEmpty());
}

TEST_F(MainWindowTest, AFileThatIsDroppedIsOpenedOneAtATime) {
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile("/no/a.vra"), QUrl("http://no/b.vra")});
  const auto isTaken = [&] {
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(&window, &enter);
    return enter.isAccepted();
  };
  const auto drop = [&] {
    EXPECT_TRUE(isTaken());
    QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&window, &event);
    QApplication::processEvents();
  };
  Answer({PromptAnswer::Ok, PromptAnswer::Ok});
  drop();
  data.setUrls({QUrl::fromLocalFile("/no/a.vra"), QUrl::fromLocalFile("/no/b.vra")});
  drop();
  ExpectPrompts({"There is no such file", "These are 2 files"});
  data.setUrls({QUrl("http://no/b.vra")});
  EXPECT_FALSE(isTaken());
}

TEST_F(MainWindowTest, WritingTheSampleGameIsCancelledOrTellsWhyItFailed) {
  const std::string game = (folder / "game").string(), work = (folder / "work").string();
  WhenOpen<QDialog>([](auto& dialog) { Click(dialog, {"cancelButton"}); });
  const SampleGameWriting cancelled = WriteSampleGame(&window, game, work);
  EXPECT_FALSE(cancelled.complete);
  EXPECT_EQ(cancelled.failure, "");
  std::ofstream(folder / "file") << "x";
  const SampleGameWriting failed = WriteSampleGame(&window, (folder / "file").string(), work);
  EXPECT_FALSE(failed.complete);
  EXPECT_THAT(failed.failure, testing::HasSubstr((folder / "file").string()));
}

TEST_F(MainWindowTest, MenusToolbarsAndKeysAreAsTheGuideShowsThem) {
  std::string text = Listing(window.menuBar()->actions());
  for (const QToolBar* toolbar : window.findChildren<QToolBar*>()) {
    text += "==== " + toolbar->objectName().toStdString() + '\n' + Listing(toolbar->actions());
  }
  text += "==== keys\n";
  std::set<std::string> keys;
  for (const QShortcut* shortcut : window.findChildren<QShortcut*>()) {
    const auto key = shortcut->key().toString(QKeySequence::PortableText).toStdString();
    EXPECT_TRUE(keys.insert(key).second) << key << " stands for two";
  }
  for (const std::string& key : keys) text += key + '\n';
  ExpectGolden("app/main_window.txt", text);
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

TEST_F(ClosingTest, AnUnchangedLevelClosesWithoutAQuestionAndNoLeavesWithoutSaving) {
  editor.levelLoaded = true;
  editor.levelModified = true;  // and its archive is not open, so that it cannot be saved
  EXPECT_FALSE(CloseWith({PromptAnswer::Yes, PromptAnswer::Ok}));
  EXPECT_TRUE(editor.levelModified);
  EXPECT_EQ(scripted::script.prompts[0].text,
            "Would you like to save your changes before exiting?");
  EXPECT_TRUE(CloseWith({PromptAnswer::No}));
  window.show();
  editor.levelModified = false;
  scripted::script.prompts.clear();
  EXPECT_TRUE(CloseWith({}));
  EXPECT_TRUE(scripted::script.prompts.empty());
}

}  // namespace
}  // namespace mw
