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
#include "terrain/dxt1_colour_pair.h"
#include "terrain/dxt1_encoder.h"

namespace mw {
namespace {

constexpr std::size_t kFileHeaderSize = 128;
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
           kDxt1BlockSize;
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
  const std::size_t rowBytes = static_cast<std::size_t>(width) * 3;
  std::vector<std::uint8_t> rgb(rowBytes * static_cast<std::size_t>(height));
  const int stepX = from.width / width, stepY = from.height / height;
  const int right = (stepX - 1) * 3;
  for (int y = 0; y < height; ++y) {
    const std::uint8_t* top = from.Pixel(0, y * stepY);
    const std::uint8_t* bottom = from.Pixel(0, y * stepY + stepY - 1);
    std::uint8_t* out = rgb.data() + static_cast<std::size_t>(y) * rowBytes;
    for (int x = 0; x < width; ++x, top += stepX * 3, bottom += stepX * 3, out += 3) {
      for (int c = 0; c < 3; ++c) {
        const int sum = top[c] + top[right + c] + bottom[c] + bottom[right + c];
        out[c] = static_cast<std::uint8_t>((sum + 2) / 4);
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

using BlockPixels = std::array<std::uint32_t, 16>;  // 0x00BBGGRR each

// A block that lies wholly in the level.
BlockPixels WholeBlock(const Level& level, int x, int y) {
  constexpr std::uint32_t kColour = 0xFFFFFF;
  constexpr std::size_t kRowBytes = kBlockSide * 3;
  BlockPixels pixels;
  for (std::size_t row = 0; row < kBlockSide; ++row) {
    const std::span bytes(level.Pixel(x, y + static_cast<int>(row)), kRowBytes);
    const std::uint32_t a = LoadU32(bytes, 0), b = LoadU32(bytes, 4), c = LoadU32(bytes, 8);
    pixels[row * 4] = a & kColour;
    pixels[row * 4 + 1] = (a >> 24 | b << 8) & kColour;
    pixels[row * 4 + 2] = (b >> 16 | c << 16) & kColour;
    pixels[row * 4 + 3] = c >> 8;
  }
  return pixels;
}

// A block of a level that is smaller: its last row and column repeat.
BlockPixels PartialBlock(const Level& level, int x, int y) {
  BlockPixels pixels;
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    const int row = static_cast<int>(i) / kBlockSide, column = static_cast<int>(i) % kBlockSide;
    const std::uint8_t* const rgb =
        level.Pixel(std::min(x + column, level.width - 1), std::min(y + row, level.height - 1));
    pixels[i] = rgb[0] | std::uint32_t{rgb[1]} << 8 | std::uint32_t{rgb[2]} << 16;
  }
  return pixels;
}

// Blocks on their way to the encoder, which takes several together. Those of one colour do not need
// it.
class BlockBatch {
 public:
  void Add(const BlockPixels& pixels, std::uint8_t* out) {
    if (std::ranges::all_of(pixels, [&](std::uint32_t pixel) { return pixel == pixels[0]; })) {
      EncodeOneColour(pixels[0], out);
      return;
    }
    for (std::size_t i = 0; i < pixels.size(); ++i) pixels_.pixel[i][count_] = pixels[i];
    out_[count_++] = out;
    if (count_ == kDxt1Lanes) Flush();
  }

  void Flush() {
    std::array<std::uint8_t, kDxt1Lanes * kDxt1BlockSize> encoded;
    if (count_ > 0) encode_(pixels_, encoded.data());
    for (std::size_t i = 0; i < count_; ++i) {
      std::memcpy(out_[i], encoded.data() + i * kDxt1BlockSize, kDxt1BlockSize);
    }
    count_ = 0;
  }

 private:
  Dxt1Encoder encode_ = Dxt1Encoders().back();
  Dxt1Pixels pixels_{};
  std::array<std::uint8_t*, kDxt1Lanes> out_{};
  std::size_t count_ = 0;
};

// Some rows of a level's blocks.
struct EncodeTask {
  const Level* level;
  int firstRow, endRow;
  std::uint8_t* out;  // of the level
};

void Encode(const EncodeTask& task) {
  const Level& level = *task.level;
  const bool isWhole = level.width >= kBlockSide && level.height >= kBlockSide;
  const auto columns = static_cast<std::size_t>(level.BlockColumns());
  BlockBatch batch;
  for (int row = task.firstRow; row < task.endRow; ++row) {
    std::uint8_t* out = task.out + static_cast<std::size_t>(row) * columns * kDxt1BlockSize;
    for (int column = 0; column < level.BlockColumns(); ++column, out += kDxt1BlockSize) {
      const int x = column * kBlockSide, y = row * kBlockSide;
      batch.Add(isWhole ? WholeBlock(level, x, y) : PartialBlock(level, x, y), out);
    }
  }
  batch.Flush();
}

// All levels, one after the other at `out`.
void EncodeLevels(const std::vector<Level>& levels, std::uint8_t* out) {
  std::vector<EncodeTask> tasks;
  for (const Level& level : levels) {
    for (int row = 0; row < level.BlockRows(); row += kBlockRowsPerTask) {
      tasks.push_back({&level, row, std::min(row + kBlockRowsPerTask, level.BlockRows()), out});
    }
    out += level.EncodedSize();
  }
  SpreadOverCores(tasks.size(), [&tasks](std::size_t task) { Encode(tasks[task]); });
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
  EncodeLevels(levels, file.data() + kFileHeaderSize);
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
