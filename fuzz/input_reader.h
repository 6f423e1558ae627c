// Takes the input of a fuzz target apart into the decisions that it stands for. An input that has
// ended gives zeros.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

class InputReader {
 public:
  InputReader(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

  bool AtEnd() const { return rest_.empty(); }
  std::size_t Byte() {
    const auto byte = Bytes(1);
    return byte.empty() ? 0 : byte[0];
  }
  bool Flag() { return (Byte() & 1) != 0; }
  // 0 ... limit - 1, of two bytes
  std::size_t NumberBelow(std::size_t limit) {
    const std::size_t high = Byte();
    return (high * 256 + Byte()) % limit;
  }
  // As many as are left at most.
  std::span<const std::uint8_t> Bytes(std::size_t count) {
    const auto taken = rest_.first(std::min(count, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return taken;
  }
  // A byte that tells how many follow.
  std::span<const std::uint8_t> Part() { return Bytes(Byte()); }

 private:
  std::span<const std::uint8_t> rest_;
};
