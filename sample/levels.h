// The two levels of the sample game.
#pragma once

#include "sample/landscape.h"

namespace mw::sample {

// Small: a fishing village in a bay, with hills behind it and a battery on the point.
Landscape MakeCoastLandscape();
// Medium: a river in a valley, a village at its bridge, and a long ridge of stone in the east.
Landscape MakeRidgeLandscape();

}  // namespace mw::sample
