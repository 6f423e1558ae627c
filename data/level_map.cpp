#include "data/level_map.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "core/text.h"
#include "data/game_file.h"

namespace mw {
namespace {

struct MapSize {
  std::size_t rows, rowBytes;
  std::size_t Bytes() const { return rows * rowBytes; }
};

std::string FileNameOf(std::string_view gamePath) {
  return std::string(gamePath.substr(gamePath.find_last_of("\\/") + 1));
}

// Rows that are not all there, counted from 1: "65 to 128".
std::string DescribeRows(const MemberGap& gap, const MapSize& map) {
  const std::size_t first = gap.begin / map.rowBytes + 1;
  const std::size_t last = (gap.end + map.rowBytes - 1) / map.rowBytes;
  return FormatText(first == last ? "%zu" : "%zu to %zu", first, last);
}

// How much of the map there is.
std::string DescribeReadable(const std::vector<MemberGap>& gaps, const MapSize& map) {
  if (gaps.size() == 1 && gaps[0].end == map.Bytes()) {
    return FormatText("could be read to row %zu of %zu", gaps[0].begin / map.rowBytes, map.rows);
  }
  std::string rows;
  for (const MemberGap& gap : gaps) rows += (rows.empty() ? "" : ", ") + DescribeRows(gap, map);
  return FormatText("could not be read in rows %s of %zu", rows.c_str(), map.rows);
}

// The gaps that lie in the map. What the file of `size` bytes lacks at its end is one.
std::vector<MemberGap> GapsOfMap(const MemberBytes& file, std::size_t size, const MapSize& map) {
  std::vector<MemberGap> gaps;
  for (MemberGap gap : file.gaps) {
    gap.end = std::min(gap.end, map.Bytes());
    if (gap.begin < gap.end) gaps.push_back(gap);
  }
  if (size >= map.Bytes()) return gaps;
  if (!gaps.empty() && gaps.back().end == size) {
    gaps.back().end = map.Bytes();
  } else {
    gaps.push_back({size, map.Bytes()});
  }
  return gaps;
}

void NoteDamage(LevelPart part, const std::string& file, std::size_t size,
                const std::vector<MemberGap>& gaps, const MapSize& map) {
  std::string line = FormatText("The %s ", NameOf(part));
  if (!gaps.empty()) line += DescribeReadable(gaps, map);
  if (size != map.Bytes()) {
    line += FormatText("%sdoes not fit the level's size: %s has %zu bytes, not %zu",
                       gaps.empty() ? "" : "; it ", file.c_str(), size, map.Bytes());
  }
  NoteDamagedPart(part, line + ".");
}

// What saving would write over counts, whatever hides it.
void CheckHiddenMap(LevelPart part, const GameFile& file, const MapSize& map) {
  Archive* const own = archives.FindHolding(file.name, true);
  if (!own || own == file.archive) return;
  const auto hidden = own->ReadMemberWithGaps(file.name);
  if (!hidden) return;
  const std::size_t size = own->Find(file.name)->size;
  const std::vector<MemberGap> gaps = GapsOfMap(*hidden, size, map);
  if (!gaps.empty() || size != map.Bytes()) {
    NoteDamage(part, FileNameOf(file.name), size, gaps, map);
  }
}

}  // namespace

std::optional<MemberBytes> LoadLevelMap(LevelPart part, std::string_view gamePath, std::size_t rows,
                                        std::size_t rowBytes) {
  const MapSize map{rows, rowBytes};
  const std::unique_ptr<GameFile> file = GameFileOpen(gamePath, "rb");
  if (!file) {
    NoteMissingPart(part, FormatText("Can't Find The Height Map! (The %s, %s, is missing.)",
                                     NameOf(part), FileNameOf(gamePath).c_str()));
    return std::nullopt;
  }
  const std::size_t size = file->archive->Find(file->name)->size;
  MemberBytes bytes{std::move(file->data), std::move(file->gaps)};
  bytes.gaps = GapsOfMap(bytes, size, map);
  if (!bytes.gaps.empty() || size != map.Bytes()) {
    NoteDamage(part, FileNameOf(file->name), size, bytes.gaps, map);
  }
  CheckHiddenMap(part, *file, map);
  bytes.data.resize(map.Bytes());
  return bytes;
}

}  // namespace mw
