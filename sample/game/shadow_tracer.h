// Shadows that the ground casts on itself and on what stands on it.
#pragma once

#include <vector>

#include "sample/game/game_level.h"

namespace mw::sample {

inline constexpr float kTracedTileSize = 256;  // world units per side of a surface tile

// How much of the light reaches a point at height `y` of the level: 1 all, 0 none. A light from
// below reaches nothing.
float LightAt(const Grid& height, Point at, float y, const Vector3& towardsLight);

// The brightness of a tile's ground, 0 ... 1 as level ground in the light: `side` x `side` samples,
// columns eastwards, rows northwards.
std::vector<float> TraceTile(const Grid& height, const Lighting& lighting, int tileRow,
                             int tileColumn, int side);

}  // namespace mw::sample
