// A row of blocks on its way to the DXT1 encoder of the including file, which takes several
// together. Those of one colour do not need it.
#pragma once

#include "terrain/dxt1_colour_pair.h"
#include "terrain/dxt1_encoder.h"
#include "terrain/dxt1_lanes.h"

namespace mw {
namespace {

// Blocks that wait until there are enough of them.
class Waiting {
 public:
  void Add(const Packed& from, std::size_t lane, std::uint8_t* out) {
    for (int i = 0; i < kPixels; ++i) pixels_.pixel[i][count_] = from.pixel[i][lane];
    out_[count_++] = out;
    if (count_ == kLanes) Encode();
  }

  void Encode() {
    if (count_ == 0) return;
    std::uint8_t encoded[kLanes * kDxt1BlockSize];
    EncodeLanes(pixels_, encoded);
    for (std::size_t i = 0; i < count_; ++i) {
      std::memcpy(out_[i], encoded + i * kDxt1BlockSize, kDxt1BlockSize);
    }
    count_ = 0;
  }

 private:
  Packed pixels_{};
  std::uint8_t* out_[kLanes];
  std::size_t count_ = 0;
};

inline Packed LoadBlocks(const std::uint32_t* pixels, std::size_t stride) {
  Packed loaded;
  for (std::size_t row = 0; row < 4; ++row) {
    const Columns columns = LoadColumns(pixels + row * stride);
    for (std::size_t column = 0; column < 4; ++column) {
      loaded.pixel[row * 4 + column] = columns.column[column];
    }
  }
  return loaded;
}

// For rows that end before the last lane.
inline Packed LoadFewBlocks(const std::uint32_t* pixels, std::size_t stride, std::size_t blocks) {
  Packed loaded{};
  for (std::size_t i = 0; i < kPixels; ++i) {
    for (std::size_t lane = 0; lane < blocks; ++lane) {
      loaded.pixel[i][lane] = static_cast<std::int32_t>(pixels[i / 4 * stride + lane * 4 + i % 4]);
    }
  }
  return loaded;
}

inline Ints ManyColoured(const Packed& blocks) {
  Ints different{};
  for (const Ints& pixel : blocks.pixel) different |= pixel ^ blocks.pixel[0];
  return different != 0;
}

inline void EncodeRow(const std::uint32_t* pixels, std::size_t blocks, std::uint8_t* out) {
  const std::size_t stride = blocks * 4;
  Waiting waiting;
  for (std::size_t block = 0; block < blocks; block += kLanes, pixels += kLanes * 4) {
    const std::size_t left = blocks - block, lanes = left < kLanes ? left : kLanes;
    const Packed packed =
        lanes == kLanes ? LoadBlocks(pixels, stride) : LoadFewBlocks(pixels, stride, lanes);
    const Ints manyColoured = ManyColoured(packed);
    if (!AnyLane(~manyColoured)) {
      EncodeLanes(packed, out);
      out += kLanes * kDxt1BlockSize;
      continue;
    }
    for (std::size_t lane = 0; lane < lanes; ++lane, out += kDxt1BlockSize) {
      if (manyColoured[lane]) {
        waiting.Add(packed, lane, out);
      } else {
        EncodeOneColour(static_cast<std::uint32_t>(packed.pixel[0][lane]), out);
      }
    }
  }
  waiting.Encode();
}

}  // namespace
}  // namespace mw
