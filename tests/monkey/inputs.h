// Mouse, wheel and keys as the desktop sends them to a window, with every button and modifier. All
// of it runs on the thread of the windows; a target whose widget is gone or hidden gets nothing.
#pragma once

#include <QString>
#include <QTest>
#include <Qt>

#include "tools/help_tour/windows.h"

namespace mw::monkey {

using help::Target;

void SendMouse(QTest::MouseAction action, const Target& target, Qt::MouseButton button,
               Qt::KeyboardModifiers modifiers);
inline void MoveMouse(const Target& target, Qt::KeyboardModifiers modifiers = {}) {
  SendMouse(QTest::MouseMove, target, Qt::NoButton, modifiers);
}
inline void PressMouse(const Target& target, Qt::MouseButton button = Qt::LeftButton,
                       Qt::KeyboardModifiers modifiers = {}) {
  SendMouse(QTest::MousePress, target, button, modifiers);
}
inline void ReleaseMouse(const Target& target, Qt::MouseButton button = Qt::LeftButton,
                         Qt::KeyboardModifiers modifiers = {}) {
  SendMouse(QTest::MouseRelease, target, button, modifiers);
}
inline void ClickMouse(const Target& target, Qt::MouseButton button = Qt::LeftButton,
                       Qt::KeyboardModifiers modifiers = {}) {
  SendMouse(QTest::MouseClick, target, button, modifiers);
}
inline void DoubleClickMouse(const Target& target, Qt::MouseButton button = Qt::LeftButton) {
  SendMouse(QTest::MouseDClick, target, button, {});
}
void TurnWheel(const Target& target, int notches);

// To the window with the focus, else to the one in front.
void PressKey(int key, Qt::KeyboardModifiers modifiers = {}, bool repeated = false);
void ReleaseKey(int key, Qt::KeyboardModifiers modifiers = {});
void ClickKey(int key, Qt::KeyboardModifiers modifiers = {});
// As an input method hands it over: at once.
void TypeText(const QString& text);

}  // namespace mw::monkey
