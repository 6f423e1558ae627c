#include "data/archive_compact.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace mw {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kCopyBuffer = 102400;

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

bool CopyMember(File& from, File& to, const Move& move, std::vector<std::uint8_t>& buffer,
                std::string& error) {
  for (std::uint32_t done = 0; done < move.size;) {
    const auto chunk =
        std::span(buffer).first(std::min<std::size_t>(buffer.size(), move.size - done));
    if (!from.ReadAt(std::uint64_t{move.from} + done, chunk)) {
      error = from.Error();
      return false;
    }
    if (!to.WriteAt(std::uint64_t{move.to} + done, chunk)) {
      error = to.Error();
      return false;
    }
    done += static_cast<std::uint32_t>(chunk.size());
  }
  return true;
}

bool WriteCompacted(File& archive, File& aside, const std::vector<Move>& moves,
                    const ArchiveContents& contents, std::string& error) {
  std::vector<std::uint8_t> buffer(kCopyBuffer);
  for (const Move& move : moves) {
    if (!CopyMember(archive, aside, move, buffer, error)) return false;
  }
  if (aside.WriteAt(0, HeaderBytes(contents.header)) &&
      aside.WriteAt(contents.header.directoryOffset, DirectoryBytes(contents.entries)) &&
      aside.CopyPermissions(archive) && aside.Sync()) {
    return true;
  }
  error = aside.Error();
  return false;
}

// Reads the compacted file back: every byte of it is accounted for.
bool IsWrittenWhole(File& archive, File& aside, const std::vector<Move>& moves,
                    const ArchiveContents& contents, std::string& error) {
  const bool membersHold = std::ranges::all_of(moves, [&](const Move& move) {
    return aside.HoldsCopy(move.to, archive, move.from, move.size);
  });
  const std::vector<std::uint8_t> directory = DirectoryBytes(contents.entries);
  const std::uint64_t directoryOffset = contents.header.directoryOffset;
  if (!membersHold || !aside.Holds(0, HeaderBytes(contents.header)) ||
      !aside.Holds(directoryOffset, directory)) {
    error = aside.Error();
    return false;
  }
  if (aside.Size() == directoryOffset + directory.size()) return true;
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
  if (WriteCompacted(archive, aside, *moves, compact, error) &&
      IsWrittenWhole(archive, aside, *moves, compact, error) &&
      RenameFile(path, archivePath, &error)) {
    // Should this fail and the power with it, the old file may be back, which is whole as well.
    SyncFolderOf(archivePath);
    return true;
  }
  RemoveFile(path);
  return false;
}

}  // namespace mw
