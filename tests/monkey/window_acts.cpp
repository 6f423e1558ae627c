// What is done to the main window: its menus, toolbars, view, map and tree.
#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QToolBar>
#include <QTreeWidget>

#include "app/command_table.h"
#include "tests/monkey/acts.h"
#include "tests/monkey/inputs.h"

namespace mw::monkey {
namespace {

QWidget* Part(const char* name) {
  QWidget* const part = help::FindMainWindow()->findChild<QWidget*>(name);
  return part && part->isVisible() ? part : nullptr;
}

// Those that work long are chosen less often; Exit never is.
bool IsSlow(CommandId id) {
  return id == kCommandGenerateSurfaceMaps || id == kCommandGenerateShadows ||
         id == kCommandMergeLightmaps || id == kCommandGenerateObjectLightmaps ||
         id == kCommandGenerateInGameMap || id == kCommandStockLevelLoad ||
         id == kCommandTestLevel || id == kCommandNewLevel;
}

const CommandSpec& SomeCommand(Dice& dice) {
  const auto table = CommandTable();
  for (;;) {
    const CommandSpec& spec =
        table[static_cast<std::size_t>(dice.Below(static_cast<int>(table.size())))];
    if (spec.id == kCommandExit || (IsSlow(spec.id) && dice.Chance(70))) continue;
    return spec;
  }
}

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Through the menus, as one finds it there.
Act MenuAct(Dice& dice) {
  const CommandSpec& spec = SomeCommand(dice);
  if (spec.menu.empty()) return {};
  Act act{"menu " + Text(spec.menu) + '/' + help::Plain(Text(spec.caption)), {}};
  QStringList entries = Text(spec.menu).split('/');
  entries << help::Plain(Text(spec.caption));
  for (const QString& entry : entries) {
    act.inputs.push_back([entry] {
      if (const auto at = help::FindMenuEntry(entry)) ClickMouse(*at);
    });
  }
  return act;
}

Act ShortcutAct(Dice& dice) {
  const CommandSpec& spec = SomeCommand(dice);
  if (spec.shortcuts.empty()) return {};
  const QKeySequence keys(Text(spec.shortcuts).section(' ', 0, 0), QKeySequence::PortableText);
  const QKeyCombination key = keys[0];
  return {"shortcut " + keys.toString(), {[key] { ClickKey(key.key(), key.keyboardModifiers()); }}};
}

// Some steps back or forth at once.
Act UndoAct(Dice& dice) {
  const int key = dice.Chance(60) ? Qt::Key_Z : Qt::Key_Y;
  Act act{key == Qt::Key_Z ? "undo" : "redo", {}};
  for (int steps = dice.Between(1, 6); steps-- > 0;)
    act.inputs.push_back([key] { ClickKey(key, Qt::ControlModifier); });
  return act;
}

Act CommandAct(Dice& dice) {
  const CommandSpec& spec = SomeCommand(dice);
  auto* const action =
      help::FindMainWindow()->findChild<QAction*>(QString("command%1").arg(spec.id));
  if (!action) return {};
  return {"command " + action->iconText(), {[action] { action->trigger(); }}};
}

Act ButtonAct(Dice& dice) {
  QWidget* const window = help::FindMainWindow();
  QList<QWidget*> usable;
  for (const auto* toolbar : window->findChildren<QToolBar*>()) {
    if (!toolbar->isVisible()) continue;
    for (QAction* action : toolbar->actions()) {
      QWidget* const widget = toolbar->widgetForAction(action);
      if (widget && widget->isVisible() && !action->isSeparator()) usable << widget;
    }
  }
  return usable.isEmpty() ? Act{} : ActOn(dice.Pick(usable), dice);
}

Act ViewAct(Dice& dice) {
  QWidget* const view = Part("view");
  if (!view) return {};
  const Target from{view, SomePlace(view, dice)}, to{view, SomePlace(view, dice)};
  const auto modifiers = dice.Chance(30) ? SomeModifiers(dice) : Qt::KeyboardModifiers();
  const auto button = dice.Pick(std::array{Qt::LeftButton, Qt::LeftButton, Qt::LeftButton,
                                           Qt::RightButton, Qt::MiddleButton});
  const QString where = QString("%1,%2").arg(from.place.x()).arg(from.place.y());
  switch (dice.Below(8)) {
    case 0:
      return {"move in view " + where, {[=] { MoveMouse(from, modifiers); }}};
    case 1:
      return {"double click in view " + where,
              {[=] { MoveMouse(from); }, [=] { DoubleClickMouse(from); }}};
    case 2:
      return {"wheel in view " + where, {[=] { TurnWheel(from, 1); }}};
    case 3:
      return {"press in view " + where, {[=] { PressMouse(from, button, modifiers); }}};
    case 4:
      return {"release in view " + where, {[=] { ReleaseMouse(from, button, modifiers); }}};
    case 5: {
      Act drag{"drag in view " + where,
               {[=] { MoveMouse(from); }, [=] { PressMouse(from, button, modifiers); }}};
      const int steps = dice.Between(1, 8);
      for (int i = 1; i <= steps; ++i) {
        const Target at{view, from.place + (to.place - from.place) * i / steps};
        drag.inputs.push_back([=] { MoveMouse(at, modifiers); });
      }
      drag.inputs.push_back([=] { ReleaseMouse(to, button, modifiers); });
      return drag;
    }
    default:
      return {"click in view " + where,
              {[=] { MoveMouse(from, modifiers); }, [=] { ClickMouse(from, button, modifiers); }}};
  }
}

// Held modifiers as a user holds them: as keys of their own.
Act KeyAct(Dice& dice) {
  const int key = dice.Chance(15) ? dice.Pick(std::array{int(Qt::Key_Control), int(Qt::Key_Shift)})
                                  : SomeKey(dice);
  const auto modifiers = SomeModifiers(dice);
  const QString name = QString("key %1+%2").arg(modifiers.toInt(), 0, 16).arg(key, 0, 16);
  switch (dice.Below(6)) {
    case 0:
      return {name + " down", {[=] { PressKey(key, modifiers); }}};
    case 1:
      return {name + " up", {[=] { ReleaseKey(key, modifiers); }}};
    case 2: {
      Act burst{name + " repeated", {[=] { PressKey(key, modifiers); }}};
      for (int i = dice.Between(2, 15); i > 0; --i) {
        burst.inputs.push_back([=] { PressKey(key, modifiers, true); });
      }
      burst.inputs.push_back([=] { ReleaseKey(key, modifiers); });
      return burst;
    }
    default:
      return {name, {[=] { ClickKey(key, modifiers); }}};
  }
}

Act TreeDrag(QWidget* tree, Dice& dice) {
  const Target from{tree, SomePlace(tree, dice)};
  QWidget* const end =
      Part(dice.Pick(std::array{"view", "view", "view", "view", "miniMap", "mainToolbar"}));
  if (!end) return {};
  const Target to{end, SomePlace(end, dice)};
  constexpr QPoint kStart(30, 6);  // pixels; enough for the drag to begin
  Act drag{"drag from tree",
           {[=] { PressMouse(from); },
            [=] {
              MoveMouse({from.widget, from.place + kStart});
            },
            [=] { MoveMouse(to); }, [=] { MoveMouse(to); }}};
  if (dice.Chance(20)) drag.inputs.push_back([] { ClickKey(Qt::Key_Escape); });
  drag.inputs.push_back([=] { ReleaseMouse(to); });
  return drag;
}

Act TreeAct(Dice& dice) {
  auto* const tree = help::FindMainWindow()->findChild<QTreeWidget*>("levelTree");
  const Target at{tree->viewport(), SomePlace(tree->viewport(), dice)};
  switch (dice.Below(7)) {
    case 0:
      return {"open in tree", {[=] { DoubleClickMouse(at); }}};
    case 1:
      return {"expand tree", {[tree] { tree->expandAll(); }}};
    case 2:
      return {"delete in tree", {[=] { ClickMouse(at); }, [] { ClickKey(Qt::Key_Delete); }}};
    case 3:
    case 4:
      return TreeDrag(tree->viewport(), dice);
    default:
      return ActOn(tree, dice);
  }
}

Act PartAct(Dice& dice) {
  QWidget* const part =
      Part(dice.Pick(std::array{"miniMapPicture", "miniMapPicture", "miniMap", "splitterStrip",
                                "levelTreePanel", "modeFilter"}));
  return part ? ActOn(part, dice) : Act{};
}

void Restore(QWidget* window) {
  window->showMaximized();
  window->raise();
  window->activateWindow();
}

Act SizeAct(Dice& dice) {
  QWidget* const window = help::FindMainWindow();
  switch (dice.Below(4)) {
    case 0:
      return {"minimise", {[=] { window->showMinimized(); }}};
    case 1:
      return {"restore", {[=] { Restore(window); }}};
    default: {
      const QSize size(dice.Between(1, 1300), dice.Between(1, 900));
      return {"resize", {[=] { window->showNormal(); }, [=] { window->resize(size); }}};
    }
  }
}

bool IsUsed(const QWidget* window) {
  return QApplication::activeWindow() == window && !window->isMinimized();
}

}  // namespace

Act MainAct(Dice& dice) {
  dialogRecord.boxesInARow = 0;
  QWidget* const window = help::FindMainWindow();
  if (!IsUsed(window) && dice.Chance(30)) return {"restore", {[=] { Restore(window); }}};
  const int kind = dice.Below(100);
  if (kind < 38) return ViewAct(dice);
  if (kind < 58) return KeyAct(dice);
  if (kind < 66) return MenuAct(dice);
  if (kind < 78) return ButtonAct(dice);
  if (kind < 87) return TreeAct(dice);
  if (kind < 90) return UndoAct(dice);
  if (kind < 94) return PartAct(dice);
  if (kind < 96) return ShortcutAct(dice);
  if (kind < 98) return CommandAct(dice);
  return SizeAct(dice);
}

// A choice that cannot be made now is made again.
Act NextAct(Dice& dice) {
  for (;;) {
    Act act;
    if (QWidget* const popup = QApplication::activePopupWidget()) {
      act = PopupAct(popup, dice);
    } else if (QWidget* const dialog = QApplication::activeModalWidget()) {
      act = DialogAct(dialog, dice);
    } else {
      act = MainAct(dice);
    }
    if (!act.inputs.empty()) return act;
  }
}

}  // namespace mw::monkey
