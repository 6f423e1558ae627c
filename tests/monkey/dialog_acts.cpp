// What is done to dialogs and popups, and how they are left.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMessageBox>

#include "app/command_ids.h"
#include "tests/monkey/acts.h"
#include "tests/monkey/inputs.h"

namespace mw::monkey {

DialogRecord dialogRecord;

namespace {

constexpr int kActsInDialog = 30, kActsInPopup = 8;
constexpr const char* kCount = "monkeyActs";

int CountAct(QWidget* window) {
  const int count = window->property(kCount).toInt() + 1;
  window->setProperty(kCount, count);
  if (count > dialogRecord.longestStay) {
    dialogRecord.longestStay = count;
    dialogRecord.longestName = NameOf(window);
  }
  return count;
}

template <typename Widget>
QList<Widget*> Usable(const QWidget* window) {
  QList<Widget*> usable;
  for (auto* child : window->findChildren<Widget*>()) {
    if (child->isVisible() && child->isEnabled() && child->window() == window) usable << child;
  }
  return usable;
}

Act SomeButton(QWidget* dialog, Dice& dice) {
  const auto buttons = Usable<QAbstractButton>(dialog);
  if (buttons.isEmpty()) return {"Escape", {[] { ClickKey(Qt::Key_Escape); }}};
  return ActOn(dice.Pick(buttons), dice);
}

QAbstractButton* CancelButton(QWidget* dialog) {
  for (auto* button : Usable<QAbstractButton>(dialog)) {
    const QString text = help::Plain(button->text());
    for (const char* word : {"Cancel", "Close", "Done", "No", "OK"}) {
      if (text == word) return button;
    }
  }
  return nullptr;
}

Act Leave(QWidget* dialog, int attempt, Dice& dice) {
  const QString name = NameOf(dialog);
  switch (attempt % 4) {
    case 0:
      return {"Escape from " + name, {[] { ClickKey(Qt::Key_Escape); }}};
    case 1:
      if (QAbstractButton* const button = CancelButton(dialog)) return ActOn(button, dice);
      return SomeButton(dialog, dice);
    case 2:
      return {"close " + name, {[dialog = QPointer(dialog)] {
                if (dialog) dialog->close();
              }}};
    default:
      if (qobject_cast<QMessageBox*>(dialog)) {
        return {"Return in " + name, {[] { ClickKey(Qt::Key_Return); }}};
      }
      return SomeButton(dialog, dice);
  }
}

// A button that was pressed before the dialog came keeps the mouse where that was.
Act LetGo(QWidget* dialog) {
  const Target at{dialog, QPoint(1, 1)};
  return {"let go of the mouse", {[=] {
            for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
              ReleaseMouse(at, button);
            }
          }}};
}

Act BoxAct(QMessageBox* box, Dice& dice) {
  ++dialogRecord.boxesInARow;
  if (dice.Chance(10)) return {"Escape from box", {[] { ClickKey(Qt::Key_Escape); }}};
  if (dice.Chance(10)) return {"Return in box", {[] { ClickKey(Qt::Key_Return); }}};
  Act act = SomeButton(box, dice);
  act.text += ": " + box->text().simplified().left(80);
  return act;
}

// Nothing that renames, deletes or makes files: those keys and menus are Qt's own.
Act FileDialogAct(QFileDialog* dialog, Dice& dice) {
  const auto fields = Usable<QLineEdit>(dialog);
  const auto lists = Usable<QListView>(dialog);
  switch (dice.Below(5)) {
    case 0:
      if (!fields.isEmpty()) return ActOn(fields.first(), dice);
      break;
    case 1:
    case 2:
      if (!lists.isEmpty()) return ActOn(dice.Pick(lists), dice);
      break;
    case 3:
      return {"Return in file dialog", {[] { ClickKey(Qt::Key_Return); }}};
    default:
      break;
  }
  return {"Escape from file dialog", {[] { ClickKey(Qt::Key_Escape); }}};
}

bool IsPart(const QWidget* widget) {
  // Their own parts are found by themselves or by the one that they are a part of.
  return qobject_cast<const QLabel*>(widget) || !widget->children().isEmpty();
}

// Popups, views and fields consist of several widgets; these are acted on as one.
QWidget* SomePart(QWidget* dialog, Dice& dice) {
  QList<QWidget*> parts;
  for (QWidget* widget : Usable<QWidget>(dialog)) {
    const bool whole = widget->inherits("QAbstractItemView") || widget->inherits("QComboBox") ||
                       widget->inherits("QAbstractSpinBox") || widget->inherits("QLineEdit");
    if (whole || !IsPart(widget)) parts << widget;
  }
  return parts.isEmpty() ? dialog : dice.Pick(parts);
}

}  // namespace

Act PopupAct(QWidget* popup, Dice& dice) {
  const int count = CountAct(popup);
  if (count > 2 * kActsInPopup) {
    return {"close " + NameOf(popup), {[popup = QPointer(popup)] {
              if (popup) popup->close();
            }}};
  }
  auto* const menu = qobject_cast<QMenu*>(popup);
  const bool leaves = count > kActsInPopup || dice.Chance(20);
  if (leaves) return {"Escape from " + NameOf(popup), {[] { ClickKey(Qt::Key_Escape); }}};
  if (!menu) {
    const auto views = Usable<QAbstractItemView>(popup);
    if (!views.isEmpty() && dice.Chance(80)) return ActOn(views.first(), dice);
    return {"Return in popup", {[] { ClickKey(Qt::Key_Return); }}};
  }
  QList<QAction*> entries;
  for (QAction* action : menu->actions()) {
    if (action->property("controlId").toInt() != kCommandExit) entries << action;
  }
  if (entries.isEmpty() || dice.Chance(30)) {
    const int key = dice.Pick(std::array{Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right});
    return {QString("key %1 in menu").arg(key, 0, 16), {[=] { ClickKey(key); }}};
  }
  QAction* const entry = dice.Pick(entries);
  const Target at{menu, menu->actionGeometry(entry).center()};
  return {"menu entry " + help::Plain(entry->text()), {[=] { ClickMouse(at); }}};
}

Act DialogAct(QWidget* dialog, Dice& dice) {
  const int count = CountAct(dialog);
  if (QApplication::mouseButtons() != Qt::NoButton && dice.Chance(50)) return LetGo(dialog);
  if (count > kActsInDialog) return Leave(dialog, count, dice);
  if (auto* box = qobject_cast<QMessageBox*>(dialog)) return BoxAct(box, dice);
  dialogRecord.boxesInARow = 0;
  if (auto* files = qobject_cast<QFileDialog*>(dialog)) return FileDialogAct(files, dice);
  switch (dice.Below(12)) {
    case 0:
      return Leave(dialog, dice.Below(4), dice);
    case 1:
      return {"Return in " + NameOf(dialog), {[] { ClickKey(Qt::Key_Return); }}};
    case 2:
      if (QWidget* view = help::FindView()) return ActOn(view, dice);  // behind the dialog
      [[fallthrough]];
    case 3: {
      const int key = SomeKey(dice);
      return {QString("key %1 in ").arg(key, 0, 16) + NameOf(dialog), {[=] { ClickKey(key); }}};
    }
    default:
      return ActOn(SomePart(dialog, dice), dice);
  }
}

Act LeaveAct(Dice& dice) {
  if (QWidget* const popup = QApplication::activePopupWidget()) {
    popup->setProperty(kCount, popup->property(kCount).toInt() + kActsInPopup);
    return PopupAct(popup, dice);
  }
  QWidget* const dialog = QApplication::activeModalWidget();
  if (!dialog) return {};
  const int count = CountAct(dialog);
  if (QApplication::mouseButtons() != Qt::NoButton) return LetGo(dialog);
  if (auto* box = qobject_cast<QMessageBox*>(dialog)) return BoxAct(box, dice);
  return Leave(dialog, count, dice);
}

}  // namespace mw::monkey
