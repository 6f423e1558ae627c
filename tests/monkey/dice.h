// Chance that is the same again for the same seed.
#pragma once

#include <cstdint>
#include <random>

namespace mw::monkey {

class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}

  // 0 ... count - 1; 0 when there is nothing to choose from.
  int Below(int count) {
    return count < 1 ? 0 : static_cast<int>(engine_() % static_cast<std::uint64_t>(count));
  }
  int Between(int least, int most) { return least + Below(most - least + 1); }
  bool Chance(int percent) { return Below(100) < percent; }
  // One of a container that is not empty.
  template <typename Container>
  auto Pick(const Container& from) {
    return from[static_cast<decltype(std::size(from))>(Below(static_cast<int>(std::size(from))))];
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace mw::monkey
