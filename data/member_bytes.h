// A member of an archive as far as it can be read. Used by those who must know what is missing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace mw {

// Bytes `begin` to `end` (not included) of a member.
struct MemberGap {
  std::size_t begin = 0, end = 0;
  friend bool operator==(const MemberGap&, const MemberGap&) = default;
};

struct MemberBytes {
  // What can be read is at its place; a gap before it is 0. Nothing follows the last readable byte.
  std::vector<std::uint8_t> data;
  std::vector<MemberGap> gaps;  // what cannot be read, in order; the last may reach beyond `data`
  bool IsWhole() const { return gaps.empty(); }
};

}  // namespace mw
