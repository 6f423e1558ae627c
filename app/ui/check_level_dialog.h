// The "Check Level" window: what would go wrong in the game with the open level, and what its maker
// has forgotten.
#pragma once

class QWidget;

namespace mw {

// Looks at the level and runs the window over `owner`, which may be null. A double click goes to
// what was found and closes it.
void CheckLevelDialog(QWidget* owner);

}  // namespace mw
