// How two drawn pictures are compared.
#pragma once

#include <cstdlib>
#include <gtest/gtest.h>

#include "bench/plain/gl_context.h"

namespace mw {

// Software and hardware round a shade differently, and lines end a pixel earlier or later when
// drawn from their other end.
inline constexpr int kShades = 3;  // of 255

// At most one pixel of a thousand differs.
inline void ExpectSimilar(const DrawnPicture& actual, const DrawnPicture& expected) {
  EXPECT_LE(DifferentPixels(actual, expected, kShades), expected.rgb.size() / 3 / 1000);
}

// How many pixels have this colour.
inline std::size_t CountColour(const DrawnPicture& picture, int red, int green, int blue) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < picture.rgb.size(); at += 3) {
    count += std::abs(picture.rgb[at] - red) <= kShades &&
             std::abs(picture.rgb[at + 1] - green) <= kShades &&
             std::abs(picture.rgb[at + 2] - blue) <= kShades;
  }
  return count;
}

}  // namespace mw
