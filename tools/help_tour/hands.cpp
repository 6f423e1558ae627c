#include "tools/help_tour/hands.h"

#include <QElapsedTimer>
#include <QTest>
#include <atomic>

#include "app/ui/gl_widget.h"
#include "tools/help_tour/gui.h"

namespace mw::help {
namespace {

enum class Pointer { Move, Press, Release, Click, DoubleClick };

constexpr int kFrameTime = 40, kFramePatience = 1000;  // milliseconds
constexpr int kStepsOfDrag = 12;

std::atomic<int> presses = 0;

// Of the keys that are down; the desktop tells them with each event of the mouse.
Qt::KeyboardModifiers heldModifiers;

Qt::KeyboardModifier ModifierOf(int key) {
  switch (key) {
    case Qt::Key_Control:
      return Qt::ControlModifier;
    case Qt::Key_Shift:
      return Qt::ShiftModifier;
    default:
      return Qt::NoModifier;
  }
}

void SendPointer(Pointer kind, const Target& target, Qt::KeyboardModifiers modifiers) {
  if (!target.widget) return;
  QWidget* const top = target.widget->window();
  QWindow* const window = top->windowHandle();
  const QPoint place = target.widget->mapTo(top, target.place);
  switch (kind) {
    case Pointer::Move:
      return QTest::mouseEvent(QTest::MouseMove, window, Qt::NoButton, modifiers, place);
    case Pointer::Press:
      return QTest::mousePress(window, Qt::LeftButton, modifiers, place);
    case Pointer::Release:
      return QTest::mouseRelease(window, Qt::LeftButton, modifiers, place);
    case Pointer::Click:
      return QTest::mouseClick(window, Qt::LeftButton, modifiers, place);
    case Pointer::DoubleClick:
      return QTest::mouseDClick(window, Qt::LeftButton, modifiers, place);
  }
}

QWindow* KeyWindow() {
  if (QWindow* window = QGuiApplication::focusWindow()) return window;
  QWidget* const window = FrontWindow();
  return window ? window->windowHandle() : nullptr;
}

void Point(Pointer kind, const Target& target) {
  presses += kind == Pointer::DoubleClick ? 2 : kind == Pointer::Press || kind == Pointer::Click;
  Send([=, modifiers = heldModifiers] { SendPointer(kind, target, modifiers); });
}

Target Between(const Target& from, const Target& to, int step) {
  if (from.widget != to.widget) return step < kStepsOfDrag ? from : to;
  return {to.widget, from.place + (to.place - from.place) * step / kStepsOfDrag};
}

}  // namespace

void Move(const Target& target) { Point(Pointer::Move, target); }
void Press(const Target& target) { Point(Pointer::Press, target); }
void Release(const Target& target) { Point(Pointer::Release, target); }

// The mouse is there before it clicks: what lies under it is found from the last picture.
void Click(const Target& target) {
  Move(target);
  WaitForFrames();
  Point(Pointer::Click, target);
}

void DoubleClick(const Target& target) {
  Move(target);
  WaitForFrames();
  Point(Pointer::DoubleClick, target);
}

void Drag(const QList<Target>& places, int milliseconds) {
  Move(places.first());
  WaitForFrames();
  Press(places.first());
  const int legs = std::max(1, static_cast<int>(places.size()) - 1);
  const int pause = milliseconds / (legs * kStepsOfDrag);
  for (int leg = 0; leg < legs; ++leg) {
    const Target& from = places[leg];
    const Target& to = places[std::min<qsizetype>(leg + 1, places.size() - 1)];
    for (int step = 1; step <= kStepsOfDrag; ++step) {
      Move(Between(from, to, step));
      Wait(pause);
    }
  }
  WaitForFrames();
  Release(places.last());
}

void PressKey(int key) {
  ++presses;
  heldModifiers |= ModifierOf(key);
  Send([key] { QTest::keyPress(KeyWindow(), static_cast<Qt::Key>(key)); });
}

void ReleaseKey(int key) {
  heldModifiers &= ~Qt::KeyboardModifiers(ModifierOf(key));
  Send([key] { QTest::keyRelease(KeyWindow(), static_cast<Qt::Key>(key)); });
}

void ClickKeys(const QKeySequence& keys) {
  for (int i = 0; i < keys.count(); ++i) {
    ++presses;
    const QKeyCombination key = keys[static_cast<unsigned>(i)];
    Send([key] { QTest::keyClick(KeyWindow(), key.key(), key.keyboardModifiers()); });
  }
}

void ClickKeyInList(Qt::Key key) {
  ++presses;
  Send([key] {
    if (QApplication::activePopupWidget()) QTest::keyClick(KeyWindow(), key);
  });
}

void Type(const QString& text) {
  for (const QChar letter : text) {
    ++presses;
    Send([letter] { QTest::keyClick(KeyWindow(), letter.toLatin1()); });
  }
}

int CountPresses() { return presses; }

void WaitForFrames(int count) {
  std::atomic<int> drawn = 0;
  const auto connection = OnGui([&] {
    auto* view = qobject_cast<GlWidget*>(FindView());
    return view ? QObject::connect(view, &GlWidget::frameShown, view, [&] { ++drawn; })
                : QMetaObject::Connection();
  });
  QElapsedTimer time;
  time.start();
  while (drawn < count && !time.hasExpired(count * kFrameTime)) Wait(1);
  // Slow frames are waited for as long as they come at all.
  while (drawn > 0 && drawn < count && !time.hasExpired(kFramePatience)) Wait(1);
  OnGui([&] { QObject::disconnect(connection); });
}

void Wait(int milliseconds) {
  QThread::msleep(static_cast<unsigned long>(milliseconds));
  OnGui([] {});
}

}  // namespace mw::help
