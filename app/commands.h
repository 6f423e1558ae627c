// What the commands do: the single place where every menu, shortcut and toolbar command becomes an
// action.
#pragma once

#include "app/command_ids.h"

namespace mw {

// Runs a command of the main window. Commands of a radio group first check their own button.
void RunCommand(CommandId id);

// Asks to save when there are unsaved changes, or the level's archive is not as it was left, and
// saves on Yes; `occasion` is what is about to happen, "before exiting". False when that save
// failed or the answer was Cancel: the caller then does not go on.
bool OfferToSave(const char* occasion);

// Exit and the closing of the main window: true when the window may be destroyed.
bool ConfirmExit();

}  // namespace mw
