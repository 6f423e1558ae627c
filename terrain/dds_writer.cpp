#include "terrain/dds_writer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <new>

#include "core/little_endian.h"
#include "core/parallel.h"
#include "data/game_file.h"
#include "data/image.h"

#define STB_DXT_IMPLEMENTATION
#include <stb/stb_dxt.h>

namespace mw {
namespace {

constexpr std::size_t kFileHeaderSize = 128, kBlockSize = 8;
constexpr int kBlockSide = 4;         // pixels
constexpr int kBlockRowsPerTask = 8;  // encoded by one thread at a time

// One mip level, rows from the top; the pixels belong to the caller or to the chain.
struct Level {
  int width = 0, height = 0;
  std::span<const std::uint8_t> rgb;

  int BlockColumns() const { return (width + kBlockSide - 1) / kBlockSide; }
  int BlockRows() const { return (height + kBlockSide - 1) / kBlockSide; }
  std::size_t EncodedSize() const {
    return static_cast<std::size_t>(BlockColumns()) * static_cast<std::size_t>(BlockRows()) *
           kBlockSize;
  }
  const std::uint8_t* Pixel(int x, int y) const {
    return rgb.data() + (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                         static_cast<std::size_t>(x)) *
                            3;
  }
};

bool IsSide(int side) {
  return side >= 1 && side <= kMaxImageSide && std::has_single_bit(static_cast<unsigned>(side));
}

// Each pixel is the rounded mean of the 2 x 2 pixels (fewer where a side is already 1) it stands
// for.
std::vector<std::uint8_t> Halve(const Level& from, int width, int height) {
  std::vector<std::uint8_t> rgb;
  rgb.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
  const int stepX = from.width / width, stepY = from.height / height;
  for (int y = 0; y < height; ++y) {
    const std::uint8_t* top = from.Pixel(0, y * stepY);
    const std::uint8_t* bottom = from.Pixel(0, y * stepY + stepY - 1);
    const int right = (stepX - 1) * 3;
    for (int x = 0; x < width; ++x, top += stepX * 3, bottom += stepX * 3) {
      for (int c = 0; c < 3; ++c) {
        const int sum = top[c] + top[right + c] + bottom[c] + bottom[right + c];
        rgb.push_back(static_cast<std::uint8_t>((sum + 2) / 4));
      }
    }
  }
  return rgb;
}

// The level and, with mip-maps, all smaller ones down to 1 x 1; `storage` owns their pixels.
std::vector<Level> MipChain(const Level& top, bool mipmaps,
                            std::vector<std::vector<std::uint8_t>>& storage) {
  std::vector<Level> levels{top};
  while (mipmaps && (levels.back().width > 1 || levels.back().height > 1)) {
    const int width = std::max(1, levels.back().width / 2);
    const int height = std::max(1, levels.back().height / 2);
    storage.push_back(Halve(levels.back(), width, height));
    levels.push_back({width, height, storage.back()});
  }
  return levels;
}

std::array<std::uint8_t, kFileHeaderSize> Header(const Level& top, std::size_t levels,
                                                 bool mipmaps) {
  std::array<std::uint8_t, kFileHeaderSize> header{};
  const auto put = [&](std::size_t offset, std::size_t value) {
    StoreU32(header, offset, static_cast<std::uint32_t>(value));
  };
  std::memcpy(header.data(), "DDS ", 4);
  put(4, 124);                                // header size
  put(8, mipmaps ? 0x000A1007 : 0x00081007);  // caps, sides, format, linear size; mip-map count
  put(12, static_cast<std::size_t>(top.height));
  put(16, static_cast<std::size_t>(top.width));
  put(20, top.EncodedSize());
  put(28, mipmaps ? levels : 0);
  put(76, 32);  // size of the pixel format
  put(80, 4);   // it is a four-character code
  std::memcpy(header.data() + 84, "DXT1", 4);
  put(108, mipmaps ? 0x00401008 : 0x00001000);  // texture; complex, mip-mapped
  std::memcpy(header.data() + 116, "DDSX", 4);
  put(120, 0xFFFFFFFF);
  put(124, 0xFFFFFFFF);
  return header;
}

// The 4 x 4 pixels of a block as RGBA. Levels smaller than a block repeat their last row and
// column.
void CopyBlock(const Level& level, int blockX, int blockY, std::uint8_t* rgba) {
  for (int y = 0; y < kBlockSide; ++y) {
    const int row = std::min(blockY * kBlockSide + y, level.height - 1);
    for (int x = 0; x < kBlockSide; ++x, rgba += 4) {
      const int column = std::min(blockX * kBlockSide + x, level.width - 1);
      std::memcpy(rgba, level.Pixel(column, row), 3);
      rgba[3] = 255;
    }
  }
}

// With equal end points the block is decoded with a transparent fourth colour; all its pixels then
// take the first.
void KeepOpaque(std::span<std::uint8_t> block) {
  if (LoadU16(block, 0) <= LoadU16(block, 2)) StoreU32(block, 4, 0);
}

void EncodeBlockRow(const Level& level, int blockY, std::uint8_t* out) {
  alignas(4) std::array<std::uint8_t, 64> rgba;
  for (int blockX = 0; blockX < level.BlockColumns(); ++blockX, out += kBlockSize) {
    CopyBlock(level, blockX, blockY, rgba.data());
    stb_compress_dxt_block(out, rgba.data(), 0, STB_DXT_HIGHQUAL);
    KeepOpaque({out, kBlockSize});
  }
}

void EncodeLevel(const Level& level, std::uint8_t* out) {
  const std::size_t rowSize = static_cast<std::size_t>(level.BlockColumns()) * kBlockSize;
  const int tasks = (level.BlockRows() + kBlockRowsPerTask - 1) / kBlockRowsPerTask;
  SpreadOverCores(static_cast<std::size_t>(tasks), [&](std::size_t task) {
    const int first = static_cast<int>(task) * kBlockRowsPerTask;
    const int end = std::min(first + kBlockRowsPerTask, level.BlockRows());
    for (int blockY = first; blockY < end; ++blockY) {
      EncodeBlockRow(level, blockY, out + static_cast<std::size_t>(blockY) * rowSize);
    }
  });
}

}  // namespace

std::vector<std::uint8_t> EncodeDds(int width, int height, std::span<const std::uint8_t> rgb,
                                    bool mipmaps) try {
  if (!IsSide(width) || !IsSide(height)) return {};
  if (rgb.size() < static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3)
    return {};
  std::vector<std::vector<std::uint8_t>> storage;
  const std::vector<Level> levels = MipChain({width, height, rgb}, mipmaps, storage);
  std::size_t size = kFileHeaderSize;
  for (const Level& level : levels) size += level.EncodedSize();

  std::vector<std::uint8_t> file(size);
  std::ranges::copy(Header(levels.front(), levels.size(), mipmaps), file.begin());
  std::uint8_t* out = file.data() + kFileHeaderSize;
  for (const Level& level : levels) {
    EncodeLevel(level, out);
    out += level.EncodedSize();
  }
  return file;
} catch (const std::bad_alloc&) {
  return {};
}

void SaveDDS(std::string_view path, int width, int height, std::span<const std::uint8_t> rgb,
             bool mipmaps) {
  const std::vector<std::uint8_t> file = EncodeDds(width, height, rgb, mipmaps);
  if (file.empty() && !rgb.empty()) {
    SetGameFileError("A picture could not be encoded.");
    return;
  }
  SaveGameFileBytes(path, file);
}

}  // namespace mw
