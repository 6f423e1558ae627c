// Pictures as .dds files, and the encoders of their blocks.
#include "terrain/dds_writer.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "core/bytes.h"
#include "core/text.h"
#include "data/dds.h"
#include "data/level_archive_test.h"
#include "support/golden.h"
#include "terrain/dxt1_encoder.h"

namespace mw {
namespace {

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

// The longer ones cannot be encoded as one strip or have levels of less than a block.
TEST(DdsWriter, FilesAreThoseListed) {
  std::minstd_rand random(1);
  const auto noise = [&](int, int, int) { return random() >> 8; };
  ExpectGolden("terrain/hills.dds", Encode(Hills(32, 32), true));
  ExpectGolden("terrain/long_hills.dds", Encode(Hills(2048, 4), true));
  ExpectGolden("terrain/line.dds", Encode(Hills(16, 1), true));
  ExpectGolden("terrain/noise.dds", Encode(Paint(32, 16, noise), false));
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

// How near blocks of one colour come to it, and how those of four colours on a line, far apart as
// well as near, tell them apart.
TEST(Dxt1Encoder, BlocksDecodeAsListed) {
  std::string listing;
  const auto list = [&](const Pixels& pixels, std::size_t count) {
    const Bytes block = EncodeBlocks(Dxt1Encoders().back(), pixels);
    for (std::size_t i = 0; i < count; ++i) {
      const auto rgba = DecodeDxt1Pixel(block, 4, static_cast<int>(i), 0);
      const std::uint32_t from = pixels[i];
      listing += FormatText("%u %u %u: %u %u %u %u\n", from & 255, from >> 8 & 255, from >> 16,
                            rgba[0], rgba[1], rgba[2], rgba[3]);
    }
  };
  for (std::uint32_t value = 0; value < 256; ++value) list(Pixels(16, value * 0x010101), 1);
  for (const auto& [first, second] :
       {std::pair{0xFFFFFFu, 0u}, {0x848684u, 0x7B827Bu}, {0x0000FFu, 0xFF0000u}}) {
    Pixels pixels(16);
    for (std::uint32_t i = 0; i < 16; ++i) {
      for (int shift = 0; shift < 24; shift += 8)
        pixels[i] |= ((first >> shift & 255) * (3 - i % 4) + (second >> shift & 255) * (i % 4)) / 3
                     << shift;
    }
    list(pixels, 4);
  }
  ExpectGolden("terrain/dxt1_blocks.txt", listing);
}

}  // namespace
}  // namespace mw
