// Reads the mesh files as the game does, to the last byte. A number beyond the file reads as 0 and
// sets `failed`.
#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "core/little_endian.h"

namespace mw {

class MeshReader {
 public:
  explicit MeshReader(std::span<const std::uint8_t> file) : file_(file) {}

  std::uint32_t Number() { return Fits(4) ? LoadU32(file_, Advance(4)) : 0; }
  std::uint16_t Index() { return Fits(2) ? LoadU16(file_, Advance(2)) : std::uint16_t{0}; }
  float Real() {
    const std::uint32_t bits = Number();
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }
  std::uint8_t Byte() { return Fits(1) ? file_[Advance(1)] : std::uint8_t{0}; }
  std::string Name() {
    const std::uint32_t length = Number();
    if (!Fits(length)) return {};
    const std::size_t start = Advance(length);
    return {file_.begin() + static_cast<std::ptrdiff_t>(start),
            file_.begin() + static_cast<std::ptrdiff_t>(start + length)};
  }
  void Skip(std::size_t count) {
    if (Fits(count)) Advance(count);
  }
  // Reads `count` indices; fails when one is not below `limit`.
  void Indices(std::size_t count, std::uint32_t limit) {
    for (std::size_t k = 0; k < count && !failed; ++k) failed |= Index() >= limit;
  }
  // Vertices of 16 bytes and faces of three indices and a spare number. Gives the number of faces.
  std::uint32_t Collision() {
    const std::uint32_t vertices = Number();
    Skip(std::size_t{16} * vertices);
    const std::uint32_t faces = Number();
    for (std::uint32_t k = 0; k < faces && !failed; ++k) {
      Indices(3, vertices);
      Index();
    }
    return faces;
  }
  std::size_t Position() const { return position_; }
  bool AtEnd() const { return position_ == file_.size(); }

  bool failed = false;

 private:
  bool Fits(std::size_t count) {
    failed |= count > file_.size() - position_;
    return !failed;
  }
  std::size_t Advance(std::size_t count) {
    position_ += count;
    return position_ - count;
  }

  std::span<const std::uint8_t> file_;
  std::size_t position_ = 0;
};

}  // namespace mw
