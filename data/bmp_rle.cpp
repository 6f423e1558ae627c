#include "data/bmp_rle.h"

#include <algorithm>
#include <cstddef>

namespace mw {
namespace {

// Second bytes of a code whose first byte is 0; larger ones count literal pixels.
enum : std::uint8_t { kEndOfLine = 0, kEndOfBitmap = 1, kDelta = 2 };

class RleDecoder {
 public:
  RleDecoder(std::span<const std::uint8_t> data, int bitCount, int width, int height,
             const PutPixel& put)
      : data_(data), bitCount_(bitCount), width_(width), height_(height), put_(put) {}

  bool Decode() {
    while (!finished_ && row_ < height_ && !data_.empty()) {
      if (!DecodeCode()) return false;
    }
    return true;
  }

 private:
  bool DecodeCode() {
    if (data_.size() < 2) return false;
    const std::uint8_t count = data_[0], value = data_[1];
    data_ = data_.subspan(2);
    if (count > 0) {
      for (int i = 0; i < count; ++i) Put(PixelOf(value, i));
      return true;
    }
    switch (value) {
      case kEndOfLine:
        MoveTo(0, row_ + 1);
        return true;
      case kEndOfBitmap:
        finished_ = true;
        return true;
      case kDelta:
        return DecodeDelta();
      default:
        return PutLiterals(value);
    }
  }

  bool DecodeDelta() {
    if (data_.size() < 2) return false;
    MoveTo(column_ + data_[0], row_ + data_[1]);
    data_ = data_.subspan(2);
    return true;
  }

  void MoveTo(int column, int row) {
    column_ = std::min(column, width_);
    row_ = row;
  }

  // Literal pixels fill whole 16-bit words.
  bool PutLiterals(int count) {
    const std::size_t bytes =
        bitCount_ == 8 ? static_cast<std::size_t>(count) : static_cast<std::size_t>(count + 1) / 2;
    const std::size_t padded = (bytes + 1) / 2 * 2;
    if (data_.size() < bytes) return false;
    for (int i = 0; i < count; ++i) {
      const std::size_t at = static_cast<std::size_t>(bitCount_ == 8 ? i : i / 2);
      Put(PixelOf(data_[at], i));
    }
    data_ = data_.subspan(std::min(padded, data_.size()));
    return true;
  }

  // The i-th pixel of a run: 4-bit pixels alternate between the byte's halves.
  std::uint8_t PixelOf(std::uint8_t value, int i) const {
    if (bitCount_ == 8) return value;
    return i % 2 == 0 ? value >> 4 : value & 0x0F;
  }

  void Put(std::uint8_t index) {
    if (column_ < width_) put_(row_, column_++, index);
  }

  std::span<const std::uint8_t> data_;
  int bitCount_, width_, height_;
  int column_ = 0, row_ = 0;
  bool finished_ = false;
  const PutPixel& put_;
};

}  // namespace

bool DecodeRle(std::span<const std::uint8_t> data, int bitCount, int width, int height,
               const PutPixel& put) {
  return RleDecoder(data, bitCount, width, height, put).Decode();
}

}  // namespace mw
