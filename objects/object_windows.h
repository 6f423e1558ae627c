// What the objects house asks of its windows. They fill the record in at start-up; every function
// has a harmless default.
#pragma once

#include <functional>

namespace mw {

struct PropertySheet;

struct ObjectWindows {
  // Shows the sheet and, on OK, puts the edited values into the sheet's variables. False:
  // cancelled.
  std::function<bool(PropertySheet&)> runPropertySheet = [](PropertySheet&) { return false; };
  // The tools, view mode or show switches of objectStore changed: the toolbar shows them.
  std::function<void()> refreshToolbar = [] {};
};

extern ObjectWindows objectWindows;

}  // namespace mw
