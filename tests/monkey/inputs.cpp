#include "tests/monkey/inputs.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>

namespace mw::monkey {
namespace {

constexpr int kWheelNotch = 120;  // eighths of a degree

struct Place {
  QWindow* window = nullptr;
  QPoint point;
};

Place PlaceOf(const Target& target) {
  if (!target.widget || !target.widget->isVisible()) return {};
  QWidget* const top = target.widget->window();
  return {top->windowHandle(), target.widget->mapTo(top, target.place)};
}

QWindow* KeyWindow() {
  if (QWindow* const window = QGuiApplication::focusWindow()) return window;
  QWidget* const window = help::FrontWindow();
  return window ? window->windowHandle() : nullptr;
}

}  // namespace

void SendMouse(QTest::MouseAction action, const Target& target, Qt::MouseButton button,
               Qt::KeyboardModifiers modifiers) {
  const Place place = PlaceOf(target);
  if (place.window) QTest::mouseEvent(action, place.window, button, modifiers, place.point);
}

void TurnWheel(const Target& target, int notches) {
  const Place place = PlaceOf(target);
  if (!place.window) return;
  QWheelEvent event(place.point, place.window->mapToGlobal(place.point), {},
                    QPoint(0, notches * kWheelNotch), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(place.window, &event);
}

void PressKey(int key, Qt::KeyboardModifiers modifiers, bool repeated) {
  QWindow* const window = KeyWindow();
  if (window) QTest::simulateEvent(window, true, key, modifiers, {}, repeated);
}

void ReleaseKey(int key, Qt::KeyboardModifiers modifiers) {
  QWindow* const window = KeyWindow();
  if (window) QTest::simulateEvent(window, false, key, modifiers, {}, false);
}

void ClickKey(int key, Qt::KeyboardModifiers modifiers) {
  QWindow* const window = KeyWindow();
  if (window) QTest::keyClick(window, static_cast<Qt::Key>(key), modifiers);
}

void TypeText(const QString& text) {
  QWindow* const window = KeyWindow();
  if (!window || text.isEmpty()) return;
  QTest::sendKeyEvent(QTest::Click, window, Qt::Key_unknown, text, {});
}

}  // namespace mw::monkey
