// The state of this house at program start, for tests.
#pragma once

namespace mw {

// Puts `objectStore`, `entities` and `levelTree` back to what they are at program start. What
// drawing keeps in GL is not freed.
void ResetObjectsState();

}  // namespace mw
