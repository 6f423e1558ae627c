#include "terrain/dds_writer.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>

#include "core/little_endian.h"
#include "data/dds.h"
#include "data/level_archive_test.h"
#include "support/golden.h"

namespace mw {
namespace {

using ByteVector = std::vector<std::uint8_t>;

constexpr std::size_t kHeader = 128;

ByteVector Uniform(int width, int height, std::uint8_t r, std::uint8_t g, std::uint8_t b) {
  ByteVector rgb;
  for (int i = 0; i < width * height; ++i) rgb.insert(rgb.end(), {r, g, b});
  return rgb;
}

// A picture with soft colours, like painted ground.
ByteVector Hills(int side) {
  ByteVector rgb;
  const auto wave = [](double phase) {
    return static_cast<std::uint8_t>(128 + 100 * std::sin(phase));
  };
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      rgb.insert(rgb.end(), {wave(x * 0.05), wave(y * 0.07), wave((x + y) * 0.03)});
    }
  }
  return rgb;
}

// The decoded pixels of a level that begins at a byte of the file.
ByteVector DecodedAt(const ByteVector& file, std::size_t offset, int side) {
  return DecodeDxt1(std::span(file).subspan(kHeader + offset), side, side);
}

double MeanError(const ByteVector& rgb, const ByteVector& rgba) {
  double sum = 0;
  for (std::size_t pixel = 0; pixel < rgb.size() / 3; ++pixel) {
    for (std::size_t c = 0; c < 3; ++c) sum += std::abs(rgb[pixel * 3 + c] - rgba[pixel * 4 + c]);
  }
  return sum / static_cast<double>(rgb.size());
}

// The header of a file is its first 128 bytes; `height` comes before `width` in it.
TEST(DdsWriter, TheHeaderTellsSizeLevelsAndKind) {
  const ByteVector mipMapped = EncodeDds(1024, 1024, Uniform(1024, 1024, 0, 0, 0), true);
  EXPECT_EQ(mipMapped.size(), kHeader + 699064u);
  ExpectGolden("terrain/mip_mapped_header.dds", std::span(mipMapped).first(kHeader));
  const ByteVector single = EncodeDds(128, 64, Uniform(128, 64, 0, 0, 0), false);
  EXPECT_EQ(single.size(), kHeader + 4096u);
  ExpectGolden("terrain/single_level_header.dds", std::span(single).first(kHeader));
}

TEST(DdsWriter, BlackHasBlackEndPoints) {
  const ByteVector file = EncodeDds(128, 128, Uniform(128, 128, 0, 0, 0), false);
  for (std::size_t block = kHeader; block < file.size(); block += 8) {
    ASSERT_EQ(LoadU32(file, block), 0u);
  }
}

TEST(DdsWriter, DecodedPictureIsCloseToTheOriginal) {
  const ByteVector picture = Hills(256);
  const ByteVector file = EncodeDds(256, 256, picture, true);
  EXPECT_LT(MeanError(picture, DecodedAt(file, 0, 256)), 5);
  // Rows and columns are where they were: a red top left corner in a blue picture.
  ByteVector corner = Uniform(8, 8, 0, 0, 255);
  for (std::size_t y = 0; y < 4; ++y) {
    for (std::size_t x = 0; x < 4; ++x) {
      corner[(y * 8 + x) * 3] = 255;
      corner[(y * 8 + x) * 3 + 2] = 0;
    }
  }
  EXPECT_LT(MeanError(corner, DecodedAt(EncodeDds(8, 8, corner, false), 0, 8)), 3);
}

TEST(DdsWriter, EveryBlockIsOpaque) {
  ByteVector noise(64 * 64 * 3), nearlyFlat = noise;
  unsigned seed = 1;
  for (std::size_t i = 0; i < noise.size(); ++i) {
    seed = seed * 1103515245 + 12345;
    noise[i] = static_cast<std::uint8_t>(seed >> 16);
    nearlyFlat[i] = static_cast<std::uint8_t>(100 + (noise[i] & 1));
  }
  for (const ByteVector& picture : {noise, nearlyFlat, Uniform(64, 64, 130, 7, 99)}) {
    const ByteVector rgba = DecodedAt(EncodeDds(64, 64, picture, false), 0, 64);
    for (std::size_t alpha = 3; alpha < rgba.size(); alpha += 4) ASSERT_EQ(rgba[alpha], 255);
  }
}

TEST(DdsWriter, SmallerLevelsAreMeansDownToOnePixel) {
  // White and black columns: every smaller level is grey.
  ByteVector columns = Uniform(8, 8, 0, 0, 0);
  for (std::size_t pixel = 0; pixel < 64; pixel += 2) {
    for (std::size_t c = 0; c < 3; ++c) columns[pixel * 3 + c] = 255;
  }
  const ByteVector file = EncodeDds(8, 8, columns, true);
  ASSERT_EQ(file.size(), kHeader + 32 + 8 + 8 + 8);
  std::size_t offset = 32;
  for (const int side : {4, 2, 1}) {
    const auto grey = Uniform(side, side, 128, 128, 128);
    EXPECT_LT(MeanError(grey, DecodedAt(file, offset, side)), 8) << side;
    offset += 8;
  }
  EXPECT_EQ(EncodeDds(16, 1, Uniform(16, 1, 1, 2, 3), true).size(), kHeader + 32 + 16 + 8 + 8 + 8)
      << "a side of 1 stays 1";
}

TEST(DdsWriter, UnusableInputGivesNothing) {
  EXPECT_TRUE(EncodeDds(100, 128, ByteVector(100 * 128 * 3), true).empty());
  EXPECT_TRUE(EncodeDds(0, 0, {}, true).empty());
  EXPECT_TRUE(EncodeDds(-4, 4, ByteVector(48), true).empty());
  EXPECT_TRUE(EncodeDds(1 << 30, 1 << 30, ByteVector(48), true).empty());
  EXPECT_TRUE(EncodeDds(4, 4, ByteVector(47), true).empty()) << "too few pixels";
}

class SaveDDSTest : public LevelArchiveTest {};

TEST_F(SaveDDSTest, WritesTheFileIntoTheLevelArchive) {
  const ByteVector black = Uniform(128, 128, 0, 0, 0);
  EXPECT_TRUE(SaveDDS(LevelPath("Menu/thumbnail.dds"), 128, 128, black, false));
  EXPECT_EQ(Get("Menu/thumbnail.dds"), Text(EncodeDds(128, 128, black, false)));
  EXPECT_TRUE(SaveDDS(LevelPath("none.dds"), 128, 128, {}, false));
  EXPECT_EQ(Get("none.dds"), "") << "opened, and nothing written";
  ClearGameFileError();
  EXPECT_FALSE(SaveDDS(LevelPath("Menu/thumbnail.dds"), 100, 128, black, false));
  EXPECT_EQ(Get("Menu/thumbnail.dds"), Text(EncodeDds(128, 128, black, false))) << "the old one";
  EXPECT_FALSE(GameFileError().empty());
}

}  // namespace
}  // namespace mw
