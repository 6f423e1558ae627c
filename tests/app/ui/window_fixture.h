// The main window over the shell's logic: for the tests of the windows, whose stories tell what the
// windows show.
#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <functional>
#include <sstream>

#include "app/session.h"
#include "app/shell_fixture.h"
#include "app/ui/level_tree_panel.h"
#include "app/ui/level_tree_widget.h"
#include "app/ui/main_window.h"
#include "app/ui/mini_map_window.h"
#include "app/ui/mode_toolbars.h"
#include "app/ui/shell_windows.h"

namespace mw {

class WindowTest : public ShellTest {
 protected:
  WindowTest() { ConnectShell(window); }
  ~WindowTest() override { DisconnectShell(); }

  // A widget of the open dialog or, without one, of the window.
  QWidget& Scope() {
    QWidget* const dialog = QApplication::activeModalWidget();
    return dialog ? *dialog : window;
  }
  LevelTreeWidget& tree() { return *window.treePanel()->tree(); }
  QList<QAction*> MenuEntries() const {
    QList<QAction*> entries = window.menuBar()->actions();
    for (qsizetype i = 0; i < entries.size(); ++i) {
      if (entries[i]->menu()) entries += entries[i]->menu()->actions();
    }
    return entries;
  }

  // The lines that are not as after the step before.
  std::string StateAfterStep() override {
    window.ShowLevelInTitle();
    QApplication::processEvents();
    const auto isGrey = [](const QAction& action) { return !action.isEnabled(); };
    const auto isOn = [](const QAction& action) { return action.isChecked(); };
    const QWidget* tools = window.modeToolbars()->currentWidget();
    std::string sizes;
    for (const QComboBox* box : tools->findChildren<QComboBox*>()) {
      sizes += ", " + box->currentText().toStdString();
    }
    std::vector<std::string> lines{
        "title  " + window.windowTitle().toStdString(),
        "steps  " + CaptionOf(kCommandUndo) + ", " + CaptionOf(kCommandRedo),
        "menus  grey: " + TextsWhere(MenuEntries(), isGrey),
        "menus  on: " + TextsWhere(MenuEntries(), isOn),
        "bar    grey: " + TextsWhere(window.mainToolbar()->actions(),
                                     [this](const QAction& action) {
                                       return !window.mainToolbar()
                                                   ->widgetForAction(const_cast<QAction*>(&action))
                                                   ->isEnabled();
                                     }),
        "recent " + RawTexts(window.findChild<QMenu*>("recentMenu")->actions()),
        "tools  " + tools->objectName().toStdString() + (tools->isEnabled() ? "" : " (grey)") +
            " on: " + TextsWhere(tools->findChildren<QAction*>(), isOn) + sizes};
    AddLevel(lines);
    AddPlaces(lines);
    lines.push_back(TreeRows());
    if (QApplication::activeModalWidget()) AddControls(lines);
    return News(lines);
  }
  std::string CaptionOf(CommandId id) const {
    const auto* action = window.findChild<QAction*>(QString("command%1").arg(id));
    return action->text().toStdString() + (action->isEnabled() ? "" : " (grey)");
  }
  void AddLevel(std::vector<std::string>& lines) const {
    std::ostringstream level;
    level << "level  mode " << static_cast<int>(editor.editMode) << ", water "
          << modConfig.WaterLevel << ", terrain tool " << static_cast<int>(terrain.tool)
          << " power " << terrain.power << ", point " << terrain.grid[100][100].h
          << (editor.drawObjectsInMappers ? ", objects shown" : "")
          << (editor.somethingCopied ? ", copied" : "")
          << (editor.pastePending ? ", paste pending" : "")
          << (objectStore.toolsEnabled ? ", object tools" : "") << "; selected:";
    for (const StaticObject& object : objectStore.objects) {
      if (object.selected) level << ' ' << object.name.View();
    }
    lines.push_back(level.str());
    std::string keys = std::string("keys   ") + (editor.ctrlHeld ? "Ctrl:" : "");
    for (std::size_t key = 0; key < kKeyCount; ++key) {
      if (session.heldInput.keys[key]) keys += ' ' + std::to_string(key);
    }
    lines.push_back(keys);
  }
  void AddPlaces(std::vector<std::string>& lines) const {
    std::ostringstream places;
    const auto& [x, y, z] = camera.position;
    places << "places camera " << x << ' ' << y << ' ' << z << ", Mini-Map "
           << window.miniMap()->x() << ' ' << window.miniMap()->y() << " drawn at "
           << session.miniMapWindow.left << ' ' << session.miniMapWindow.top
           << (window.miniMap()->isHidden() ? ", closed" : "") << ", tree "
           << window.treePanel()->width() << " wide";
    lines.push_back(places.str());
  }
  // Those that can be scrolled to.
  std::string TreeRows() {
    std::string rows =
        "tree   " + window.findChild<QComboBox*>("modeFilter")->currentText().toStdString();
    for (QTreeWidgetItemIterator row(&tree()); *row; ++row) {
      std::string indent = "\n       ";
      bool isFolded = (*row)->isHidden();
      for (const QTreeWidgetItem* up = (*row)->parent(); up; up = up->parent()) {
        isFolded |= !up->isExpanded();
        indent += "  ";
      }
      if (isFolded) continue;
      rows += indent + (*row)->text(0).toStdString() +
              ((*row)->isExpanded() && (*row)->childCount() > 0 ? ", open" : "") +
              ((*row)->isSelected() ? ", selected" : "") +
              (*row == tree().currentItem() ? ", current" : "");
    }
    return rows;
  }
  // The open dialog: its title, and a line for each control.
  void AddControls(std::vector<std::string>& lines) {
    lines.push_back("dialog " + Scope().windowTitle().toStdString());
    for (const QWidget* widget : Scope().findChildren<QWidget*>()) {
      if (widget->objectName().startsWith("qt_")) continue;
      const QString shown = Shown(widget);
      if (widget->objectName().isEmpty() && shown.isEmpty()) continue;
      QString line = "       " + widget->objectName() + ": " + shown;
      if (!widget->isEnabled()) line += " (grey)";
      if (widget->isHidden()) line += " (hidden)";
      lines.push_back(line.toStdString());
    }
  }
  static QString Shown(const QWidget* widget) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
      return button->isCheckable() ? button->isChecked() ? "on" : "off" : button->text();
    }
    if (const auto* label = qobject_cast<const QLabel*>(widget)) return label->text();
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget)) return edit->text();
    QStringList entries;
    int current = -1;
    if (const auto* box = qobject_cast<const QComboBox*>(widget)) {
      for (int i = 0; i < box->count(); ++i) entries << box->itemText(i);
      current = box->currentIndex();
    } else if (const auto* list = qobject_cast<const QListWidget*>(widget)) {
      for (int i = 0; i < list->count(); ++i) entries << list->item(i)->text();
      current = list->currentRow();
    }
    if (current >= 0) entries[current] = "[" + entries[current] + "]";
    return entries.join(", ");
  }

  // With the left button held from one place to the other.
  static void DragFrom(QWidget* widget, QPoint from, QPoint to,
                       const std::function<void()>& beforeRelease = nullptr) {
    QTest::mousePress(widget, Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, widget->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     {});
    QApplication::sendEvent(widget, &move);
    if (beforeRelease) beforeRelease();
    QTest::mouseRelease(widget, Qt::LeftButton, {}, to);
  }

  MainWindow window;

 private:
  static std::string RawTexts(const QList<QAction*>& actions) {
    std::string texts;
    for (const QAction* action : actions) texts += "  " + action->text().toStdString();
    return texts;
  }
  // In the order in which they are found.
  template <typename Test>
  static std::string TextsWhere(const QList<QAction*>& actions, Test test) {
    std::string texts;
    for (const QAction* action : actions) {
      if (!action->isSeparator() && test(*action)) {
        texts += (texts.empty() ? "" : ", ") +
                 action->text().remove('&').section('\t', 0, 0).toStdString();
      }
    }
    return texts;
  }
};

}  // namespace mw
