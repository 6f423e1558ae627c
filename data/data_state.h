// The state of this house at program start, for tests.
#pragma once

namespace mw {

// Puts `archives`, `modConfig`, `modList`, `openLevel` and `textureSet` back to what they are at
// program start. Archives are closed without compacting; GL textures are not freed.
void ResetDataState();

}  // namespace mw
