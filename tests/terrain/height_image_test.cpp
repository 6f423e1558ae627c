#include "terrain/height_image.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "core/bytes.h"

namespace mw {
namespace {

constexpr int kSizes[] = {1, 7, 8, 33, 100, 256};  // with and without whole blocks and bands

// Every vertex by itself.
void LoadPlainly(const Bytes& image, int size, VertexGrid& to) {
  for (int i = 1; i <= size; ++i) {
    for (int j = 0; j < size; ++j) {
      const std::size_t at = HeightImageOffset(size, i, j);
      if (at + 2 <= image.size())
        to[i][j].h = static_cast<float>(image[at] + 256 * image[at + 1]) / 256;
    }
  }
}

bool SameHeights(const VertexGrid& a, const VertexGrid& b) {
  for (std::size_t i = 0; i < kGridCapacity; ++i) {
    for (std::size_t j = 0; j < kGridCapacity; ++j) {
      if (a[i][j].h != b[i][j].h) return false;
    }
  }
  return true;
}

TEST(HeightImage, AnImageOfAnySizeAndLengthIsReadLikeSampleBySampleAndWrittenAgain) {
  std::minstd_rand random(1);
  VertexGrid read = VertexGrid::Zeroed(), expected = VertexGrid::Zeroed();
  for (const int size : kSizes) {
    Bytes whole(HeightImageBytes(size));
    for (std::uint8_t& byte : whole) byte = static_cast<std::uint8_t>(random() >> 8);
    for (const double share : {0.0, 0.01, 0.63, 1.0}) {
      const auto length = static_cast<std::ptrdiff_t>(share * static_cast<double>(whole.size()));
      const Bytes image(whole.begin(), whole.begin() + length);
      ImageToHeights(image, size, read);
      LoadPlainly(image, size, expected);
      EXPECT_TRUE(SameHeights(read, expected)) << size << ", " << length << " bytes";
    }
    Bytes written(whole.size());
    HeightsToImage(read, size, written);
    EXPECT_EQ(written, whole) << size;
  }
}

TEST(HeightImage, HeightsAreTruncatedAndLimited) {
  VertexGrid heights = VertexGrid::Zeroed();
  const std::pair<float, int> cases[] = {{2.999f / 256, 2},
                                         {-1, 0},
                                         {256, 65535},
                                         {std::numeric_limits<float>::infinity(), 65535},
                                         {std::nanf(""), 0}};
  constexpr int kSize = 40;
  for (const auto& [height, stored] : cases) {
    for (int j = 0; j < kSize; ++j) heights[5][j].h = height;
    Bytes image(HeightImageBytes(kSize));
    HeightsToImage(heights, kSize, image);
    for (int j = 0; j < kSize; ++j) {
      const std::size_t at = HeightImageOffset(kSize, 5, j);
      EXPECT_EQ(image[at] + 256 * image[at + 1], stored) << height;
    }
  }
}

}  // namespace
}  // namespace mw
