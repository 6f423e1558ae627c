// Finds windows, buttons, fields, menu entries and list rows by the texts that a reader of the help
// sees on them. All of it runs on the thread of the windows; null or empty when it is not there.
#pragma once

#include <QPoint>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <optional>

class QAbstractButton;
class QAction;
class QLabel;
class QMainWindow;

namespace mw::help {

// A place to click at, in the widget's own pixels.
struct Target {
  QPointer<QWidget> widget;
  QPoint place;
};
using MaybeTarget = std::optional<Target>;

// Without mnemonic marks and key text, with single spaces.
QString Plain(const QString& caption);

QMainWindow* FindMainWindow();
// The open popup, else the innermost dialog, else the main window.
QWidget* FrontWindow();
// The innermost dialog, when it has this title.
QWidget* FindDialog(const QString& title);
// Whether the window is the active one. Of many changes that follow each other at once the window
// manager may miss one, and leaves the focus where it was; so of many attempts, counted from 0,
// some ask for it again, and some make the main window an icon and a window again.
bool BecomesActive(QWidget* window, int attempt);
QWidget* FindView();
QLabel* FindStatus();

// In the window in front, by text, else by tool tip; only one that can be pressed.
QAbstractButton* FindButton(const QString& text);
// In the window in front, by its label, accessible name or tool tip.
template <typename Field>
Field* FindField(const QString& name);

// The entry of the menu bar or of the open menu.
MaybeTarget FindMenuEntry(const QString& text);
// The row of the list in the window in front.
MaybeTarget FindListRow(const QString& text);
// The item of the level tree with this text, behind which its game modes may stand in parentheses:
// of several the `number`th from the top, from 1.
MaybeTarget FindTreeItem(const QString& text, int number = 1);

}  // namespace mw::help
