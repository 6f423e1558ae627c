// Encodes 4 x 4 blocks of opaque pixels as DXT1, several blocks at a time: one in each lane of the
// processor's vector registers. Used by the writer of .dds files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace mw {

inline constexpr std::size_t kDxt1BlockSize = 8;  // bytes

// Encodes blocks that stand side by side, one after the other at `out`. `pixels` holds their four
// rows, each of 4 x `blocks` pixels of 0x00BBGGRR. No block has a transparent colour; a block of
// one colour is as near to it as the format can come.
using Dxt1Encoder = void (*)(const std::uint32_t* pixels, std::size_t blocks, std::uint8_t* out);

// Those that this processor can run, the fastest last. They write the same bytes.
std::span<const Dxt1Encoder> Dxt1Encoders();

}  // namespace mw
