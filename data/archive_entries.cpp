#include "data/archive_entries.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <cstring>
#include <numeric>

namespace mw {
namespace {

// Names are folded and hashed sixteen bytes at a time.
constexpr std::size_t kLane = 16;
using Lane = unsigned char __attribute__((vector_size(kLane)));

Lane IsBackslash(Lane bytes) { return reinterpret_cast<Lane>(bytes == '\\'); }

Lane FoldLane(Lane bytes) {
  const Lane backslash = IsBackslash(bytes);
  bytes -= backslash & static_cast<unsigned char>('\\' - '/');
  const Lane upper = reinterpret_cast<Lane>((bytes >= 'A') & (bytes <= 'Z'));
  return bytes + (upper & static_cast<unsigned char>('a' - 'A'));
}

std::uint64_t Mix(std::uint64_t a, std::uint64_t b) {
  __extension__ using Wide = unsigned __int128;
  const Wide product = Wide{a} * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;  // the fraction of the golden ratio

// Every run of the program hashes with another number, so that no file can be made whose names all
// meet in one slot.
std::uint64_t HashSeed() {
  static const std::uint64_t seed = [] {
    const auto now = std::chrono::high_resolution_clock::now().time_since_epoch().count();
    return static_cast<std::uint64_t>(now) * kFactor ^ reinterpret_cast<std::uintptr_t>(&now);
  }();
  return seed;
}

}  // namespace

std::uint32_t NextRevision() {
  static std::uint32_t last = 0;
  return ++last;
}

// A name in the form in which names are compared, and its hash.
struct ArchiveEntries::FoldedName {
  explicit FoldedName(std::string_view name) : size(std::min(name.size(), kMaxMemberName)) {
    const std::uint64_t seed = HashSeed();
    const std::size_t end = size;
    std::uint64_t mixed = end;
    Lane backslashes{};
    // Folds a lane into its place. What it adds to the hash does not wait for other lanes.
    const auto add = [&](Lane lane, std::size_t at) {
      backslashes |= IsBackslash(lane);
      lane = FoldLane(lane);
      std::memcpy(bytes + at, &lane, kLane);
      std::uint64_t halves[2];
      std::memcpy(halves, &lane, kLane);
      const std::uint64_t key = seed + at * kFactor;
      mixed += Mix(halves[0] ^ key, halves[1] ^ std::rotl(key, 32));
    };
    const auto addAt = [&](std::size_t at) {
      Lane lane;
      std::memcpy(&lane, name.data() + at, kLane);
      add(lane, at);
    };
    if (end < kLane) {
      Lane lane{};
      if (end > 0) std::memcpy(&lane, name.data(), end);
      add(lane, 0);
    } else {
      for (std::size_t at = 0; at + kLane < end; at += kLane) addAt(at);
      addAt(end - kLane);  // the last lane ends with the name, so it may overlap the one before
    }
    hash = static_cast<std::uint32_t>(Mix(mixed, kFactor));
    std::uint64_t halves[2];
    std::memcpy(halves, &backslashes, kLane);
    hasBackslash = (halves[0] | halves[1]) != 0;
  }
  std::string_view Key() const { return {bytes, size}; }

  alignas(kLane) char bytes[kMaxMemberName + 1];
  std::size_t size;
  std::uint32_t hash;
  bool hasBackslash;
};

std::size_t ArchiveEntries::SlotOf(const FoldedName& name) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = name.hash & mask;
  for (; slots_[slot].number != 0; slot = (slot + 1) & mask) {
    const Slot& taken = slots_[slot];
    if (taken.hash != name.hash || records_[taken.number - 1].name.size != name.size) continue;
    if (std::memcmp(keys_.data() + taken.keyOffset, name.bytes, name.size) == 0) break;
  }
  return slot;
}

std::size_t ArchiveEntries::FreeSlot(const std::vector<Slot>& slots, std::uint32_t hash) {
  const std::size_t mask = slots.size() - 1;
  std::size_t slot = hash & mask;
  while (slots[slot].number != 0) slot = (slot + 1) & mask;
  return slot;
}

const ArchiveEntry* ArchiveEntries::Find(std::string_view name) const {
  if (records_.empty() || name.size() > kMaxMemberName) return nullptr;
  const Slot& slot = slots_[SlotOf(FoldedName(name))];
  return slot.number != 0 ? &records_[slot.number - 1].entry : nullptr;
}

void ArchiveEntries::Set(std::string_view name, const ArchiveEntry& entry) {
  if (name.size() > kMaxMemberName) return;
  if (!HasSlotsFor(records_.size() + 1)) GrowTable(records_.size() + 1);
  const FoldedName folded(name);
  // Most names are new: while the slot comes from memory, the name goes to its place.
  const TextPlace place = AppendName(name, folded);
  Slot& slot = slots_[SlotOf(folded)];
  if (slot.number != 0) {
    records_[slot.number - 1].entry = entry;
    names_.resize(place.offset);
    return;
  }
  records_.push_back({entry, place});
  slot = {folded.hash, static_cast<std::uint32_t>(records_.size()), place.offset};
}

ArchiveEntries::TextPlace ArchiveEntries::AppendName(std::string_view name,
                                                     const FoldedName& folded) {
  const std::size_t offset = names_.size();
  keys_.resize(offset);  // drops the key of a name that was there already
  keys_ += folded.Key();
  names_ += name;
  if (folded.hasBackslash) {
    std::replace(names_.begin() + static_cast<std::ptrdiff_t>(offset), names_.end(), '\\', '/');
  }
  return {static_cast<std::uint32_t>(offset), static_cast<std::uint32_t>(name.size())};
}

void ArchiveEntries::Reserve(std::size_t count) {
  constexpr std::size_t kUsualName = 64;
  records_.reserve(count);
  names_.reserve(count * kUsualName);
  keys_.reserve(count * kUsualName);
  if (!HasSlotsFor(count)) GrowTable(count);
}

void ArchiveEntries::GrowTable(std::size_t count) {
  constexpr std::size_t kFirstSlots = 64;
  std::vector<Slot> grown(std::max(kFirstSlots, std::bit_ceil(count * 3 / 2 + 1)));
  for (const Slot& slot : slots_) {
    if (slot.number != 0) grown[FreeSlot(grown, slot.hash)] = slot;
  }
  slots_ = std::move(grown);
}

void ArchiveEntries::SortNames() const {
  if (order_.size() == records_.size()) return;
  const auto before = [this](std::uint32_t a, std::uint32_t b) { return Key(a) < Key(b); };
  const auto sorted = static_cast<std::ptrdiff_t>(order_.size());
  order_.resize(records_.size());
  const auto tail = order_.begin() + sorted;
  std::iota(tail, order_.end(), static_cast<std::uint32_t>(sorted));
  // A directory that the editor wrote has its names in order.
  if (std::is_sorted(sorted > 0 ? tail - 1 : tail, order_.end(), before)) return;
  std::sort(tail, order_.end(), before);
  std::inplace_merge(order_.begin(), tail, order_.end(), before);
}

}  // namespace mw
