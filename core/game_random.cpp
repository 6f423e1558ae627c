#include "core/game_random.h"

#include "core/editor_state.h"

namespace mw {

void SeedGameRandom(std::uint32_t seed) { editor.gameRandom = seed; }

int GameRandom() {
  editor.gameRandom = editor.gameRandom * 214013u + 2531011u;
  return static_cast<int>((editor.gameRandom >> 16) & kGameRandomMax);
}

}  // namespace mw
