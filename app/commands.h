// What the commands do: the single place where every menu, shortcut and toolbar command becomes an
// action.
#pragma once

#include "app/command_ids.h"

namespace mw {

// Runs a command of the main window. Commands of a radio group first check their own button.
void RunCommand(CommandId id);

// Asks to save when there are unsaved changes, with the given question, and saves on Yes. False
// when that save failed or the answer was Cancel: the caller then does not go on.
bool OfferToSave(const char* question);

// Exit and the closing of the main window: true when the window may be destroyed.
bool ConfirmExit();

}  // namespace mw
