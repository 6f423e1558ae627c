// Offers the unsaved work that an earlier run of the program left in its recovery file. Used at
// start-up.
#pragma once

namespace mw {

// Asks for what there is. True when the level is open with the recovered work in it. Else the file
// is kept under another name, or there was none.
bool OfferRecovery();

}  // namespace mw
