// Sunlight on the ground of a level.
#pragma once

#include "sample/landscape.h"

namespace mw::sample {

// Brightness of every sample: sun by slope and cast shadows, and the light of the open sky, which
// hollows get less of. About 0.4 ... 1.2; level ground in the sun is about 1.
Grid GroundLight(const Landscape& land);

}  // namespace mw::sample
