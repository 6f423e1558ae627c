// The reader's mouse and keyboard: input events as the desktop sends them to a window, so that
// menus, dialogs in front, focus and shortcuts decide what becomes of them. For the tour's thread.
#pragma once

#include <QKeySequence>
#include <QList>

#include "tools/help_tour/windows.h"

namespace mw::help {

void Move(const Target& target);
void Press(const Target& target);
void Release(const Target& target);
void Click(const Target& target);
void DoubleClick(const Target& target);
// From the first place over the others to the last with the left button held, in `milliseconds`.
void Drag(const QList<Target>& places, int milliseconds);

void PressKey(int key);
void ReleaseKey(int key);
// Each key with its modifiers, as "Ctrl+S".
void ClickKeys(const QKeySequence& keys);
// To the list of a field, as long as it is open: without it the dialog would take the key.
void ClickKeyInList(Qt::Key key);
void Type(const QString& text);

// How often a button of the mouse or a key was pressed; a modifier held with a key counts with it.
int CountPresses();

// Until the view has drawn what the input before has changed; at once when it is at rest.
void WaitForFrames(int count = 2);
void Wait(int milliseconds);

}  // namespace mw::help
