// DDS files built by hand, for tests that need one of a certain size or a damaged one.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "core/little_endian.h"

namespace mw {

struct DdsFile {
  std::uint32_t width = 4, height = 4;
  std::uint32_t linearSize = 8, mipCount = 1;
  std::string_view fourCc = "DXT1";
  std::vector<std::uint8_t> data{};

  std::vector<std::uint8_t> Bytes() const {
    std::vector<std::uint8_t> out(128);
    const std::string_view magic = "DDS ";
    for (std::size_t i = 0; i < 4; ++i) {
      out[i] = static_cast<std::uint8_t>(magic[i]);
      out[84 + i] = static_cast<std::uint8_t>(fourCc[i]);
    }
    StoreU32(out, 4, 124);
    StoreU32(out, 12, height);
    StoreU32(out, 16, width);
    StoreU32(out, 20, linearSize);
    StoreU32(out, 28, mipCount);
    out.insert(out.end(), data.begin(), data.end());
    return out;
  }
};

// DXT1 blocks of one 5-6-5 colour.
inline std::vector<std::uint8_t> UniformBlocks(std::size_t count, std::uint16_t colour) {
  std::vector<std::uint8_t> blocks(count * 8);
  for (std::size_t i = 0; i < blocks.size(); i += 8) StoreU16(blocks, i, colour);
  return blocks;
}

}  // namespace mw
