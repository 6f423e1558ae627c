#include "terrain/dds_writer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>

#include "core/little_endian.h"
#include "core/parallel.h"
#include "data/game_file.h"
#include "data/image.h"
#include "terrain/dxt1_encoder.h"

namespace mw {
namespace {

constexpr std::size_t kFileHeaderSize = 128;
constexpr int kBlockSide = 4;  // pixels

// One mip level, rows from the top. The first one's pixels belong to the caller, and have three
// bytes; those of the others are 0x00BBGGRR.
struct Level {
  int width = 0, height = 0;
  const std::uint8_t* rgb = nullptr;
  std::unique_ptr<std::uint32_t[]> pixels;
  std::uint8_t* blocks = nullptr;  // where they go when they are encoded

  int BlockColumns() const { return (width + kBlockSide - 1) / kBlockSide; }
  int BlockRows() const { return (height + kBlockSide - 1) / kBlockSide; }
  std::size_t EncodedSize() const {
    return static_cast<std::size_t>(BlockColumns()) * static_cast<std::size_t>(BlockRows()) *
           kDxt1BlockSize;
  }
  std::size_t Index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(x);
  }
};

bool IsSide(int side) {
  return side >= 1 && side <= kMaxImageSide && std::has_single_bit(static_cast<unsigned>(side));
}

// The level and, with mip-maps, room for all smaller ones down to 1 x 1.
std::vector<Level> MipChain(int width, int height, const std::uint8_t* rgb, bool mipmaps) {
  std::vector<Level> levels(1);
  levels[0].width = width;
  levels[0].height = height;
  levels[0].rgb = rgb;
  while (mipmaps && (width > 1 || height > 1)) {
    width = std::max(1, width / 2);
    height = std::max(1, height / 2);
    Level& level = levels.emplace_back();
    level.width = width;
    level.height = height;
    level.pixels = std::make_unique_for_overwrite<std::uint32_t[]>(level.Index(0, height));
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

// A piece of a level on its way to the encoder: the four rows of some blocks side by side. Beyond
// the edges of a smaller level its last row and column repeat.
struct Strip {
  static constexpr int kMostColumns = 1024;  // a multiple of kBlockSide
  alignas(64) std::array<std::uint32_t, std::size_t{kMostColumns} * kBlockSide> pixels;
  int columns = 0;

  std::uint32_t* Row(int row) { return pixels.data() + static_cast<std::size_t>(row * columns); }
};

// Two pixels from six bytes.
std::uint64_t Widen(std::uint64_t rgb) {
  constexpr std::uint64_t kFirst = 0xFFFFFF, kSecond = kFirst << 32;
  return (rgb & kFirst) | (rgb << 8 & kSecond);
}

// `columns` is a multiple of four.
void UnpackRow(const std::uint8_t* rgb, int columns, std::uint32_t* out) {
  for (int x = 0; x < columns; x += 4, rgb += 12, out += 4) {
    const std::span bytes(rgb, 12);
    const std::uint64_t left = Widen(LoadU64(bytes, 0)), right = Widen(LoadU64(bytes, 4) >> 16);
    out[0] = static_cast<std::uint32_t>(left);
    out[1] = static_cast<std::uint32_t>(left >> 32);
    out[2] = static_cast<std::uint32_t>(right);
    out[3] = static_cast<std::uint32_t>(right >> 32);
  }
}

std::uint32_t PixelOf(const Level& level, int x, int y) {
  const std::size_t index = level.Index(x, y);
  if (!level.rgb) return level.pixels[index];
  const std::uint8_t* const rgb = level.rgb + index * 3;
  return rgb[0] | std::uint32_t{rgb[1]} << 8 | std::uint32_t{rgb[2]} << 16;
}

void ReadStrip(const Level& level, int x, int y, Strip& strip) {
  strip.columns = std::min(level.BlockColumns() * kBlockSide - x, Strip::kMostColumns);
  for (int r = 0; r < kBlockSide; ++r) {
    const int row = std::min(y + r, level.height - 1);
    std::uint32_t* const out = strip.Row(r);
    if (level.width < kBlockSide) {
      for (int c = 0; c < kBlockSide; ++c) {
        out[c] = PixelOf(level, std::min(c, level.width - 1), row);
      }
    } else if (level.rgb) {
      UnpackRow(level.rgb + level.Index(x, row) * 3, strip.columns, out);
    } else {
      std::copy_n(level.pixels.get() + level.Index(x, row), strip.columns, out);
    }
  }
}

// Each pixel is the rounded mean of the 2 x 2 pixels that it stands for.
void HalveRows(const std::uint32_t* top, const std::uint32_t* bottom, int columns,
               std::uint32_t* out) {
  constexpr std::uint32_t kOther = 0x00FF00FF;  // every other channel, and room for sums
  constexpr std::uint32_t kHalf = 0x00020002;
  for (int x = 0; x < columns; ++x) {
    const std::uint32_t a = top[2 * x], b = top[2 * x + 1];
    const std::uint32_t c = bottom[2 * x], d = bottom[2 * x + 1];
    const std::uint32_t redBlue = (a & kOther) + (b & kOther) + (c & kOther) + (d & kOther) + kHalf;
    const std::uint32_t green =
        (a >> 8 & kOther) + (b >> 8 & kOther) + (c >> 8 & kOther) + (d >> 8 & kOther) + kHalf;
    out[x] = (redBlue >> 2 & kOther) | (green >> 2 & kOther) << 8;
  }
}

// What the strip at (x, y) becomes in the next level. Where a side is already 1 its pixels stand
// twice in the strip.
void Halve(Strip& strip, int x, int y, Level& next) {
  const int columns = std::min(strip.columns / 2, next.width - x / 2);
  for (int r = 0; r < 2 && y / 2 + r < next.height; ++r) {
    HalveRows(strip.Row(2 * r), strip.Row(2 * r + 1), columns,
              next.pixels.get() + next.Index(x / 2, y / 2 + r));
  }
}

// Encodes rows of the level's blocks and makes what they are in the next level, if there is one.
void EncodeBlockRows(const Level& level, int firstRow, int endRow, Level* next) {
  const Dxt1Encoder encode = Dxt1Encoders().back();
  Strip strip;
  for (int row = firstRow; row < endRow; ++row) {
    const int y = row * kBlockSide;
    std::uint8_t* out = level.blocks + static_cast<std::size_t>(row) *
                                           static_cast<std::size_t>(level.BlockColumns()) *
                                           kDxt1BlockSize;
    for (int x = 0; x < level.width; x += Strip::kMostColumns) {
      ReadStrip(level, x, y, strip);
      const auto blocks = static_cast<std::size_t>(strip.columns / kBlockSide);
      encode(strip.pixels.data(), blocks, out);
      out += blocks * kDxt1BlockSize;
      if (next) Halve(strip, x, y, *next);
    }
  }
}

void EncodeLevel(const Level& level, Level* next) {
  constexpr int kPixelsPerTask = 1 << 16;
  const int rows = level.BlockRows();
  const int rowsPerTask = std::max(1, kPixelsPerTask / (level.width * kBlockSide));
  const int tasks = (rows + rowsPerTask - 1) / rowsPerTask;
  SpreadOverCores(static_cast<std::size_t>(tasks), [&](std::size_t task) {
    const int first = static_cast<int>(task) * rowsPerTask;
    EncodeBlockRows(level, first, std::min(first + rowsPerTask, rows), next);
  });
}

}  // namespace

std::vector<std::uint8_t> EncodeDds(int width, int height, std::span<const std::uint8_t> rgb,
                                    bool mipmaps) try {
  if (!IsSide(width) || !IsSide(height)) return {};
  if (rgb.size() < static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3)
    return {};
  std::vector<Level> levels = MipChain(width, height, rgb.data(), mipmaps);
  std::size_t size = kFileHeaderSize;
  for (const Level& level : levels) size += level.EncodedSize();

  std::vector<std::uint8_t> file(size);
  std::ranges::copy(Header(levels.front(), levels.size(), mipmaps), file.begin());
  std::uint8_t* out = file.data() + kFileHeaderSize;
  for (std::size_t i = 0; i < levels.size(); ++i) {
    levels[i].blocks = out;
    out += levels[i].EncodedSize();
    EncodeLevel(levels[i], i + 1 < levels.size() ? &levels[i + 1] : nullptr);
  }
  return file;
} catch (const std::bad_alloc&) {
  return {};
}

bool SaveDDS(std::string_view path, int width, int height, std::span<const std::uint8_t> rgb,
             bool mipmaps) {
  const std::vector<std::uint8_t> file = EncodeDds(width, height, rgb, mipmaps);
  if (file.empty() && !rgb.empty()) {
    SetGameFileError("A picture could not be encoded.");
    return false;
  }
  return SaveGameFileBytes(path, file);
}

}  // namespace mw
