// The rules by which the material-map plug-in decides what the ground is made of.
#pragma once

#include "plugins/materials.h"
#include "plugins/plane.h"
#include "plugins/relief.h"

namespace mw::plugin {

// The material of every cell, from the relief and noise that depends on the cell alone. Borders
// still have the noise's fringes; CleanMap takes them away.
Plane<Material> ChooseMaterials(const Relief& relief);

}  // namespace mw::plugin
