#include "platform/clock.h"

#include <chrono>

namespace mw {

std::uint32_t MillisecondsNow() {
  using std::chrono::steady_clock;
  static const steady_clock::time_point start = steady_clock::now();
  const auto passed = steady_clock::now() - start;
  // One second is added so that the first frame does not fall on moment 0.
  return static_cast<std::uint32_t>(
      std::chrono::duration_cast<std::chrono::milliseconds>(passed).count() + 1000);
}

}  // namespace mw
