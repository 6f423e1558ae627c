#include "data/archive_entries.h"

#include <algorithm>
#include <chrono>
#include <cstring>

namespace mw {
namespace {

// Names are folded and hashed sixteen bytes at a time.
constexpr std::size_t kLane = 16;
using Lane = unsigned char __attribute__((vector_size(kLane)));

Lane FoldLane(Lane bytes) {
  const Lane backslash = reinterpret_cast<Lane>(bytes == '\\');
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

// Another one in every run, so that no file can be made whose names all meet in one slot.
std::uint64_t HashSeed() {
  static const std::uint64_t seed = [] {
    const auto now = std::chrono::high_resolution_clock::now().time_since_epoch().count();
    return static_cast<std::uint64_t>(now) * kFactor ^ reinterpret_cast<std::uintptr_t>(&now);
  }();
  return seed;
}

}  // namespace

// A name as names are compared, and its hash.
struct ArchiveEntries::FoldedName {
  explicit FoldedName(std::string_view name) : size(std::min(name.size(), kMaxMemberName)) {
    std::uint64_t mixed = HashSeed() ^ size;
    if (size < kLane) {
      Lane lane{};
      if (size > 0) std::memcpy(&lane, name.data(), size);
      mixed = Add(lane, 0, mixed);
    } else {
      for (std::size_t at = 0; at + kLane < size; at += kLane) mixed = Add(name, at, mixed);
      mixed = Add(name, size - kLane, mixed);  // the last lane may overlap the one before
    }
    hash = static_cast<std::uint32_t>(Mix(mixed, kFactor));
  }
  std::string_view Key() const { return {bytes, size}; }

  alignas(kLane) char bytes[kMaxMemberName + 1];
  std::size_t size;
  std::uint32_t hash;

 private:
  std::uint64_t Add(std::string_view name, std::size_t at, std::uint64_t mixed) {
    Lane lane;
    std::memcpy(&lane, name.data() + at, kLane);
    return Add(lane, at, mixed);
  }
  // Folds the lane into its place and returns the hash so far.
  std::uint64_t Add(Lane lane, std::size_t at, std::uint64_t mixed) {
    lane = FoldLane(lane);
    std::memcpy(bytes + at, &lane, kLane);
    std::uint64_t halves[2];
    std::memcpy(halves, &lane, kLane);
    return Mix(halves[0] ^ mixed, halves[1] ^ kFactor ^ (mixed >> 32));
  }
};

std::size_t ArchiveEntries::SlotOf(const FoldedName& name) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = name.hash & mask;
  for (; slots_[slot].number != 0; slot = (slot + 1) & mask) {
    if (slots_[slot].hash == name.hash && KeyAt(slots_[slot].key) == name.Key()) break;
  }
  return slot;
}

const ArchiveEntry* ArchiveEntries::Find(std::string_view name) const {
  if (records_.empty() || name.size() > kMaxMemberName) return nullptr;
  const Slot& slot = slots_[SlotOf(FoldedName(name))];
  return slot.number != 0 ? &records_[slot.number - 1].entry : nullptr;
}

void ArchiveEntries::Set(std::string_view name, const ArchiveEntry& entry) {
  if (name.size() > kMaxMemberName) return;
  // At most two thirds of the slots are taken.
  if ((records_.size() + 1) * 3 > slots_.size() * 2) GrowTable();
  const FoldedName folded(name);
  Slot& slot = slots_[SlotOf(folded)];
  if (slot.number != 0) {
    records_[slot.number - 1].entry = entry;
    return;
  }
  Append(name, folded, entry);
  slot = {folded.hash, static_cast<std::uint32_t>(records_.size()), records_.back().key};
}

void ArchiveEntries::Append(std::string_view name, const FoldedName& folded,
                            const ArchiveEntry& entry) {
  DropIncomplete();
  const bool inOrder =
      sorted_ == order_.size() && (order_.empty() || Key(order_.back()) < folded.Key());
  const std::size_t offset = keys_.size();
  keys_ += folded.Key();
  names_ += name;
  if (name.find('\\') != std::string_view::npos) {
    std::replace(names_.begin() + static_cast<std::ptrdiff_t>(offset), names_.end(), '\\', '/');
  }
  order_.push_back(static_cast<std::uint32_t>(records_.size()));
  records_.push_back(
      {entry, {static_cast<std::uint32_t>(offset), static_cast<std::uint32_t>(name.size())}});
  if (inOrder) ++sorted_;
}

// What an entry left that there was not enough memory for.
void ArchiveEntries::DropIncomplete() {
  const TextPlace last = records_.empty() ? TextPlace{} : records_.back().key;
  names_.resize(last.offset + last.size);
  keys_.resize(last.offset + last.size);
  order_.resize(records_.size());
}

void ArchiveEntries::Reserve(std::size_t count) {
  constexpr std::size_t kUsualName = 64;
  records_.reserve(count);
  order_.reserve(count);
  names_.reserve(count * kUsualName);
  keys_.reserve(count * kUsualName);
  while (count * 3 > slots_.size() * 2) GrowTable();
}

void ArchiveEntries::GrowTable() {
  constexpr std::size_t kFirstSlots = 64;
  const std::size_t size = std::max(kFirstSlots, slots_.size() * 2);
  std::vector<Slot> grown(size);
  for (const Slot& slot : slots_) {
    if (slot.number == 0) continue;
    std::size_t place = slot.hash & (size - 1);
    while (grown[place].number != 0) place = (place + 1) & (size - 1);
    grown[place] = slot;
  }
  slots_ = std::move(grown);
}

void ArchiveEntries::SortNames() const {
  if (sorted_ == order_.size()) return;
  const auto before = [this](std::uint32_t a, std::uint32_t b) { return Key(a) < Key(b); };
  const auto tail = order_.begin() + static_cast<std::ptrdiff_t>(sorted_);
  std::sort(tail, order_.end(), before);
  std::inplace_merge(order_.begin(), tail, order_.end(), before);
  sorted_ = order_.size();
}

}  // namespace mw
