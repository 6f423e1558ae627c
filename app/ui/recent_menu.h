// File > Open Recent: the levels that were opened last, newest first.
#pragma once

class QAction;
class QMenu;

namespace mw {

// Puts the menu into the menu `file` before the entry `next`. It is filled when `file` is shown,
// and grey while there is nothing to open.
void AddRecentMenu(QMenu* file, QAction* next);

}  // namespace mw
