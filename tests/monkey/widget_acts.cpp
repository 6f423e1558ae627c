// What is done to single widgets, by their kind.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QWidget>
#include <vector>

#include "tests/monkey/acts.h"
#include "tests/monkey/inputs.h"

namespace mw::monkey {
namespace {

// What is usual for a kind of widget, in percent; what is left are clicks.
struct Usual {
  int doubleClicks = 0, drags = 0, wheel = 0, keys = 0;
  std::vector<int> theKeys = {};
  std::vector<Qt::MouseButton> buttons = {Qt::LeftButton};
};

Act OnPlaces(const QWidget* widget, const Target& from, const Usual& usual, Dice& dice) {
  constexpr int kMostNotches = 9;
  const QString name = NameOf(widget);
  const Target to{from.widget, SomePlace(from.widget, dice)};
  const auto button = dice.Pick(usual.buttons);
  int kind = dice.Below(100);
  if ((kind -= usual.doubleClicks) < 0) {
    return {"double click on " + name, {[=] { DoubleClickMouse(from, button); }}};
  }
  if ((kind -= usual.drags) < 0) {
    return {"drag in " + name,
            {[=] { PressMouse(from, button); }, [=] { MoveMouse(to); },
             [=] { ReleaseMouse(to, button); }}};
  }
  if ((kind -= usual.wheel) < 0) {
    const int notches = dice.Between(-kMostNotches, kMostNotches);
    return {"wheel on " + name, {[=] { TurnWheel(from, notches); }}};
  }
  if ((kind -= usual.keys) < 0) {
    const int key = dice.Pick(usual.theKeys);
    return {QString("key %1 in %2").arg(key, 0, 16).arg(name), {[=] { ClickKey(key); }}};
  }
  return {"click on " + name, {[=] { ClickMouse(from, button); }}};
}

Act OnField(QWidget* field, Dice& dice) {
  const QString name = NameOf(field), text = SomeText(dice);
  const Target at{field, field->rect().center()};
  Act act{"type '" + text.left(40) + "' into " + name, {[=] { ClickMouse(at); }}};
  if (dice.Chance(70)) act.inputs.push_back([] { ClickKey(Qt::Key_A, Qt::ControlModifier); });
  if (dice.Chance(15)) act.inputs.push_back([] { ClickKey(Qt::Key_Delete); });
  act.inputs.push_back([=] { TypeText(text); });
  const int end =
      dice.Pick(std::array{0, 0, int(Qt::Key_Tab), int(Qt::Key_Up), int(Qt::Key_Return)});
  if (end != 0) act.inputs.push_back([=] { ClickKey(end); });
  return act;
}

// Check boxes and radio buttons are pressed at their left end.
QPoint PlaceOf(const QAbstractButton* button) {
  constexpr int kMark = 8;
  const bool marked = button->isCheckable() && !button->text().isEmpty();
  return {marked ? kMark : button->width() / 2, button->height() / 2};
}

}  // namespace

Act ActOn(QWidget* widget, Dice& dice) {
  const Target somewhere{widget, SomePlace(widget, dice)};
  if (auto* view = qobject_cast<QAbstractItemView*>(widget)) {
    const Usual usual{
        .doubleClicks = 17,
        .wheel = 17,
        .keys = 17,
        .theKeys = {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown}};
    return OnPlaces(view, {view->viewport(), SomePlace(view->viewport(), dice)}, usual, dice);
  }
  if (qobject_cast<QComboBox*>(widget)) {
    const Usual usual{.wheel = 25,
                      .keys = 25,
                      .theKeys = {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_F4}};
    return OnPlaces(widget, {widget, widget->rect().center()}, usual, dice);
  }
  if (qobject_cast<QLineEdit*>(widget) || qobject_cast<QAbstractSpinBox*>(widget)) {
    return OnField(widget, dice);
  }
  if (qobject_cast<QAbstractSlider*>(widget)) {
    const Usual usual{
        .drags = 25,
        .wheel = 25,
        .keys = 25,
        .theKeys = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp}};
    return OnPlaces(widget, somewhere, usual, dice);
  }
  if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
    return OnPlaces(widget, {widget, PlaceOf(button)}, {.doubleClicks = 5}, dice);
  }
  const Usual painted{.doubleClicks = 25,
                      .drags = 25,
                      .buttons = {Qt::LeftButton, Qt::LeftButton, Qt::RightButton}};
  return OnPlaces(widget, somewhere, painted, dice);
}

// Nothing that names a place outside the working folder: typed paths may become folders.
QString SomeText(Dice& dice) {
  static const QStringList texts =
      QStringList{"", " ", "\t", QString(3, QChar(0x6F22)), QString(300, 'x'), QString(5000, '9')} +
      QString(
          "0|1|-1|2|10|0.5|100|255|256|1024|-0.0001|1e38|-1e38|1e-40|99999999999999999999|"
          "2147483648|-2147483649|nan|inf|1,5|1.2.3|0x10|%s%n%d|\"quoted\"|a b|Monkey_7|"
          "Harbour_Point|mapwright|CON|rem|*|_|H\u00fcgel \u00e4\u00f6\u00fc\u00df")
          .split('|');
  return dice.Chance(30) ? QString::number(dice.Between(-100, 5000) / 10.0) : dice.Pick(texts);
}

int SomeKey(Dice& dice) {
  static constexpr std::array kNamed{
      Qt::Key_Tab,      Qt::Key_Backtab, Qt::Key_Space,  Qt::Key_PageUp,
      Qt::Key_PageDown, Qt::Key_Left,    Qt::Key_Up,     Qt::Key_Right,
      Qt::Key_Down,     Qt::Key_Delete,  Qt::Key_Escape, Qt::Key_Return,
      Qt::Key_Home,     Qt::Key_End,     Qt::Key_Plus,   Qt::Key_Minus};
  if (dice.Chance(30)) return dice.Pick(kNamed);
  if (dice.Chance(15)) return Qt::Key_F1 + dice.Below(8);
  if (dice.Chance(25)) return Qt::Key_0 + dice.Below(10);
  return Qt::Key_A + dice.Below(26);
}

Qt::KeyboardModifiers SomeModifiers(Dice& dice) {
  static constexpr std::array<Qt::KeyboardModifier, 4> kModifiers{
      Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier, Qt::KeypadModifier};
  Qt::KeyboardModifiers modifiers;
  while (dice.Chance(25)) modifiers |= dice.Pick(kModifiers);
  return modifiers;
}

QPoint SomePlace(const QWidget* widget, Dice& dice) {
  return {dice.Below(widget->width()), dice.Below(widget->height())};
}

QString NameOf(const QWidget* widget) {
  QString name = widget->objectName();
  if (name.isEmpty()) name = widget->toolTip();
  if (name.isEmpty()) name = widget->accessibleName();
  return QString::fromLatin1(widget->metaObject()->className()) + ' ' + name + " of '" +
         widget->window()->windowTitle() + '\'';
}

}  // namespace mw::monkey
