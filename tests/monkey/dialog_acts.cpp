// What is done to dialogs and popups, and how they are left.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QKeySequence>
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

Act KeyIn(const QWidget* window, int key) {
  return {QKeySequence(key).toString() + " in " + NameOf(window), {[=] { ClickKey(key); }}};
}

Act Close(QWidget* window) {
  return {"close " + NameOf(window), {[window = QPointer(window)] {
            if (window) window->close();
          }}};
}

Act SomeButton(QWidget* dialog, Dice& dice) {
  const auto buttons = Usable<QAbstractButton>(dialog);
  return buttons.isEmpty() ? KeyIn(dialog, Qt::Key_Escape) : ActOn(dice.Pick(buttons), dice);
}

// The one that is most likely to lead out.
Act LeavingButton(QWidget* dialog, Dice& dice) {
  static const QStringList kTexts{"Cancel", "Close", "Done", "No", "OK"};
  for (auto* button : Usable<QAbstractButton>(dialog)) {
    if (kTexts.contains(help::Plain(button->text()))) return ActOn(button, dice);
  }
  return SomeButton(dialog, dice);
}

Act Leave(QWidget* dialog, int attempt, Dice& dice) {
  if (attempt % 4 == 0) return KeyIn(dialog, Qt::Key_Escape);
  if (attempt % 4 == 1) return LeavingButton(dialog, dice);
  if (attempt % 4 == 2) return Close(dialog);
  const bool isBox = qobject_cast<QMessageBox*>(dialog);
  return isBox ? KeyIn(dialog, Qt::Key_Return) : SomeButton(dialog, dice);
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
  Act act = dice.Chance(10)   ? KeyIn(box, Qt::Key_Escape)
            : dice.Chance(10) ? KeyIn(box, Qt::Key_Return)
                              : SomeButton(box, dice);
  act.text += ": " + box->text().simplified().left(80);
  return act;
}

// Nothing that renames, deletes or makes files: those keys and menus are Qt's own.
Act FileDialogAct(QFileDialog* dialog, Dice& dice) {
  // What is saved goes where it is offered, into the folder that the editor may spoil.
  if (dialog->acceptMode() == QFileDialog::AcceptSave) {
    const bool isHere = dialog->directory() == QDir::current();
    return KeyIn(dialog, isHere && dice.Below(2) == 0 ? Qt::Key_Return : Qt::Key_Escape);
  }
  const auto fields = Usable<QLineEdit>(dialog);
  const auto lists = Usable<QListView>(dialog);
  const int kind = dice.Below(5);
  if (kind == 0 && !fields.isEmpty()) return ActOn(fields.first(), dice);
  if (kind <= 2 && !lists.isEmpty()) return ActOn(dice.Pick(lists), dice);
  return KeyIn(dialog, kind == 3 ? Qt::Key_Return : Qt::Key_Escape);
}

// Views, lists and fields consist of several widgets; these are acted on as one.
QWidget* SomePart(QWidget* dialog, Dice& dice) {
  QList<QWidget*> parts;
  for (QWidget* widget : Usable<QWidget>(dialog)) {
    const bool whole = widget->inherits("QAbstractItemView") || widget->inherits("QComboBox") ||
                       widget->inherits("QAbstractSpinBox") || widget->inherits("QLineEdit");
    const bool single = widget->children().isEmpty() && !widget->inherits("QLabel");
    if (whole || single) parts << widget;
  }
  return parts.isEmpty() ? dialog : dice.Pick(parts);
}

Act MenuEntryAct(QMenu* menu, Dice& dice) {
  QList<QAction*> entries;
  for (QAction* action : menu->actions()) {
    if (action->property("controlId").toInt() != kCommandExit) entries << action;
  }
  if (entries.isEmpty() || dice.Chance(30)) {
    const std::array kKeys{Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right};
    return KeyIn(menu, dice.Pick(kKeys));
  }
  QAction* const entry = dice.Pick(entries);
  const Target at{menu, menu->actionGeometry(entry).center()};
  return {"menu entry " + help::Plain(entry->text()), {[=] { ClickMouse(at); }}};
}

}  // namespace

Act PopupAct(QWidget* popup, Dice& dice) {
  const int count = CountAct(popup);
  if (count > 2 * kActsInPopup) return Close(popup);
  if (count > kActsInPopup || dice.Chance(20)) return KeyIn(popup, Qt::Key_Escape);
  if (auto* const menu = qobject_cast<QMenu*>(popup)) return MenuEntryAct(menu, dice);
  const auto views = Usable<QAbstractItemView>(popup);
  if (!views.isEmpty() && dice.Chance(80)) return ActOn(views.first(), dice);
  return KeyIn(popup, Qt::Key_Return);
}

Act DialogAct(QWidget* dialog, Dice& dice) {
  const int count = CountAct(dialog);
  if (QApplication::mouseButtons() != Qt::NoButton && dice.Chance(50)) return LetGo(dialog);
  if (count > kActsInDialog) return Leave(dialog, count, dice);
  if (auto* box = qobject_cast<QMessageBox*>(dialog)) return BoxAct(box, dice);
  dialogRecord.boxesInARow = 0;
  if (auto* files = qobject_cast<QFileDialog*>(dialog)) return FileDialogAct(files, dice);
  const int kind = dice.Below(12);
  if (kind == 0) return Leave(dialog, dice.Below(4), dice);
  if (kind == 1) return KeyIn(dialog, Qt::Key_Return);
  if (kind == 2 && help::FindView()) return ActOn(help::FindView(), dice);  // behind the dialog
  if (kind <= 3) return KeyIn(dialog, SomeKey(dice));
  return ActOn(SomePart(dialog, dice), dice);
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
