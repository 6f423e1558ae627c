// Members of a compressed archive: LZO1X segments of 32768 bytes behind a table of their sizes.
// Used by `Archive`; docs/formats.md describes the layout.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "data/member_bytes.h"

namespace mw {

inline constexpr std::size_t kSegmentSize = 32768;
// Longest compressed segment that a reader takes.
inline constexpr std::size_t kMaxCompressedSegment = 40000;

// False when the LZO library does not fit this program. Called by the others here; start-up may
// call it to say so at once.
bool PrepareCompression();

// Returns the stored form of `data`. Segments that `oldStored` (the member's stored form so far, or
// empty) holds with the same bytes are taken from there as they are; the others are compressed with
// LZO1X-999, several at a time where the machine has the cores. Nothing when compression fails.
std::optional<std::vector<std::uint8_t>> CompressMember(std::span<const std::uint8_t> data,
                                                        std::span<const std::uint8_t> oldStored);

// Returns the bytes that a stored member of `size` bytes holds. Of a damaged member the segments
// that decompress keep their place, segment number x kSegmentSize, when its segments are as the
// editor writes them; of any other member, what the segments produce one after the other. Memory
// grows with what the segments produce, not with `size`.
MemberBytes ExpandMember(std::span<const std::uint8_t> stored, std::uint32_t size);
// How many bytes of a member of `size` bytes could be read.
std::size_t ReadableBytes(const MemberBytes& member, std::size_t size);

}  // namespace mw
