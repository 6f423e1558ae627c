// Bitmap files built field by field, for tests that need one on disk or a damaged one.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace mw {

struct BmpFile {
  std::int32_t width = 0, height = 0;  // a negative height means rows from the top
  int bitCount = 24;
  std::uint32_t compression = 0;
  std::uint32_t coloursUsed = 0;
  std::vector<std::uint8_t> table{};   // bit masks and colour table, as stored
  std::vector<std::uint8_t> pixels{};  // as stored
  bool hasFileHeader = true, hasCoreHeader = false;

  std::vector<std::uint8_t> Bytes() const {
    std::vector<std::uint8_t> out;
    const auto put = [&](std::uint32_t value, int bytes) {
      for (int i = 0; i < bytes; ++i) out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    };
    const std::size_t headerSize = hasCoreHeader ? 12 : 40;
    if (hasFileHeader) {
      const std::size_t offset = 14 + headerSize + table.size();
      put('B' | 'M' << 8, 2);
      put(static_cast<std::uint32_t>(offset + pixels.size()), 4);
      put(0, 4);
      put(static_cast<std::uint32_t>(offset), 4);
    }
    const int sideBytes = hasCoreHeader ? 2 : 4;
    put(static_cast<std::uint32_t>(headerSize), 4);
    put(static_cast<std::uint32_t>(width), sideBytes);
    put(static_cast<std::uint32_t>(height), sideBytes);
    put(1, 2);
    put(static_cast<std::uint32_t>(bitCount), 2);
    if (!hasCoreHeader) {
      for (const std::uint32_t field : {compression, 0u, 0u, 0u, coloursUsed, 0u}) put(field, 4);
    }
    out.insert(out.end(), table.begin(), table.end());
    out.insert(out.end(), pixels.begin(), pixels.end());
    return out;
  }
};

// A 24-bit bitmap of one colour.
inline std::vector<std::uint8_t> UniformBmp(int width, int height, std::uint8_t r, std::uint8_t g,
                                            std::uint8_t b) {
  BmpFile file{width, height};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) file.pixels.insert(file.pixels.end(), {b, g, r});
    file.pixels.resize((file.pixels.size() + 3) / 4 * 4);
  }
  return file.Bytes();
}

}  // namespace mw
