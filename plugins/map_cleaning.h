// Takes the single cells and frayed edges out of a material map.
#pragma once

#include "plugins/materials.h"
#include "plugins/plane.h"

namespace mw::plugin {

// Rounds the borders by the majority around each cell and gives every patch of fewer than
// kLeastPatch cells to its largest neighbour.
inline constexpr int kLeastPatch = 14;
void CleanMap(Plane<Material>& materials);

}  // namespace mw::plugin
