// One property sheet for all that is selected.
#pragma once

namespace mw {

// Shows what all of the selection has in common; a field that is empty, because they differ or
// because the user emptied it, leaves each one's own value. An entity that is selected alone has
// its own sheet. True on OK.
bool EditSelected();

}  // namespace mw
