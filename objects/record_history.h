// One table of records and what a step changed of it: records that are gone or were other ones, and
// the places of those that came or are others now. For object_history.cpp.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace mw {

// `Rules` says how a record is copied (CopyOf), whether two hold the same (IsSame), and how large
// one is (BytesOf).
template <typename Record, typename Rules>
class RecordHistory {
 public:
  struct Kept {
    std::size_t place;  // in the table that it is put back into
    Record record;
  };

  void Keep(const std::vector<Record>& table) { kept_ = Copies(table); }

  // Afterwards only the differences are kept. False when there are none.
  bool Close(const std::vector<Record>& table) {
    std::vector<Kept> differing;
    present_.clear();
    const std::size_t before = kept_.size(), now = table.size();
    for (std::size_t i = 0, j = 0; i < before || j < now;) {
      if (i < before && j < now && Rules::IsSame(kept_[i].record, table[j])) {
        ++i, ++j;
        continue;
      }
      // Of tables of one length records were changed in their places.
      const bool isGone = before - i >= now - j, came = now - j >= before - i;
      if (isGone) differing.push_back(std::move(kept_[i++]));
      if (came) present_.push_back(j++);
    }
    kept_ = std::move(differing);
    kept_.shrink_to_fit();
    return !kept_.empty() || !present_.empty();
  }

  void Reopen(const std::vector<Record>& table) {
    std::vector<Record> copy;
    for (Kept& one : Copies(table)) copy.push_back(std::move(one.record));
    Exchange(copy);
    Keep(copy);
  }

  // Returns the places of the records that were put back; what was taken out is kept now.
  const std::vector<std::size_t>& Exchange(std::vector<Record>& table) {
    std::vector<Kept> taken;
    std::vector<Record> rest;
    for (std::size_t place = 0, next = 0; place < table.size(); ++place) {
      if (next < present_.size() && present_[next] == place) {
        taken.push_back({place, std::move(table[place])});
        ++next;
      } else {
        rest.push_back(std::move(table[place]));
      }
    }
    present_.clear();
    table.clear();
    auto from = rest.begin();
    for (Kept& one : kept_) {
      while (table.size() < one.place) table.push_back(std::move(*from++));
      present_.push_back(one.place);
      table.push_back(std::move(one.record));
    }
    while (from != rest.end()) table.push_back(std::move(*from++));
    kept_ = std::move(taken);
    return present_;
  }

  std::size_t Bytes() const {
    std::size_t bytes = present_.capacity() * sizeof(std::size_t);
    for (const Kept& one : kept_) bytes += sizeof(Kept) + Rules::BytesOf(one.record);
    return bytes;
  }

  const std::vector<Kept>& Records() const { return kept_; }
  // Of the records in the table that came or are others now.
  const std::vector<std::size_t>& Places() const { return present_; }

 private:
  static std::vector<Kept> Copies(const std::vector<Record>& table) {
    std::vector<Kept> copies;
    copies.reserve(table.size());
    for (std::size_t place = 0; place < table.size(); ++place)
      copies.push_back({place, Rules::CopyOf(table[place])});
    return copies;
  }

  std::vector<Kept> kept_;  // whole table while the step is open
  std::vector<std::size_t> present_;
};

}  // namespace mw
