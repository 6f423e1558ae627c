// What the terrain pass needs of the terrain tools.
#pragma once

namespace mw {

// Recomputes the auto-smoothing weights around the selected vertices; called when a pick changed
// the selection. Does nothing until the tools set it.
extern void (*computeSmoothingWeights)();

}  // namespace mw
