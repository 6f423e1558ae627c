// How much time counts between two frames, or two moments in which a held tool acts.
#pragma once

#include <cstdint>

namespace mw {

// Of so many milliseconds, in seconds. Who had to wait longer than any frame takes has rested: then
// only the first moment counts, lest the camera jumps away or a tool digs a shaft.
inline float CountedSeconds(std::uint32_t milliseconds) {
  constexpr std::uint32_t kLongestFrame = 500, kAfterRest = 100;
  return static_cast<float>(milliseconds > kLongestFrame ? kAfterRest : milliseconds) * 0.001f;
}

}  // namespace mw
