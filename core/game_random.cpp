#include "core/game_random.h"

namespace mw {
namespace {
std::uint32_t state = 1;
}

void SeedGameRandom(std::uint32_t seed) { state = seed; }

int GameRandom() {
  state = state * 214013u + 2531011u;
  return static_cast<int>((state >> 16) & kGameRandomMax);
}

}  // namespace mw
