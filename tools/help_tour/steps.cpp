// What the `data-do` words of the pages mean. The text of the element is what the reader reads, and
// so what is looked for, pressed or typed.
#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QSlider>

#include "core/game_random.h"
#include "tools/help_tour/gui.h"
#include "tools/help_tour/hands.h"
#include "tools/help_tour/tour.h"

namespace mw::help {
namespace {

constexpr int kClickTime = 300;  // milliseconds that a drag takes when the page does not say

QString InQuotes(const QString& text) { return '"' + text + '"'; }

QString Needed(const Step& step, const QString& name) {
  const QString value = step.data.value(name);
  if (value.isEmpty()) throw TourError("data-" + name + " is missing");
  return value;
}

// "0.5,0.3 0.6,0.4": places as parts of the widget's width and height.
QList<Target> Places(QWidget* widget, const QString& text) {
  QList<Target> places;
  for (const QString& pair : text.split(' ', Qt::SkipEmptyParts)) {
    places << Target{widget,
                     QPoint(qRound(pair.section(',', 0, 0).toDouble() * (widget->width() - 1)),
                            qRound(pair.section(',', 1, 1).toDouble() * (widget->height() - 1)))};
  }
  return places;
}

// In the 3D view, or in the widget of the window in front that `data-in` names.
QList<Target> PlacesOf(const Step& step) {
  const QString name = step.data.value("in", "3D View"), at = Needed(step, "at");
  QWidget* const widget = Await(InQuotes(name), [&] { return FindField<QWidget>(name); });
  return OnGui([&] { return Places(widget, at); });
}

template <typename Field>
Target FieldOf(const Step& step) {
  const QString name = Needed(step, "in");
  return *Await(InQuotes(name), [&]() -> MaybeTarget {
    auto* field = FindField<Field>(name);
    if (!field) return std::nullopt;
    return Target{field, field->rect().center()};
  });
}

void ChooseFromMenu(const Step& step) {
  for (const QString& entry : step.text.split(QChar(0x2192))) {  // the arrow between the entries
    const QString text = entry.simplified();
    Click(*Await("the menu entry " + InQuotes(text), [&] { return FindMenuEntry(text); }));
  }
}

Target ButtonTarget(const QString& text) {
  return *Await("the button " + InQuotes(text), [&]() -> MaybeTarget {
    QAbstractButton* const button = FindButton(text);
    if (!button) return std::nullopt;
    // Check boxes and radio buttons are pressed at their left end, where their mark is.
    constexpr int kMark = 8;
    const bool marked = button->isCheckable() && !button->text().isEmpty();
    return Target{button, QPoint(marked ? kMark : button->width() / 2, button->height() / 2)};
  });
}

void PressButton(const Step& step) { Click(ButtonTarget(step.text)); }

void SetCheckMark(const Step& step, bool on) {
  const Target target = ButtonTarget(step.text);
  const auto isOn = [&] {
    return static_cast<QAbstractButton*>(target.widget.data())->isChecked();
  };
  if (OnGui(isOn) != on) Click(target);
  if (OnGui(isOn) != on) throw TourError(on ? "stays unchecked" : "stays checked");
}

void TypeInto(const Step& step) {
  const Target field = FieldOf<QLineEdit>(step);
  Click(field);
  ClickKeys(QKeySequence("Ctrl+A"));
  Type(step.text);
}

bool IsListOpen() {
  return OnGui([] { return QApplication::activePopupWidget() != nullptr; });
}

bool ShowsRow(const Target& field, int row) {
  return OnGui([&] {
    const auto* list = static_cast<QComboBox*>(field.widget.data());
    return list && list->currentIndex() == row;
  });
}

// With the keyboard, so that long lists need no scrolling. A list that takes no focus is opened
// first; false when it did not stay open: a window manager that moves the focus closes it.
bool ChooseRow(const Target& field, int row) {
  constexpr int kAttempts = 100, kPause = 20;  // milliseconds
  const auto takeFocus = [&] {
    if (!field.widget || field.widget->focusPolicy() == Qt::NoFocus) return false;
    field.widget->setFocus(Qt::MouseFocusReason);
    return true;
  };
  if (OnGui(takeFocus)) {
    ClickKeys(QKeySequence(Qt::Key_Home));
    for (int i = 0; i < row; ++i) ClickKeys(QKeySequence(Qt::Key_Down));
    return ShowsRow(field, row);
  }
  Click(field);
  for (int attempt = 0; attempt < kAttempts && !IsListOpen(); ++attempt) Wait(kPause);
  ClickKeyInList(Qt::Key_Home);
  for (int i = 0; i < row; ++i) ClickKeyInList(Qt::Key_Down);
  ClickKeyInList(Qt::Key_Return);
  Await("the closed list", [] { return QApplication::activePopupWidget() == nullptr; });
  return ShowsRow(field, row);
}

void ChooseFromList(const Step& step) {
  constexpr int kAttempts = 5, kPause = 300;  // milliseconds
  const Target field = FieldOf<QComboBox>(step);
  const int row =
      OnGui([&] { return static_cast<QComboBox*>(field.widget.data())->findText(step.text); });
  if (row < 0) throw TourError("the list has no such entry");
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (ChooseRow(field, row)) return;
    Wait(kPause);
  }
  const QString shown = OnGui([&] {
    const auto* list = static_cast<QComboBox*>(field.widget.data());
    return list ? InQuotes(list->currentText()) : QString("nothing: it is gone");
  });
  throw TourError("the list does not take the entry but shows " + shown);
}

// To the value `data-to`, or the number that the page names.
void SetSlider(const Step& step) {
  const Target field = FieldOf<QSlider>(step);
  const int value = step.data.value("to", step.text).toInt();
  OnGui([&] { field.widget->setFocus(Qt::MouseFocusReason); });
  ClickKeys(QKeySequence(Qt::Key_Home));
  const auto shown = [&] { return static_cast<QSlider*>(field.widget.data())->value(); };
  for (int i = OnGui(shown); i < value; ++i) ClickKeys(QKeySequence(Qt::Key_Right));
  if (OnGui(shown) != value) throw TourError("the slider has no such value");
}

// A dialog that has just closed gives the keyboard back only after a while.
void AwaitKeyboard() {
  int attempt = 0;
  Await("the keyboard", [&] {
    QWidget* window = FrontWindow();
    return QApplication::activePopupWidget() || (window && BecomesActive(window, attempt++));
  });
}

void PressKeys(const Step& step) {
  AwaitKeyboard();
  const QKeySequence keys(step.data.value("key", step.text), QKeySequence::PortableText);
  const int times = step.data.value("times", "1").toInt();
  for (int i = 0; i < times; ++i) ClickKeys(keys);
  WaitForFrames();
}

void ClickPlaces(const Step& step) {
  for (const Target& place : PlacesOf(step)) {
    Click(place);
    WaitForFrames();
  }
}

void DragOverPlaces(const Step& step) {
  const double seconds = step.data.value("seconds").toDouble();
  Drag(PlacesOf(step), std::max(kClickTime, qRound(seconds * 1000)));
}

// A modifier stays down during the act, which begins at the first place.
void WithKey(const Step& step, void (*act)(const Step&)) {
  const int key = Needed(step, "key") == "Shift" ? Qt::Key_Shift : Qt::Key_Control;
  Move(PlacesOf(step).first());
  WaitForFrames();
  PressKey(key);
  act(step);
  ReleaseKey(key);
}

Target AwaitTreeItem(const Step& step) {
  const int number = step.data.value("number", "1").toInt();
  return *Await("the tree item", [&] { return FindTreeItem(step.text, number); });
}

void DragFromTree(const Step& step) {
  const Target from = AwaitTreeItem(step);
  const Target to = PlacesOf(step).first();
  Move(to);  // what lies there is in the picture
  WaitForFrames();
  Move(from);
  Press(from);
  constexpr QPoint kStart(30, 6);  // pixels; enough for the drag to begin
  Move({from.widget, from.place + kStart});
  Move(to);
  Wait(kClickTime);
  Move(to);
  Release(to);
  Wait(kClickTime);
}

void AwaitStatus(const Step& step) {
  Await("the status text", [&] {
    const QLabel* status = FindStatus();
    return status && status->text().simplified() == step.text;
  });
}

void AwaitDialog(const Step& step) {
  int attempt = 0;
  Await("the dialog", [&] {
    QWidget* dialog = FindDialog(step.text);
    return dialog && BecomesActive(dialog, attempt++);
  });
}

void AwaitEditor(const Step&) {
  int attempt = 0;
  Await("the editor without a dialog", [&] {
    QMainWindow* window = FindMainWindow();
    return window && !QApplication::activeModalWidget() && BecomesActive(window, attempt++);
  });
}

using Act = void (*)(const Step&);
const QHash<QString, Act>& Acts() {
  static const QHash<QString, Act> acts = {
      {"dialog", AwaitDialog},
      {"editor", AwaitEditor},
      {"status", AwaitStatus},
      {"menu", ChooseFromMenu},
      {"button", PressButton},
      {"check", [](const Step& step) { SetCheckMark(step, true); }},
      {"uncheck", [](const Step& step) { SetCheckMark(step, false); }},
      {"type", TypeInto},
      {"choose", ChooseFromList},
      {"slide", SetSlider},
      {"key", PressKeys},
      {"click", ClickPlaces},
      {"double-click", [](const Step& step) { DoubleClick(PlacesOf(step).first()); }},
      {"drag", DragOverPlaces},
      {"click-with-key", [](const Step& step) { WithKey(step, ClickPlaces); }},
      {"drag-with-key", [](const Step& step) { WithKey(step, DragOverPlaces); }},
      {"point", [](const Step& step) { Move(PlacesOf(step).first()); }},
      {"row",
       [](const Step& step) { Click(*Await("the row", [&] { return FindListRow(step.text); })); }},
      {"tree", [](const Step& step) { Click(AwaitTreeItem(step)); }},
      {"open-tree", [](const Step& step) { DoubleClick(AwaitTreeItem(step)); }},
      {"drag-tree", DragFromTree},
      {"wait", [](const Step& step) { Wait(qRound(Needed(step, "seconds").toDouble() * 1000)); }},
      // The same chances for every run.
      {"seed", [](const Step&) { OnGui([] { SeedGameRandom(1); }); }},
  };
  return acts;
}

}  // namespace

void DoStep(const Step& step) {
  const Act act = Acts().value(step.action);
  if (!act) throw TourError("no step is called so");
  act(step);
}

}  // namespace mw::help
