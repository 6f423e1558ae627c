// What is done to single widgets, by their kind.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QWidget>

#include "tests/monkey/acts.h"
#include "tests/monkey/inputs.h"

namespace mw::monkey {
namespace {

Act Keys(const QString& name, std::initializer_list<int> keys, Dice& dice) {
  const int key = std::data(keys)[dice.Below(static_cast<int>(keys.size()))];
  return {QString("key %1 in %2").arg(key, 0, 16).arg(name), {[=] { ClickKey(key); }}};
}

Act OnView(QAbstractItemView* view, Dice& dice) {
  const QString name = NameOf(view);
  const QWidget* const area = view->viewport();
  const Target at{view->viewport(), SomePlace(area, dice)};
  switch (dice.Below(6)) {
    case 0:
      return {"double click in " + name, {[=] { DoubleClickMouse(at); }}};
    case 1:
      return {"wheel in " + name, {[=, n = dice.Between(-5, 5)] { TurnWheel(at, n); }}};
    case 2:
      return Keys(name, {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown},
                  dice);
    default:
      return {"click in " + name, {[=] { ClickMouse(at); }}};
  }
}

Act OnCombo(QComboBox* combo, Dice& dice) {
  const QString name = NameOf(combo);
  const Target at{combo, combo->rect().center()};
  switch (dice.Below(4)) {
    case 0:
      return {"wheel on " + name, {[=, n = dice.Between(-3, 3)] { TurnWheel(at, n); }}};
    case 1:
      return Keys(name, {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_F4}, dice);
    default:
      return {"click on " + name, {[=] { ClickMouse(at); }}};
  }
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

Act OnSlider(QAbstractSlider* slider, Dice& dice) {
  const QString name = NameOf(slider);
  const Target from{slider, SomePlace(slider, dice)}, to{slider, SomePlace(slider, dice)};
  switch (dice.Below(4)) {
    case 0:
      return {"drag " + name,
              {[=] { PressMouse(from); }, [=] { MoveMouse(to); }, [=] { ReleaseMouse(to); }}};
    case 1:
      return {"wheel on " + name, {[=, n = dice.Between(-9, 9)] { TurnWheel(from, n); }}};
    case 2:
      return Keys(name, {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp},
                  dice);
    default:
      return {"click on " + name, {[=] { ClickMouse(from); }}};
  }
}

Act OnButton(QAbstractButton* button, Dice& dice) {
  constexpr int kMark = 8;  // check boxes and radio buttons are pressed at their left end
  const bool marked = button->isCheckable() && !button->text().isEmpty();
  const Target at{button, QPoint(marked ? kMark : button->width() / 2, button->height() / 2)};
  const QString name = NameOf(button);
  if (dice.Chance(5)) return {"double click on " + name, {[=] { DoubleClickMouse(at); }}};
  return {"click on " + name, {[=] { ClickMouse(at); }}};
}

Act OnPainted(QWidget* widget, Dice& dice) {
  const QString name = NameOf(widget);
  const Target from{widget, SomePlace(widget, dice)}, to{widget, SomePlace(widget, dice)};
  const auto button = dice.Pick(std::array{Qt::LeftButton, Qt::LeftButton, Qt::RightButton});
  switch (dice.Below(4)) {
    case 0:
      return {"drag in " + name,
              {[=] { PressMouse(from, button); }, [=] { MoveMouse(to); },
               [=] { ReleaseMouse(to, button); }}};
    case 1:
      return {"double click in " + name, {[=] { DoubleClickMouse(from); }}};
    default:
      return {"click in " + name, {[=] { ClickMouse(from, button); }}};
  }
}

}  // namespace

Act ActOn(QWidget* widget, Dice& dice) {
  if (auto* view = qobject_cast<QAbstractItemView*>(widget)) return OnView(view, dice);
  if (auto* combo = qobject_cast<QComboBox*>(widget)) return OnCombo(combo, dice);
  if (qobject_cast<QLineEdit*>(widget) || qobject_cast<QAbstractSpinBox*>(widget)) {
    return OnField(widget, dice);
  }
  if (auto* slider = qobject_cast<QAbstractSlider*>(widget)) return OnSlider(slider, dice);
  if (auto* button = qobject_cast<QAbstractButton*>(widget)) return OnButton(button, dice);
  return OnPainted(widget, dice);
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
      Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Space, Qt::Key_PageUp, Qt::Key_PageDown,
      Qt::Key_Left,   Qt::Key_Up,      Qt::Key_Right, Qt::Key_Down,   Qt::Key_Delete,
      Qt::Key_Escape, Qt::Key_Return,  Qt::Key_Home,  Qt::Key_End,    Qt::Key_F1,
      Qt::Key_F2,     Qt::Key_F3,      Qt::Key_F5,    Qt::Key_F6,     Qt::Key_F7,
      Qt::Key_F8,     Qt::Key_Plus,    Qt::Key_Minus};
  if (dice.Chance(40)) return dice.Pick(kNamed);
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
