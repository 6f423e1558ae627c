// What is asked before a level is saved, so that saving neither destroys what another program has
// written nor gives up the last good state. Used by SaveLevel.
#pragma once

namespace mw {

class Archive;

// Asks whether to go on when another program has changed the archive, when the journal of another
// state of it is in the way, and when its backup cannot be made, and does what was agreed to.
// False, with nothing overwritten, when the level is not to be saved; the user knows why.
bool MaySaveInto(Archive& archive);

}  // namespace mw
