#include "objects/placement.h"

#include "data/mod_config.h"

namespace mw {

float MirrorX(float x) { return static_cast<float>(modConfig.WorldSize) - x; }

}  // namespace mw
