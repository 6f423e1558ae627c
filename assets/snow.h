// Winter: the grounds, skies and details of the texture set "Default" after a snowfall. Used by the
// media writer.
#pragma once

#include <cstddef>

#include "assets/picture.h"

namespace mw {

// The ground of material number `material`, of kGroundKinds, under its share of the snow. Still
// tiles.
Picture WinterGround(const Picture& ground, std::size_t material);
// A side of the surroundings on an overcast day.
Picture WinterSky(const Picture& side);
// Snow evens out the small structure of the ground.
Picture WinterDetail(const Picture& detail);

}  // namespace mw
