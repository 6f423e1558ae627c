#include "terrain/dxt1_encoder.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "core/little_endian.h"
#include "terrain/dxt1_colour_pair.h"

namespace mw {
namespace {

using Pixels = std::vector<std::uint32_t>;
using Bytes = std::vector<std::uint8_t>;

// The four rows of a row of blocks. Pixels lie around a grey value, `spread` apart at most; some
// blocks have one colour.
Pixels RandomRow(std::minstd_rand& random, std::size_t blocks, std::uint32_t spread) {
  const auto colour = [&] {
    const auto channel = [&] { return (255 - spread) / 2 + random() % (spread + 1); };
    return static_cast<std::uint32_t>(channel() | channel() << 8 | channel() << 16);
  };
  Pixels pixels(blocks * 16);
  for (std::uint32_t& pixel : pixels) pixel = colour();
  for (std::size_t block = 0; block < blocks; ++block) {
    if (random() % 4 != 0) continue;
    const std::uint32_t only = colour();
    for (std::size_t i = 0; i < 16; ++i) pixels[(i / 4 * blocks + block) * 4 + i % 4] = only;
  }
  return pixels;
}

Bytes Encode(Dxt1Encoder encoder, const Pixels& pixels) {
  Bytes out(pixels.size() / 16 * kDxt1BlockSize);
  encoder(pixels.data(), pixels.size() / 16, out.data());
  return out;
}

// The pixels of one block of a row.
Pixels BlockOf(const Pixels& row, std::size_t block) {
  const std::size_t width = row.size() / 4;
  Pixels pixels;
  for (std::size_t i = 0; i < 16; ++i) pixels.push_back(row[i / 4 * width + block * 4 + i % 4]);
  return pixels;
}

TEST(Dxt1Encoder, EveryProcessorWritesTheSameBytesWhateverStandsBesideABlock) {
  std::minstd_rand random(1);
  for (const std::uint32_t spread : {0u, 1u, 3u, 10u, 60u, 255u}) {
    for (std::size_t blocks = 1; blocks < 40; ++blocks) {
      const Pixels row = RandomRow(random, blocks, spread);
      Bytes expected;
      for (std::size_t block = 0; block < blocks; ++block) {
        const Bytes alone = Encode(Dxt1Encoders().front(), BlockOf(row, block));
        expected.insert(expected.end(), alone.begin(), alone.end());
      }
      for (const Dxt1Encoder encoder : Dxt1Encoders()) {
        EXPECT_EQ(Encode(encoder, row), expected) << spread << ", " << blocks << " blocks";
      }
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

TEST(Dxt1Encoder, TwoColoursThatTheFormatHasAreKeptAsTheyAre) {
  Pixels pixels(16, 0x0000FF);
  pixels[6] = 0xFF0000;  // row 1, column 2
  for (const Dxt1Encoder encoder : Dxt1Encoders()) {
    const Bytes block = Encode(encoder, pixels);
    EXPECT_EQ(LoadU16(block, 0), 0xF800) << "red";
    EXPECT_EQ(LoadU16(block, 2), 0x001F) << "blue";
    EXPECT_EQ(LoadU32(block, 4), 1u << 12);
  }
}

// Pixels in four even steps between colours that the format has, and far apart as well as near.
TEST(Dxt1Encoder, FourColoursOnALineAreTold) {
  const std::pair<std::uint32_t, std::uint32_t> ends[] = {{0xFFFFFF, 0x000000},
                                                          {0x848684, 0x7B827B}};
  for (const auto& [light, dark] : ends) {
    Pixels pixels;
    for (std::uint32_t i = 0; i < 16; ++i) {
      std::uint32_t pixel = 0;
      for (int shift = 0; shift < 24; shift += 8) {
        const std::uint32_t high = light >> shift & 255, low = dark >> shift & 255;
        pixel |= (low * 3 + (high - low) * (i % 4)) / 3 << shift;
      }
      pixels.push_back(pixel);
    }
    for (const Dxt1Encoder encoder : Dxt1Encoders()) {
      const Bytes block = Encode(encoder, pixels);
      EXPECT_GT(LoadU16(block, 0), LoadU16(block, 2));
      EXPECT_EQ(LoadU32(block, 4), 0x2D2D2D2Du) << "second, one third, two thirds, first";
    }
  }
}

}  // namespace
}  // namespace mw
