// Undo and Redo as the user meets them: the menu entries with the names of their steps, and what
// the status bar says.
#pragma once

namespace mw {

// Take the last gesture back, or do it again. Nothing happens while a button is held, a game runs,
// a dialog or another window is in front, or there is no step.
void UndoStep();
void RedoStep();

// Shows in the menu what both would do. To be called when a level is opened or closed and when a
// button goes down or up; the history calls it when its steps change.
void ShowUndoSteps();
// Undo and Redo are disabled as long as one lives: while a game runs.
class UndoPause {
 public:
  UndoPause();
  ~UndoPause();
  UndoPause(const UndoPause&) = delete;
  UndoPause& operator=(const UndoPause&) = delete;
};
// From now on the menu follows the history.
void ConnectUndo();

}  // namespace mw
