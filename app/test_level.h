// Testing the open level in the game itself.
#pragma once

namespace mw {

// Makes the level the only one of the mod's map list and starts the game as a host on it; returns
// when the game has ended. The game loads what was last saved. Shows a message when the map list
// cannot be written; a game that cannot be started shows in the status bar.
void TestLevel();

}  // namespace mw
