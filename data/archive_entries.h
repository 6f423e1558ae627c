// The members that an archive's directory names, found by name without regard to case. A container
// in the manner of std::map, in the order of the names, but made for directories of many thousand
// members: reading one costs little more than copying it, and a look-up touches one entry.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mw {

inline constexpr std::size_t kMaxMemberName = 511;

struct ArchiveEntry {
  std::uint32_t storedSize = 0;  // bytes in the file
  std::uint32_t size = 0;        // bytes after decompression
  std::uint32_t dataOffset = 0;  // from the start of the file
  std::array<std::uint32_t, 3> reserved{};
  // Of the member's bytes: whenever these may have become others, it is another one. Not in the
  // file.
  std::uint32_t revision = 0;
};

// Of all revisions in this run of the program the next one; never 0.
std::uint32_t NextRevision();

// `\` counts as `/`, and ASCII letters as lower case. The first spelling of a name stays, with `/`.
// Names are at most kMaxMemberName long; longer ones are never found and must not be added. Views
// of names are valid until the next change.
class ArchiveEntries {
 public:
  template <typename Entry>
  struct Named {
    std::string_view first;
    Entry& second;
    const Named* operator->() const { return this; }
  };

  template <typename Entries, typename Entry>
  class Iterator {
   public:
    Iterator(Entries& entries, std::size_t place) : entries_(&entries), place_(place) {}
    Named<Entry> operator*() const {
      const std::uint32_t index = entries_->order_[place_];
      return {entries_->Name(index), entries_->records_[index].entry};
    }
    Named<Entry> operator->() const { return **this; }
    Iterator& operator++() {
      ++place_;
      return *this;
    }
    bool operator==(const Iterator& other) const { return place_ == other.place_; }

   private:
    Entries* entries_;
    std::size_t place_;  // in the order of the names
  };

  bool empty() const { return records_.empty(); }
  std::size_t size() const { return records_.size(); }
  auto begin() { return Iterator<ArchiveEntries, ArchiveEntry>(Sorted(), 0); }
  auto end() { return Iterator<ArchiveEntries, ArchiveEntry>(*this, size()); }
  auto begin() const { return Iterator<const ArchiveEntries, const ArchiveEntry>(Sorted(), 0); }
  auto end() const { return Iterator<const ArchiveEntries, const ArchiveEntry>(*this, size()); }

  // Makes room for so many entries with names of the usual length.
  void Reserve(std::size_t count);
  // Null when there is none. Valid until the next change.
  const ArchiveEntry* Find(std::string_view name) const;
  void Set(std::string_view name, const ArchiveEntry& entry);
  // Removes the entries whose name the predicate holds for, and returns how many there were.
  template <typename Predicate>
  std::size_t RemoveIf(Predicate remove) {
    ArchiveEntries kept;
    for (const auto& [name, entry] : *this) {
      if (!remove(name)) kept.Set(name, entry);
    }
    const std::size_t removed = size() - kept.size();
    if (removed > 0) *this = std::move(kept);
    return removed;
  }

 private:
  struct FoldedName;
  struct TextPlace {
    std::uint32_t offset = 0, size = 0;
  };
  struct Record {
    ArchiveEntry entry;
    TextPlace name;  // where it is in names_; keys_ has the form to compare at the same place
  };
  // A slot of the hash table. Addressing is open: where a slot is taken, the next one is tried.
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t number = 0;  // the record's, counted from 1; a free slot has 0
    // Where the record's name is, so that it can be compared without a look at the record.
    std::uint32_t keyOffset = 0;
  };

  std::string_view Name(std::uint32_t index) const {
    const TextPlace& place = records_[index].name;
    return std::string_view(names_).substr(place.offset, place.size);
  }
  std::string_view Key(std::uint32_t index) const {
    const TextPlace& place = records_[index].name;
    return std::string_view(keys_).substr(place.offset, place.size);
  }
  // The slot of the name, or the free one where it belongs.
  std::size_t SlotOf(const FoldedName& name) const;
  static std::size_t FreeSlot(const std::vector<Slot>& slots, std::uint32_t hash);
  // Two thirds of the slots may be taken: in a fuller table look-ups walk far.
  bool HasSlotsFor(std::size_t count) const { return count * 3 <= slots_.size() * 2; }
  void GrowTable(std::size_t count);
  TextPlace AppendName(std::string_view name, const FoldedName& folded);
  void SortNames() const;
  ArchiveEntries& Sorted() {
    SortNames();
    return *this;
  }
  const ArchiveEntries& Sorted() const {
    SortNames();
    return *this;
  }

  std::vector<Record> records_;  // in the order in which they were added
  std::string names_, keys_;
  std::vector<Slot> slots_;  // their number is a power of two
  // Records in the order of their keys, brought up to date when somebody wants to know; the last
  // ones may be missing until then.
  mutable std::vector<std::uint32_t> order_;
};

}  // namespace mw
