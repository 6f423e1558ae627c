// Offers the unsaved work that an earlier run of the program left in its recovery file. Used at
// start-up.
#pragma once

namespace mw {

// Asks for what there is, but that of editors that are still running. True when the level is open
// with the recovered work in it. Else the files are kept under other names, or there was none.
bool OfferRecovery();

}  // namespace mw
