// Pictures as .dds files, and the encoders of their blocks.
#include "terrain/dds_writer.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "core/bytes.h"
#include "core/little_endian.h"
#include "data/dds.h"
#include "data/level_archive_test.h"
#include "support/golden.h"
#include "terrain/dxt1_colour_pair.h"
#include "terrain/dxt1_encoder.h"

namespace mw {
namespace {

constexpr std::size_t kHeader = 128;

struct Picture {
  int width = 0, height = 0;
  Bytes rgb{};
};

// The colour of each pixel is channel(x, y, 0 ... 2).
template <typename Channel>
Picture Paint(int width, int height, Channel channel) {
  Picture picture{width, height};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      for (int c = 0; c < 3; ++c)
        picture.rgb.push_back(static_cast<std::uint8_t>(channel(x, y, c)));
    }
  }
  return picture;
}

// Soft colours, like painted ground.
Picture Hills(int width, int height) {
  return Paint(width, height, [](int x, int y, int c) {
    const double phases[] = {x * 0.05, y * 0.07, (x + y) * 0.03};
    return 128 + 100 * std::sin(phases[c]);
  });
}

Bytes Encode(const Picture& picture, bool mipmaps) {
  return EncodeDds(picture.width, picture.height, picture.rgb, mipmaps);
}

// Each pixel is the mean of four, which stand twice where a side is 1.
Picture Halved(const Picture& from) {
  return Paint(std::max(1, from.width / 2), std::max(1, from.height / 2), [&](int x, int y, int c) {
    int sum = 2;
    for (int k = 0; k < 4; ++k) {
      const int column = std::min(2 * x + k % 2, from.width - 1);
      const int row = std::min(2 * y + k / 2, from.height - 1);
      sum += from.rgb[static_cast<std::size_t>((row * from.width + column) * 3 + c)];
    }
    return sum / 4;
  });
}

// Of a channel of a pixel. The decoded picture must be opaque.
double MeanError(const Picture& picture, const Bytes& rgba) {
  double sum = 0;
  for (std::size_t at = 0; at < picture.rgb.size(); ++at)
    sum += std::abs(picture.rgb[at] - rgba[at / 3 * 4 + at % 3]);
  for (std::size_t alpha = 3; alpha < rgba.size(); alpha += 4) EXPECT_EQ(rgba[alpha], 255);
  return sum / static_cast<double>(picture.rgb.size());
}

TEST(DdsWriter, EveryLevelIsOpaqueAndCloseToTheMeansOfThePictureAsFarAsItsColoursGo) {
  std::minstd_rand random(1);
  const auto noise = [&](unsigned from, unsigned shades) {
    return Paint(64, 64, [&, from, shades](int, int, int) { return from + random() % shades; });
  };
  const struct {
    Picture picture;
    double error;
  } cases[] = {
      {Paint(256, 256, [](int x, int y, int) { return (x + y) / 4; }), 8},
      {Paint(2048, 8, [](int x, int, int) { return x / 8; }), 5},
      {Paint(8, 8, [](int x, int y, int c) { return c == (x < 4 && y < 4 ? 0 : 2) ? 255 : 0; }), 3},
      {Paint(8, 8, [](int x, int, int) { return x % 2 == 0 ? 255 : 0; }), 8},
      {Paint(16, 1, [](int, int, int c) { return 100 + 30 * c; }), 5},
      {noise(100, 2), 3},
      {noise(0, 256), 60},
  };
  for (const auto& [picture, error] : cases) {
    const Bytes file = Encode(picture, true);
    std::size_t at = kHeader;
    for (Picture level = picture;; level = Halved(level)) {
      const std::size_t blocks = static_cast<std::size_t>((level.width + 3) / 4) *
                                 static_cast<std::size_t>((level.height + 3) / 4);
      ASSERT_LE(at + blocks * 8, file.size());
      const Bytes decoded =
          DecodeDxt1(std::span(file).subspan(at, blocks * 8), level.width, level.height);
      EXPECT_LT(MeanError(level, decoded), error) << level.width << " x " << level.height;
      at += blocks * 8;
      if (level.width == 1 && level.height == 1) break;
    }
    EXPECT_EQ(at, file.size());
  }
}

TEST(DdsWriter, FilesAreByteForByteTheSame) {
  ExpectGolden("terrain/hills.dds", Encode(Hills(32, 32), true));
  const Bytes black = Encode(Paint(128, 64, [](int, int, int) { return 0; }), false);
  EXPECT_EQ(black.size(), kHeader + 4096);
  ExpectGolden("terrain/single_level_header.dds", std::span(black).first(kHeader));
  EXPECT_EQ(std::count(black.begin() + kHeader, black.end(), 0), 4096) << "black end points";
}

TEST(DdsWriter, UnusableInputGivesNothing) {
  EXPECT_TRUE(EncodeDds(100, 128, Bytes(100 * 128 * 3), true).empty());
  EXPECT_TRUE(EncodeDds(0, 0, {}, true).empty());
  EXPECT_TRUE(EncodeDds(-4, 4, Bytes(48), true).empty());
  EXPECT_TRUE(EncodeDds(1 << 30, 1 << 30, Bytes(48), true).empty());
  EXPECT_TRUE(EncodeDds(4, 4, Bytes(47), true).empty()) << "too few pixels";
}

class SaveDDSTest : public LevelArchiveTest {};

TEST_F(SaveDDSTest, WritesTheFileIntoTheLevelArchive) {
  const Picture hills = Hills(128, 128);
  EXPECT_TRUE(SaveDDS(LevelPath("Menu/thumbnail.dds"), 128, 128, hills.rgb, false));
  EXPECT_EQ(Get("Menu/thumbnail.dds"), Text(Encode(hills, false)));
  EXPECT_TRUE(SaveDDS(LevelPath("none.dds"), 128, 128, {}, false));
  EXPECT_EQ(Get("none.dds"), "") << "opened, and nothing written";
  ClearGameFileError();
  EXPECT_FALSE(SaveDDS(LevelPath("Menu/thumbnail.dds"), 100, 128, hills.rgb, false));
  EXPECT_EQ(Get("Menu/thumbnail.dds"), Text(Encode(hills, false))) << "the old one";
  EXPECT_FALSE(GameFileError().empty());
}

// The encoders. A row of blocks is four rows of pixels.
using Pixels = std::vector<std::uint32_t>;

Bytes EncodeBlocks(Dxt1Encoder encoder, const Pixels& pixels) {
  Bytes out(pixels.size() / 16 * kDxt1BlockSize);
  encoder(pixels.data(), pixels.size() / 16, out.data());
  return out;
}

TEST(Dxt1Encoder, EveryProcessorWritesTheSameBytesWhateverStandsBesideABlock) {
  std::minstd_rand random(1);
  for (const std::uint32_t spread : {0u, 1u, 3u, 10u, 60u, 255u}) {
    const auto colour = [&] {
      const auto channel = [&] { return (255 - spread) / 2 + random() % (spread + 1); };
      return static_cast<std::uint32_t>(channel() | channel() << 8 | channel() << 16);
    };
    for (std::size_t blocks = 1; blocks < 40; ++blocks) {
      Pixels row(blocks * 16);
      Bytes expected;
      for (std::size_t block = 0; block < blocks; ++block) {
        const bool isUniform = random() % 4 == 0;
        const std::uint32_t only = colour();
        Pixels alone;
        for (std::size_t i = 0; i < 16; ++i) {
          alone.push_back(isUniform ? only : colour());
          row[(i / 4 * blocks + block) * 4 + i % 4] = alone.back();
        }
        const Bytes encoded = EncodeBlocks(Dxt1Encoders().front(), alone);
        expected.insert(expected.end(), encoded.begin(), encoded.end());
      }
      for (const Dxt1Encoder encoder : Dxt1Encoders())
        EXPECT_EQ(EncodeBlocks(encoder, row), expected) << spread << ", " << blocks << " blocks";
    }
  }
}

// What a graphics card makes of one channel of a 5-6-5 colour.
int Expand(unsigned colour, int shift, int bits) {
  const int value = static_cast<int>(colour >> shift) & ((1 << bits) - 1);
  return value << (8 - bits) | value >> (2 * bits - 8);
}

TEST(Dxt1Encoder, EveryColourByItselfIsMetWithinTheFormatsSteps) {
  for (std::uint32_t value = 0; value < 256; ++value) {
    std::array<std::uint8_t, kDxt1BlockSize> block;
    EncodeOneColour(value | value << 8 | value << 16, block.data());
    const unsigned first = LoadU16(block, 0), second = LoadU16(block, 2);
    const unsigned index = block[4] & 3;
    ASSERT_TRUE(first > second || index == 0) << "opaque";
    const auto mixed = [&](int shift, int bits) {
      const int a = Expand(first, shift, bits), b = Expand(second, shift, bits);
      const int thirds[] = {3 * a, 3 * b, 2 * a + b, a + 2 * b};
      return thirds[index] / 3.0;
    };
    EXPECT_NEAR(mixed(11, 5), value, 1.5) << value;
    EXPECT_NEAR(mixed(5, 6), value, 1) << value;
    EXPECT_NEAR(mixed(0, 5), value, 1.5) << value;
  }
}

// In four even steps between colours that the format has, far apart as well as near.
TEST(Dxt1Encoder, ColoursOnALineAreTold) {
  const std::pair<std::uint32_t, std::uint32_t> ends[] = {
      {0xFFFFFF, 0x000000}, {0x848684, 0x7B827B}, {0x0000FF, 0xFF0000}};
  for (const auto& [first, second] : ends) {
    Pixels pixels;
    for (std::uint32_t i = 0; i < 16; ++i) {
      std::uint32_t pixel = 0;
      for (int shift = 0; shift < 24; shift += 8) {
        const std::uint32_t a = first >> shift & 255, b = second >> shift & 255;
        pixel |= (b * (3 - i % 4) + a * (i % 4)) / 3 << shift;
      }
      pixels.push_back(pixel);
    }
    for (const Dxt1Encoder encoder : Dxt1Encoders()) {
      const Bytes block = EncodeBlocks(encoder, pixels);
      EXPECT_GT(LoadU16(block, 0), LoadU16(block, 2));
      EXPECT_EQ(LoadU32(block, 4), 0x2D2D2D2Du) << "second, one third, two thirds, first";
    }
  }
}

}  // namespace
}  // namespace mw
