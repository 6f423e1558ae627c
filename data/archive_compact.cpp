#include "data/archive_compact.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

namespace mw {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBlock = std::size_t{1} << 20;  // bytes written and read back at a time

struct Move {
  std::uint32_t from = 0, to = 0, size = 0;
};

// Gives every entry its compact place and returns what has to be moved, in the order of the old
// offsets. Nothing when the members would end beyond what offsets can say.
std::optional<std::vector<Move>> PlaceCompactly(ArchiveEntries& entries) {
  std::vector<ArchiveEntry*> order;
  for (auto&& [name, entry] : entries) order.push_back(&entry);
  std::ranges::stable_sort(order, {}, &ArchiveEntry::dataOffset);
  std::vector<Move> moves;
  std::uint64_t position = kArchiveHeaderSize;
  for (ArchiveEntry* entry : order) {
    if (position + entry->storedSize > kMaxArchiveSize) return std::nullopt;
    const auto to = static_cast<std::uint32_t>(position);
    moves.push_back({std::exchange(entry->dataOffset, to), to, entry->storedSize});
    position += entry->storedSize;
  }
  return moves;
}

bool IsCompact(const std::vector<Move>& moves, const ArchiveContents& contents,
               std::uint64_t fileSize) {
  return std::ranges::all_of(moves, [](const Move& move) { return move.from == move.to; }) &&
         fileSize == DataEnd(contents.entries) + DirectorySize(contents.entries);
}

// The compacted file as a list of where each of its bytes lies now.
class CompactImage {
 public:
  CompactImage(File& archive, const std::vector<Move>& moves, const ArchiveContents& contents)
      : archive_(archive),
        header_(HeaderBytes(contents.header)),
        directory_(DirectoryBytes(contents.entries)) {
    pieces_.push_back({0, header_.size(), 0, &header_});
    for (const Move& move : moves) {
      Piece& last = pieces_.back();
      if (!last.memory && last.from + last.size == move.from) {
        last.size += move.size;  // the two members lay side by side
      } else if (move.size > 0) {
        pieces_.push_back({move.to, move.size, move.from, nullptr});
      }
    }
    pieces_.push_back({contents.header.directoryOffset, directory_.size(), 0, &directory_});
  }

  std::uint64_t Size() const { return pieces_.back().at + pieces_.back().size; }

  // Reads bytes of the image. False when the archive cannot be read.
  bool Read(std::uint64_t at, std::span<std::uint8_t> out) const {
    auto piece = std::prev(std::ranges::upper_bound(pieces_, at, {}, &Piece::at));
    for (; !out.empty(); ++piece) {
      const std::uint64_t skipped = at - piece->at;
      const auto part = out.first(
          static_cast<std::size_t>(std::min<std::uint64_t>(out.size(), piece->size - skipped)));
      if (piece->memory) {
        std::ranges::copy(std::span(*piece->memory).subspan(skipped, part.size()), part.begin());
      } else if (!archive_.ReadAt(piece->from + skipped, part)) {
        return false;
      }
      at += part.size();
      out = out.subspan(part.size());
    }
    return true;
  }
  const std::string& Error() const { return archive_.Error(); }

 private:
  struct Piece {
    std::uint64_t at, size;                   // place and length in the compacted file
    std::uint64_t from;                       // offset in the archive
    const std::vector<std::uint8_t>* memory;  // what to take instead; else null
  };

  File& archive_;
  std::vector<std::uint8_t> header_, directory_;
  std::vector<Piece> pieces_;  // in the order of the compacted file, without gaps
};

// Calls visit(offset, bytes) for the blocks of the image from `start` on, until it answers false.
template <typename Visit>
bool ForEachBlock(const CompactImage& image, std::uint64_t start, std::string& error, Visit visit) {
  DiskBlock room(kBlock);
  for (std::uint64_t at = start; at < image.Size(); at += kBlock) {
    const auto block =
        room.First(static_cast<std::size_t>(std::min<std::uint64_t>(kBlock, image.Size() - at)));
    if (!image.Read(at, block)) {
      error = image.Error();
      return false;
    }
    if (!visit(at, std::span<const std::uint8_t>(block))) return false;
  }
  return true;
}

// Writes the compacted file and reads it back: every byte of it is accounted for. Where the file
// system allows, whole blocks go straight to the disk and are compared at once, while they are
// still in memory; the other blocks are compared when all is synced.
bool WriteCompacted(const CompactImage& image, File& archive, File& aside, std::string& error) {
  const auto failed = [&] {
    error = aside.Error();
    return false;
  };
  std::uint64_t compared = 0;  // all bytes before it are known to be on the disk
  const auto write = [&](std::uint64_t at, std::span<const std::uint8_t> block) {
    aside.SetStraight(block.size() == kBlock);
    if (!aside.WriteAt(at, block)) return failed();
    if (!aside.IsStraight() || compared != at) return true;
    compared += block.size();
    return aside.Holds(at, block) || failed();
  };
  const auto holds = [&](std::uint64_t at, std::span<const std::uint8_t> block) {
    return aside.Holds(at, block) || failed();
  };
  if (!ForEachBlock(image, 0, error, write)) return false;
  if (!aside.CopyPermissions(archive) || !aside.Sync()) return failed();
  if (!ForEachBlock(image, compared, error, holds)) return false;
  if (aside.Size() == image.Size()) return true;
  error = "The compacted file has another size than what was written to it";
  return false;
}

}  // namespace

fs::path CompactedPath(const fs::path& archivePath) {
  fs::path path = archivePath;
  path += "-compact";
  return path;
}

bool CompactArchive(File& archive, const fs::path& archivePath, const ArchiveContents& contents,
                    std::string& error) {
  ArchiveContents compact = contents;
  const auto moves = PlaceCompactly(compact.entries);
  const auto fileSize = archive.Size();
  if (!moves || !fileSize) {
    error = moves ? archive.Error() : "The archive would be too large";
    return false;
  }
  if (IsCompact(*moves, compact, *fileSize)) return true;
  compact.header.directoryOffset = static_cast<std::uint32_t>(DataEnd(compact.entries));

  const fs::path path = CompactedPath(archivePath);
  File aside;
  if (!RemoveFile(path, &error)) return false;
  if (!aside.Open(path, FileAccess::CreateNew)) {
    error = aside.Error();
    return false;
  }
  if (WriteCompacted(CompactImage(archive, *moves, compact), archive, aside, error) &&
      RenameFile(path, archivePath, &error)) {
    // Should this fail and the power with it, the old file may be back, which is whole as well.
    SyncFolderOf(archivePath);
    return true;
  }
  RemoveFile(path);
  return false;
}

}  // namespace mw
