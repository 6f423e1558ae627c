// Noise along lines is the noise place by place, to the last bit.
#include "assets/noise.h"

#include <gtest/gtest.h>
#include <vector>

namespace mw {
namespace {

TEST(Noise, AlongALineIsThatOfEachPlace) {
  constexpr Lattice kLattice{7, 150};
  constexpr std::size_t kFirst = 37, kCount = 500;
  std::vector<float> v;
  for (int k = -100; k < 900; ++k) v.push_back(static_cast<float>(k) / 512);
  const NoiseLines lines(v, kLattice);
  for (const float u : {-1.7f, 0.0f, 0.3f, 0.99999f, 12.5f}) {
    std::vector<float> noise(kCount);
    lines.Along(u, 3, kFirst, noise);
    for (std::size_t k = 0; k < kCount; ++k) {
      ASSERT_EQ(noise[k], GradientNoise(u, v[kFirst + k], kLattice, 3)) << u << ", " << k;
    }
  }
}

}  // namespace
}  // namespace mw
