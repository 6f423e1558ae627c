#include "terrain/height_image.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "core/little_endian.h"
#include "core/parallel.h"

namespace mw {
namespace {

constexpr float kMaxStored = 65535;
constexpr std::size_t kSampleBytes = 2;
constexpr std::size_t kBlock = 8;  // rows and columns of samples that change places together

using Samples = std::int16_t __attribute__((vector_size(kBlock * kSampleBytes)));

// Samples in memory, with rows that lie `stride` bytes apart.
struct Rows {
  std::uint8_t* first;
  std::size_t stride;
  std::uint8_t* At(std::size_t row, std::size_t column) const {
    return first + row * stride + column * kSampleBytes;
  }
};
struct ConstRows {
  const std::uint8_t* first;
  std::size_t stride;
  const std::uint8_t* At(std::size_t row, std::size_t column) const {
    return first + row * stride + column * kSampleBytes;
  }
};

// Mixes the samples of rows i and i + 4 in turns into rows 2 i and 2 i + 1. Done three times, it
// makes columns of the rows.
void Interleave(const Samples (&from)[kBlock], Samples (&to)[kBlock]) {
  for (std::size_t i = 0; i < kBlock / 2; ++i) {
    const Samples a = from[i], b = from[i + kBlock / 2];
    to[2 * i] = __builtin_shufflevector(a, b, 0, 8, 1, 9, 2, 10, 3, 11);
    to[2 * i + 1] = __builtin_shufflevector(a, b, 4, 12, 5, 13, 6, 14, 7, 15);
  }
}

void TransposeBlock(const ConstRows& from, const Rows& to, std::size_t row, std::size_t column) {
  Samples a[kBlock], b[kBlock];
  for (std::size_t i = 0; i < kBlock; ++i)
    std::memcpy(&a[i], from.At(row + i, column), sizeof a[i]);
  Interleave(a, b);
  Interleave(b, a);
  Interleave(a, b);
  for (std::size_t i = 0; i < kBlock; ++i) std::memcpy(to.At(column + i, row), &b[i], sizeof b[i]);
}

// Makes columns of the rows of `from`, as many rows and columns as are given.
void Transpose(const ConstRows& from, const Rows& to, std::size_t rows, std::size_t columns) {
  const std::size_t wholeRows = rows / kBlock * kBlock, wholeColumns = columns / kBlock * kBlock;
  for (std::size_t row = 0; row < wholeRows; row += kBlock) {
    for (std::size_t c = 0; c < wholeColumns; c += kBlock) TransposeBlock(from, to, row, c);
  }
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t c = row < wholeRows ? wholeColumns : 0; c < columns; ++c) {
      std::memcpy(to.At(c, row), from.At(row, c), kSampleBytes);
    }
  }
}

// Some columns of the image, one after the other in its byte order. They stand between image and
// grid because all of the grid's memory has to pass through the processor, and row by row it comes
// fastest.
struct Band {
  static constexpr std::size_t kColumns = 32;
  // A stride of just a column would make all columns want the same places in the cache.
  static constexpr std::size_t kStride = kMaxMaterialSize + 32;
  alignas(64) std::uint16_t columns[kColumns][kStride];
  alignas(64) float heights[kMaxMaterialSize];

  std::uint8_t* Bytes() { return reinterpret_cast<std::uint8_t*>(columns); }
};

std::uint16_t LittleEndian(std::uint16_t v) {
  if constexpr (std::endian::native == std::endian::little) return v;
  return static_cast<std::uint16_t>(v << 8 | v >> 8);
}

// Calls act(band, first column, number of columns) for all columns of the image, on several cores.
// The last columns come first, as they do in each band, because that is the order of the grid's
// memory.
template <typename Act>
void ForEachBand(std::size_t size, Act act) {
  const std::size_t bands = (size + Band::kColumns - 1) / Band::kColumns;
  SpreadOverCores(bands, [&](std::size_t task) {
    const std::size_t first = (bands - 1 - task) * Band::kColumns;
    Band band;
    act(band, first, std::min(Band::kColumns, size - first));
  });
}

}  // namespace

std::size_t HeightImageBytes(int size) {
  return static_cast<std::size_t>(size) * static_cast<std::size_t>(size) * kSampleBytes;
}

std::size_t HeightImageOffset(int size, int i, int j) {
  const auto side = static_cast<std::size_t>(size);
  return (static_cast<std::size_t>(j) * side + side - static_cast<std::size_t>(i)) * kSampleBytes;
}

void HeightsToImage(const VertexGrid& from, int size, std::span<std::uint8_t> image) {
  const auto side = static_cast<std::size_t>(size);
  ForEachBand(side, [&](Band& band, std::size_t first, std::size_t count) {
    for (std::size_t k = count; k-- > 0;) {
      const auto& row = from[side - first - k];
      for (std::size_t j = 0; j < side; ++j) band.heights[j] = row[j].h;
      for (std::size_t j = 0; j < side; ++j) {
        const float scaled = band.heights[j] * kStoredPerUnit;
        const auto stored = static_cast<int>(std::max(0.0f, std::min(scaled, kMaxStored)));
        band.columns[k][j] = LittleEndian(static_cast<std::uint16_t>(stored));
      }
    }
    Transpose({band.Bytes(), Band::kStride * kSampleBytes},
              {image.data() + first * kSampleBytes, side * kSampleBytes}, count, side);
  });
}

void ImageToHeights(std::span<const std::uint8_t> image, int size, VertexGrid& to) {
  const auto side = static_cast<std::size_t>(size);
  const std::size_t samples = std::min(image.size() / kSampleBytes, side * side);
  if (samples == 0) return;
  const std::size_t rows = samples / side, more = samples % side;
  ForEachBand(side, [&](Band& band, std::size_t first, std::size_t count) {
    Transpose({image.data() + first * kSampleBytes, side * kSampleBytes},
              {band.Bytes(), Band::kStride * kSampleBytes}, rows, count);
    for (std::size_t k = count; k-- > 0;) {
      for (std::size_t j = 0; j < rows; ++j) {
        band.heights[j] = static_cast<float>(LittleEndian(band.columns[k][j])) / kStoredPerUnit;
      }
      auto& row = to[side - first - k];
      for (std::size_t j = 0; j < rows; ++j) row[j].h = band.heights[j];
    }
  });
  // A short image ends within this row, so only some of its samples are there.
  for (std::size_t column = 0; column < more; ++column) {
    const int stored = LoadU16(image, (rows * side + column) * kSampleBytes);
    to[side - column][rows].h = static_cast<float>(stored) / kStoredPerUnit;
  }
}

}  // namespace mw
