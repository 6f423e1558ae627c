// Routes every mouse event of the 3D view and every key to the active mode's tool, to the camera or
// to a command, and keeps the rubber-band rectangle.
#pragma once

#include <span>

#include "app/command_ids.h"
#include "core/editor_state.h"

namespace mw {

enum class MouseButton : int { None = 0, Left = 1, Middle = 2, Right = 3 };
enum class MouseEvent : int { Press = 0, Release = 1, Move = 2, DoubleClick = 3 };

// x, y: pixels of the picture from the view's top-left corner, y downwards. Nothing happens while
// the view takes no input.
void RouteMouse(MouseButton button, MouseEvent event, int x, int y);

// Whether the view is ready, a level is open and the main window is active.
bool ViewTakesInput();
// Draws a frame when the camera is not where the last one showed it from: what is under a pixel is
// asked of what was drawn.
void ShowCurrentOutlook();

// Which of them are held, as each mouse event tells: their own events may have gone elsewhere.
void SetModifiers(bool ctrl, bool shift, bool alt);

// After a frame was drawn: when it shows another sight than the one before, there is another point
// under the resting mouse. Tools and drags go on to it.
void FollowCamera();

// A key of the main window or the 3D view went down or up. Auto-repeat comes as further downs; for
// Page Up and Page Down as further ups too. Nothing happens while no level is open.
void RouteKey(int key, bool down);

// Keys and buttons count as released from now on, because their releases go to another window; a
// stroke or drag ends.
void ForgetHeldInput();

// The rectangle lies within the view.
void StartRubberBand(int x, int y);
void UpdateRubberBand(int x, int y);
void FinishRubberBand(int x, int y);

inline constexpr int kAnyMode = -1;

// One row of the in-view shortcut table.
struct Shortcut {
  int key;
  bool needsShift, needsCtrl;
  CommandId command;
  int mode;  // kAnyMode, or the value of an EditMode
  bool needsAlt = false;
};
std::span<const Shortcut> ShortcutTable();

}  // namespace mw
