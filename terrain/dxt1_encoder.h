// Encodes 4 x 4 blocks of opaque pixels as DXT1, several blocks at a time: one in each lane of the
// processor's vector registers. Used by the writer of .dds files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace mw {

inline constexpr std::size_t kDxt1BlockSize = 8;  // bytes
inline constexpr std::size_t kDxt1Lanes = 8;      // blocks encoded together

// Pixels of the blocks as pixel[row * 4 + column][block], each 0x00BBGGRR.
struct Dxt1Pixels {
  alignas(32) std::uint32_t pixel[16][kDxt1Lanes];
};

// Writes the blocks one after the other. No block has a transparent colour; a block of one colour
// is as near to it as the format can come.
using Dxt1Encoder = void (*)(const Dxt1Pixels& pixels, std::uint8_t* blocks);

// Those that this processor can run, the fastest last. They write the same bytes.
std::span<const Dxt1Encoder> Dxt1Encoders();

}  // namespace mw
