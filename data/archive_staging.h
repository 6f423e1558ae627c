// The changes of a save before they reach the archive file. They are kept in memory and made in one
// go, so that the file is only ever open to damage for that moment. Used by `Archive`.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <vector>

namespace mw {

class StagedWrites {
 public:
  // Later writes win where they overlap earlier ones.
  void Write(std::uint64_t offset, std::vector<std::uint8_t> bytes);
  // Puts what is staged over `bytes`, which were read from the file at `offset`.
  void PutOver(std::uint64_t offset, std::span<std::uint8_t> bytes) const;
  // Where the write that reaches furthest ends; 0 when nothing is staged.
  std::uint64_t End() const;
  void Clear() { pieces_.clear(); }
  // The bytes of each piece by its offset. Pieces do not overlap.
  const std::map<std::uint64_t, std::vector<std::uint8_t>>& Pieces() const { return pieces_; }

 private:
  void CutOut(std::uint64_t start, std::uint64_t end);

  std::map<std::uint64_t, std::vector<std::uint8_t>> pieces_;
};

}  // namespace mw
