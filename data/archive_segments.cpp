#include "data/archive_segments.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <lzo/lzo1x.h>

#include "core/little_endian.h"
#include "core/parallel.h"

namespace mw {
namespace {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

constexpr std::size_t kTableEntry = 12;  // compressed size, uncompressed size, offset
// What one compressed byte can become at most: a run of a long match's length.
constexpr std::size_t kMaxExpansion = 255;
// Fewer segments are decompressed sooner than another thread starts.
constexpr std::size_t kSpreadSegments = 4;
// Room made at once for a member, in multiples of its stored size; one that is denser grows as it
// goes.
constexpr std::uint64_t kUsualExpansion = 16;

constexpr std::size_t WorstCase(std::size_t size) { return size + size / 16 + 64 + 3; }
static_assert(WorstCase(kSegmentSize) <= kMaxCompressedSegment);

// The segments of a stored member, one after the other, until one does not fit the member.
class SegmentReader {
 public:
  explicit SegmentReader(ByteView stored) {
    if (stored.size() < 4) return;
    const std::uint32_t count = LoadU32(stored);
    if (count > (stored.size() - 4) / kTableEntry) return;
    table_ = stored.subspan(4, count * kTableEntry);
    data_ = stored.subspan(4 + table_.size());
    left_ = data_.size();
  }

  // The compressed bytes of the next segment; nothing at the end.
  std::optional<ByteView> Next() {
    if (table_.empty()) return std::nullopt;
    const std::size_t size = LoadU32(table_, 0);
    const std::size_t offset = LoadU32(table_, 8);
    table_ = table_.subspan(kTableEntry);
    // Segments lie one after the other, so together they are no larger than the data.
    if (size > kMaxCompressedSegment || size > left_ || offset > data_.size() - size) {
      table_ = {};
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
  std::size_t size = 0;  // bytes produced, also when an error ended it
  int code = LZO_E_OK;
};

// Decompresses into the front of `out`.
Expanded ExpandInto(ByteView compressed, std::span<std::uint8_t> out) {
  lzo_uint produced = out.size();
  const int code =
      lzo1x_decompress_safe(compressed.data(), compressed.size(), out.data(), &produced, nullptr);
  return {std::min<std::size_t>(produced, out.size()), code};
}

// One segment of a member that is being written.
struct Segment {
  ByteView plain;
  ByteView oldCompressed;  // of the segment at the same place before; may be empty
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

// What was compressed is expanded again: a segment that cannot be read is never written.
bool Compress(Segment& segment, Bytes& workMemory) {
  workMemory.resize(LZO1X_999_MEM_COMPRESS);
  segment.compressed.resize(WorstCase(segment.plain.size()));
  lzo_uint size = segment.compressed.size();
  const int code = lzo1x_999_compress(segment.plain.data(), segment.plain.size(),
                                      segment.compressed.data(), &size, workMemory.data());
  segment.compressed.resize(code == LZO_E_OK ? size : 0);
  return Expands(segment.compressed, segment.plain);
}

// Compresses what has changed. The work memory, one per core, is kept for the next call.
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
  std::vector<Segment> segments((data.size() + kSegmentSize - 1) / kSegmentSize);
  SegmentReader before(oldStored);
  for (Segment& segment : segments) {
    segment.plain = data.first(std::min(kSegmentSize, data.size()));
    data = data.subspan(segment.plain.size());
    segment.oldCompressed = before.Next().value_or(ByteView{});
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

// Appends what `compressed` holds to `data`, which may reach `limit` bytes.
void AppendExpanded(ByteView compressed, std::size_t limit, Bytes& data) {
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
}

// The member of `size` bytes when its segments are as the editor writes them, each full but the
// last: then each has its place, and they are decompressed several at a time. Nothing for any other
// member, and for one whose size is out of proportion to what is stored.
std::optional<Bytes> ExpandFullSegments(ByteView stored, std::uint32_t size) {
  std::vector<ByteView> segments;
  SegmentReader reader(stored);
  while (const auto compressed = reader.Next()) segments.push_back(*compressed);
  if (segments.size() != (size + kSegmentSize - 1) / kSegmentSize) return std::nullopt;
  if (size > stored.size() * kUsualExpansion) return std::nullopt;
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

Bytes ExpandMember(ByteView stored, std::uint32_t size) {
  if (!PrepareCompression()) return {};
  if (size >= kSpreadSegments * kSegmentSize && UsableCores() > 1) {
    if (auto whole = ExpandFullSegments(stored, size)) return *std::move(whole);
  }
  Bytes data;
  SegmentReader segments(stored);
  data.reserve(
      static_cast<std::size_t>(std::min<std::uint64_t>(size, stored.size() * kUsualExpansion)));
  while (data.size() < size) {
    const auto compressed = segments.Next();
    if (!compressed) break;
    AppendExpanded(*compressed, size, data);
  }
  return data;
}

}  // namespace mw
