#include "data/archive_staging.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace mw {

namespace {

std::ptrdiff_t Distance(std::uint64_t from, std::uint64_t to) {
  return static_cast<std::ptrdiff_t>(to - from);
}

}  // namespace

void StagedWrites::Write(std::uint64_t offset, std::vector<std::uint8_t> bytes) {
  if (bytes.empty()) return;
  CutOut(offset, offset + bytes.size());
  pieces_.emplace(offset, std::move(bytes));
}

// Takes the bytes from `start` to `end` out of the pieces that hold some of them.
void StagedWrites::CutOut(std::uint64_t start, std::uint64_t end) {
  auto piece = pieces_.lower_bound(start);
  if (piece != pieces_.begin()) --piece;
  while (piece != pieces_.end() && piece->first < end) {
    const std::uint64_t first = piece->first;
    const std::uint64_t last = first + piece->second.size();
    if (last <= start) {
      ++piece;
      continue;
    }
    std::vector<std::uint8_t> bytes = std::move(piece->second);
    piece = pieces_.erase(piece);
    if (last > end)
      pieces_.emplace(end, std::vector(bytes.begin() + Distance(first, end), bytes.end()));
    if (first < start) {
      bytes.resize(static_cast<std::size_t>(start - first));
      pieces_.emplace(first, std::move(bytes));
    }
  }
}

void StagedWrites::PutOver(std::uint64_t offset, std::span<std::uint8_t> bytes) const {
  const std::uint64_t end = offset + bytes.size();
  auto piece = pieces_.upper_bound(offset);
  if (piece != pieces_.begin()) --piece;
  for (; piece != pieces_.end() && piece->first < end; ++piece) {
    const std::uint64_t from = std::max(offset, piece->first);
    const std::uint64_t to = std::min(end, piece->first + piece->second.size());
    if (from >= to) continue;
    const auto source = piece->second.begin() + Distance(piece->first, from);
    std::copy(source, source + Distance(from, to), bytes.begin() + Distance(offset, from));
  }
}

std::uint64_t StagedWrites::End() const {
  if (pieces_.empty()) return 0;
  const auto& [offset, bytes] = *std::prev(pieces_.end());
  return offset + bytes.size();
}

}  // namespace mw
