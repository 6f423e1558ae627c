// What weather does to a height field: rain cuts gullies and fills valleys, loose ground slides
// from slopes that are too steep.
#pragma once

#include <cstdint>

#include "sample/grid.h"

namespace mw::sample {

// Follows `drops` drops of rain down the slopes; each takes ground along where it runs fast and
// leaves it where it slows down (H. T. Beyer, "Implementation of a method for hydraulic erosion",
// 2015). Heights are world units.
void ErodeByRain(Grid& height, int drops, std::uint32_t seed);

// Ground slides down where a sample lies more than `maxSlope` (rise per unit of length) above its
// neighbour.
void SettleSlopes(Grid& height, float maxSlope, int rounds);

}  // namespace mw::sample
