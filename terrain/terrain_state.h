// The state of this house at program start, for tests.
#pragma once

namespace mw {

// Puts `terrain`, `materialMapper` and `levelTextures` back to what they are at program start. What
// drawing keeps in GL is not freed.
void ResetTerrainState();

}  // namespace mw
