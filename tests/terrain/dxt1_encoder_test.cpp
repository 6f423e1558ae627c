#include "terrain/dxt1_encoder.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "core/little_endian.h"
#include "terrain/dxt1_colour_pair.h"

namespace mw {
namespace {

using Blocks = std::array<std::uint8_t, kDxt1Lanes * kDxt1BlockSize>;

// Pixels around a grey value, `spread` apart at most.
Dxt1Pixels RandomPixels(std::minstd_rand& random, std::uint32_t spread) {
  Dxt1Pixels pixels;
  for (auto& blocks : pixels.pixel) {
    for (std::uint32_t& pixel : blocks) {
      const auto channel = [&] { return (255 - spread) / 2 + random() % (spread + 1); };
      pixel = static_cast<std::uint32_t>(channel() | channel() << 8 | channel() << 16);
    }
  }
  return pixels;
}

Blocks Encode(Dxt1Encoder encoder, const Dxt1Pixels& pixels) {
  Blocks blocks;
  encoder(pixels, blocks.data());
  return blocks;
}

TEST(Dxt1Encoder, EveryProcessorWritesTheSameBytes) {
  std::minstd_rand random(1);
  for (const std::uint32_t spread : {0u, 1u, 3u, 10u, 60u, 255u}) {
    for (int round = 0; round < 200; ++round) {
      const Dxt1Pixels pixels = RandomPixels(random, spread);
      const Blocks expected = Encode(Dxt1Encoders().front(), pixels);
      for (const Dxt1Encoder encoder : Dxt1Encoders()) EXPECT_EQ(Encode(encoder, pixels), expected);
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
  Dxt1Pixels pixels;
  for (auto& blocks : pixels.pixel) {
    for (std::uint32_t& pixel : blocks) pixel = 0x0000FF;
  }
  for (std::uint32_t& pixel : pixels.pixel[6]) pixel = 0xFF0000;  // row 1, column 2
  for (const Dxt1Encoder encoder : Dxt1Encoders()) {
    const Blocks blocks = Encode(encoder, pixels);
    for (std::size_t lane = 0; lane < kDxt1Lanes; ++lane) {
      const auto block = std::span(blocks).subspan(lane * kDxt1BlockSize, kDxt1BlockSize);
      EXPECT_EQ(LoadU16(block, 0), 0xF800) << "red";
      EXPECT_EQ(LoadU16(block, 2), 0x001F) << "blue";
      EXPECT_EQ(LoadU32(block, 4), 1u << 12);
    }
  }
}

}  // namespace
}  // namespace mw
