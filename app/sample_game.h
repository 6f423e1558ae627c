// The sample game for a user who has no game yet: written into the working folder, with its mod
// configuration, and opened. The welcome dialog offers it where there is no mod.
#pragma once

#include <string>

namespace mw {

// How its writing ended. Neither complete nor failed: the user cancelled it.
struct SampleGameWriting {
  bool complete = false;
  std::string failure;
};

// False, after a message where it failed, when the sample level is not open then. Files are written
// aside and then put in place: a failure or Cancel leaves nothing behind, and nothing that is
// already there is replaced.
bool TrySampleGame();

}  // namespace mw
