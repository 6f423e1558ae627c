// The game's pseudo-random numbers: a linear congruential generator, seed x 214013 + 2531011, of
// which bits 16 to 30 are given out. Seeded from the clock at start, and by a test at will.
#pragma once

#include <cstdint>

namespace mw {

inline constexpr int kGameRandomMax = 0x7FFF;

void SeedGameRandom(std::uint32_t seed);
// 0 ... kGameRandomMax.
int GameRandom();

}  // namespace mw
