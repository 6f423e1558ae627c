#include "data/archive_segments.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <lzo/lzo1x.h>

#include "core/bytes.h"
#include "core/little_endian.h"
#include "core/parallel.h"

namespace mw {
namespace {

constexpr std::size_t kTableEntry = 12;  // compressed size, uncompressed size, offset
// How many bytes one compressed byte can become at most: it may lengthen a match by so many.
constexpr std::size_t kMaxExpansion = 255;
// A member with fewer segments is decompressed sooner than another thread starts.
constexpr std::size_t kSpreadSegments = 4;
// How much room a member gets at once, in multiples of its stored size. The room of a denser member
// grows while it is read: the size that a file claims is not believed.
constexpr std::uint64_t kUsualExpansion = 16;

constexpr std::size_t WorstCase(std::size_t size) { return size + size / 16 + 64 + 3; }
static_assert(WorstCase(kSegmentSize) <= kMaxCompressedSegment);

// A damaged member gets room for its gaps up to this size, also when it is denser than usual.
constexpr std::uint64_t kRoomForGaps = std::uint64_t{16} << 20;

constexpr std::size_t SegmentsOf(std::size_t size) {
  return (size + kSegmentSize - 1) / kSegmentSize;
}

std::uint32_t StatedCount(ByteView stored) { return stored.size() < 4 ? 0 : LoadU32(stored); }

// Reads the segment table at the front of a stored member.
class SegmentTable {
 public:
  // Segments lie one after the other, so together they are no larger than the data. `slack` times
  // as much is taken from a table that may be damaged.
  SegmentTable(ByteView stored, std::size_t count, std::size_t slack = 1) {
    if (stored.size() < 4 || count > (stored.size() - 4) / kTableEntry) return;
    table_ = stored.subspan(4, count * kTableEntry);
    data_ = stored.subspan(4 + table_.size());
    left_ = data_.size() * slack;
  }

  std::size_t Count() const { return table_.size() / kTableEntry; }

  // Takes the compressed bytes of a segment, each once; nothing when they do not fit the member.
  std::optional<ByteView> Take(std::size_t segment) {
    if (segment >= Count()) return std::nullopt;
    const ByteView entry = table_.subspan(segment * kTableEntry, kTableEntry);
    const std::size_t size = LoadU32(entry, 0), offset = LoadU32(entry, 8);
    if (size > kMaxCompressedSegment || size > left_ || size > data_.size() ||
        offset > data_.size() - size) {
      return std::nullopt;
    }
    left_ -= size;
    return data_.subspan(offset, size);
  }

 private:
  ByteView table_, data_;
  std::size_t left_ = 0;
};

struct Expanded {
  std::size_t size = 0;  // bytes that were produced, even if an error came then
  int code = LZO_E_OK;
  // Bytes behind the end of the compressed data do no harm.
  bool IsGood() const { return code == LZO_E_OK || code == LZO_E_INPUT_NOT_CONSUMED; }
  // How much of a segment that expands to `wanted` bytes can be used. When an error came with the
  // last byte, that one cannot.
  std::size_t UsableOf(std::size_t wanted) const {
    return IsGood() ? std::min(size, wanted) : std::min(size, wanted - 1);
  }
};

// Decompresses a segment into the front of `out`.
Expanded ExpandInto(ByteView compressed, std::span<std::uint8_t> out) {
  lzo_uint produced = out.size();
  const int code =
      lzo1x_decompress_safe(compressed.data(), compressed.size(), out.data(), &produced, nullptr);
  return {std::min<std::size_t>(produced, out.size()), code};
}

// One segment of a member that is being written.
struct Segment {
  ByteView plain;
  ByteView oldCompressed;  // what the member had at this place before; may be empty
  Bytes compressed;        // empty when the old one is kept
  bool kept = false;
  ByteView Stored() const { return kept ? oldCompressed : ByteView(compressed); }
};

bool Expands(ByteView compressed, ByteView plain) {
  if (compressed.empty()) return false;
  Bytes expanded(plain.size());
  const Expanded result = ExpandInto(compressed, expanded);
  return result.code == LZO_E_OK && result.size == expanded.size() &&
         std::ranges::equal(expanded, plain);
}

// Expands again what was compressed, so that a segment that cannot be read is never written.
bool Compress(Segment& segment, Bytes& workMemory) {
  workMemory.resize(LZO1X_999_MEM_COMPRESS);
  segment.compressed.resize(WorstCase(segment.plain.size()));
  lzo_uint size = segment.compressed.size();
  const int code = lzo1x_999_compress(segment.plain.data(), segment.plain.size(),
                                      segment.compressed.data(), &size, workMemory.data());
  segment.compressed.resize(code == LZO_E_OK ? size : 0);
  return Expands(segment.compressed, segment.plain);
}

// Compresses the segments that have changed. The work memory, one per core, is a cache: kept for
// the next call.
bool CompressChanged(std::span<Segment> segments) {
  static std::vector<Bytes> workMemory;
  const std::size_t workers = UsableCores();
  if (workMemory.size() < workers) workMemory.resize(workers);
  std::atomic<bool> good = true;
  SpreadOverWorkers(segments.size(), workers, [&](std::size_t i, std::size_t worker) {
    if (!good) return;
    segments[i].kept = Expands(segments[i].oldCompressed, segments[i].plain);
    if (!segments[i].kept && !Compress(segments[i], workMemory[worker])) good = false;
  });
  return good;
}

std::vector<Segment> SplitIntoSegments(ByteView data, ByteView oldStored) {
  std::vector<Segment> segments(SegmentsOf(data.size()));
  SegmentTable before(oldStored, StatedCount(oldStored));
  for (std::size_t i = 0; i < segments.size(); ++i) {
    segments[i].plain = data.first(std::min(kSegmentSize, data.size()));
    data = data.subspan(segments[i].plain.size());
    segments[i].oldCompressed = before.Take(i).value_or(ByteView{});
  }
  return segments;
}

Bytes JoinSegments(std::span<const Segment> segments) {
  std::size_t size = 4 + segments.size() * kTableEntry;
  for (const Segment& segment : segments) size += segment.Stored().size();
  Bytes stored(size);
  StoreU32(stored, 0, static_cast<std::uint32_t>(segments.size()));
  std::size_t table = 4;
  const std::size_t start = table + segments.size() * kTableEntry;
  std::size_t offset = 0;
  for (const Segment& segment : segments) {
    const ByteView compressed = segment.Stored();
    StoreU32(stored, table, static_cast<std::uint32_t>(compressed.size()));
    StoreU32(stored, table + 4, static_cast<std::uint32_t>(segment.plain.size()));
    StoreU32(stored, table + 8, static_cast<std::uint32_t>(offset));
    std::ranges::copy(compressed, stored.begin() + static_cast<std::ptrdiff_t>(start + offset));
    table += kTableEntry;
    offset += compressed.size();
  }
  return stored;
}

// Appends what `compressed` holds to `data`, which may reach `limit` bytes. False when it is
// damaged.
bool AppendExpanded(ByteView compressed, std::size_t limit, Bytes& data) {
  const std::size_t before = data.size();
  const std::size_t left = limit - before;
  const std::size_t usual = std::min(left, kSegmentSize);
  const std::size_t largest = std::min(left, (compressed.size() + 1) * kMaxExpansion);
  data.resize(before + usual);
  Expanded result = ExpandInto(compressed, std::span(data).subspan(before));
  if (result.code == LZO_E_OUTPUT_OVERRUN && largest > usual) {  // another writer's larger segment
    data.resize(before + largest);
    result = ExpandInto(compressed, std::span(data).subspan(before));
  }
  data.resize(before + result.size);
  return result.IsGood();
}

// Returns the member of `size` bytes when its segments are as the editor writes them, each full but
// the last: then each has its place, and they are decompressed several at a time. Nothing for any
// other member, and for one whose size is out of proportion to what is stored.
std::optional<Bytes> ExpandFullSegments(ByteView stored, std::uint32_t size) {
  if (StatedCount(stored) != SegmentsOf(size)) return std::nullopt;
  if (size > stored.size() * kUsualExpansion) return std::nullopt;
  std::vector<ByteView> segments;
  SegmentTable table(stored, StatedCount(stored));
  while (const auto compressed = table.Take(segments.size())) segments.push_back(*compressed);
  if (segments.size() != SegmentsOf(size)) return std::nullopt;
  Bytes data(size);
  std::atomic<bool> full = true;
  SpreadOverCores(segments.size(), [&](std::size_t i) {
    const std::size_t start = i * kSegmentSize;
    const auto out = std::span(data).subspan(start, std::min(kSegmentSize, data.size() - start));
    const Expanded result = ExpandInto(segments[i], out);
    if (result.code != LZO_E_OK || result.size != out.size()) full = false;
  });
  if (!full) return std::nullopt;
  return data;
}

std::size_t RoomFor(ByteView stored, std::uint32_t size, std::uint64_t atLeast) {
  return static_cast<std::size_t>(
      std::min<std::uint64_t>(size, std::max(stored.size() * kUsualExpansion, atLeast)));
}

// Reads segments of any size, one after the other. Where the one behind a damaged one belongs is
// not known: it follows at once, and everything from the damage on counts as missing.
MemberBytes ExpandInOrder(ByteView stored, std::uint32_t size) {
  MemberBytes member;
  Bytes& data = member.data;
  data.reserve(RoomFor(stored, size, 0));
  std::optional<std::size_t> damage;
  SegmentTable table(stored, StatedCount(stored));
  for (std::size_t i = 0; data.size() < size; ++i) {
    const auto compressed = table.Take(i);
    if (!compressed) break;
    if (!AppendExpanded(*compressed, size, data) && !damage) damage = data.size();
  }
  if (!damage && data.size() < size) damage = data.size();
  if (damage) member.gaps.push_back({std::min<std::size_t>(*damage, size - 1), size});
  return member;
}

// Reads segments that are as the editor writes them, each at its place, whether or not those before
// it can be read. Their count comes from the size, because the stated one may be what is damaged.
MemberBytes ExpandInPlace(ByteView stored, std::uint32_t size) {
  MemberBytes member;
  const std::size_t room = RoomFor(stored, size, kRoomForGaps);
  const auto addGap = [&gaps = member.gaps](std::size_t begin, std::size_t end) {
    if (!gaps.empty() && gaps.back().end == begin) {
      gaps.back().end = end;
    } else if (begin < end) {
      gaps.push_back({begin, end});
    }
  };
  constexpr std::size_t kSlack = 2;
  SegmentTable table(stored, SegmentsOf(size), kSlack);
  std::size_t start = 0;
  for (std::size_t i = 0; i < table.Count() && start < room; ++i, start += kSegmentSize) {
    const std::size_t length = std::min(kSegmentSize, size - start);
    std::size_t usable = 0;
    if (const auto compressed = table.Take(i)) {
      const std::size_t before = member.data.size();
      member.data.resize(start + length);
      const auto out = std::span(member.data).subspan(start);
      usable = ExpandInto(*compressed, out).UsableOf(length);
      std::ranges::fill(out.subspan(usable), std::uint8_t{0});
      member.data.resize(usable > 0 ? start + usable : before);
    }
    addGap(start + usable, start + length);
  }
  if (start < size) addGap(start, size);
  return member;
}

}  // namespace

bool PrepareCompression() {
  static const bool ready = lzo_init() == LZO_E_OK;
  return ready;
}

std::optional<Bytes> CompressMember(ByteView data, ByteView oldStored) {
  if (!PrepareCompression()) return std::nullopt;
  std::vector<Segment> segments = SplitIntoSegments(data, oldStored);
  if (!CompressChanged(segments)) return std::nullopt;
  return JoinSegments(segments);
}

std::size_t ReadableBytes(const MemberBytes& member, std::size_t size) {
  for (const MemberGap& gap : member.gaps) size -= gap.end - gap.begin;
  return size;
}

MemberBytes ExpandMember(ByteView stored, std::uint32_t size) {
  if (size == 0) return {};
  if (!PrepareCompression()) return {{}, {{0, size}}};
  if (size >= kSpreadSegments * kSegmentSize && UsableCores() > 1) {
    if (auto whole = ExpandFullSegments(stored, size)) return {*std::move(whole), {}};
  }
  MemberBytes inOrder = ExpandInOrder(stored, size);
  if (inOrder.IsWhole()) return inOrder;
  MemberBytes inPlace = ExpandInPlace(stored, size);
  // Damage may also make a segment end early: those behind it must not move up.
  const bool isAsWritten = StatedCount(stored) == SegmentsOf(size);
  if (isAsWritten || ReadableBytes(inPlace, size) > ReadableBytes(inOrder, size)) return inPlace;
  return inOrder;
}

}  // namespace mw
