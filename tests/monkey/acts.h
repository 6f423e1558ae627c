// What the monkey does next: something to the popup, dialog or window in front.
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "tests/monkey/dice.h"

namespace mw::monkey {

// One random event, such as a click or a drag: a line for the log, and its inputs, which are to be
// sent one after another to the thread of the windows.
struct Act {
  QString text;
  std::vector<std::function<void()>> inputs;
};

// All of these run on the thread of the windows.

Act NextAct(Dice& dice);
// To a widget of the window in front: what is usual for its kind.
Act ActOn(QWidget* widget, Dice& dice);
// To a popup or dialog: every one is left after some thirty acts.
Act PopupAct(QWidget* popup, Dice& dice);
Act DialogAct(QWidget* dialog, Dice& dice);
// The next attempt to leave what is in front; nothing when that is the main window.
Act LeaveAct(Dice& dice);
// To the main window and its parts.
Act MainAct(Dice& dice);

// Something to type: numbers out of every range, long and strange texts.
QString SomeText(Dice& dice);
int SomeKey(Dice& dice);
Qt::KeyboardModifiers SomeModifiers(Dice& dice);
QPoint SomePlace(const QWidget* widget, Dice& dice);
QString NameOf(const QWidget* widget);

// How many acts in a row went to message boxes that came one after another, and the most that a
// dialog or popup took to be left.
struct DialogRecord {
  int boxesInARow = 0, longestStay = 0;
  QString longestName;
};
extern DialogRecord dialogRecord;

}  // namespace mw::monkey
