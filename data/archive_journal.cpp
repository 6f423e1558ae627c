#include "data/archive_journal.h"

#include <algorithm>
#include <array>
#include <lzo/lzoconf.h>
#include <optional>
#include <span>
#include <utility>

#include "core/bytes.h"
#include "core/little_endian.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::uint8_t, 8> kMagic = {'M', 'W', 'J', 'R', 'N', 'L', '1', '\n'};
constexpr std::size_t kChecksumOffset = kMagic.size();
constexpr std::size_t kCheckedFrom =
    kChecksumOffset + 4;  // the checksum covers all that follows it
constexpr std::size_t kJournalHeader = kCheckedFrom + 4 + 8 + 8;  // range count, old and new size
constexpr std::size_t kRangeHeader = 8 + 4;                       // offset and length
constexpr std::size_t kCompareBlock = 4096;
constexpr std::uint64_t kMaxJournal = std::uint64_t{1} << 31;

std::uint64_t LoadU64(std::span<const std::uint8_t> bytes, std::size_t offset) {
  return LoadU32(bytes, offset) | std::uint64_t{LoadU32(bytes, offset + 4)} << 32;
}

void StoreU64(std::span<std::uint8_t> bytes, std::size_t offset, std::uint64_t value) {
  StoreU32(bytes, offset, static_cast<std::uint32_t>(value));
  StoreU32(bytes, offset + 4, static_cast<std::uint32_t>(value >> 32));
}

std::uint32_t Checksum(std::span<const std::uint8_t> journal) {
  const auto checked = journal.subspan(kCheckedFrom);
  return lzo_crc32(0, checked.data(), static_cast<lzo_uint>(checked.size()));
}

Bytes JournalBytes(const ArchiveUndo& undo) {
  std::size_t size = kJournalHeader;
  for (const auto& range : undo.ranges) size += kRangeHeader + 2 * range.before.size();
  Bytes journal;
  journal.reserve(size);
  journal.resize(kJournalHeader);
  std::ranges::copy(kMagic, journal.begin());
  StoreU32(journal, kCheckedFrom, static_cast<std::uint32_t>(undo.ranges.size()));
  StoreU64(journal, kCheckedFrom + 4, undo.oldSize);
  StoreU64(journal, kCheckedFrom + 12, undo.newSize);
  for (const auto& range : undo.ranges) {
    const std::size_t at = journal.size();
    journal.resize(at + kRangeHeader);
    StoreU64(journal, at, range.offset);
    StoreU32(journal, at + 8, static_cast<std::uint32_t>(range.before.size()));
    journal.insert(journal.end(), range.before.begin(), range.before.end());
    journal.insert(journal.end(), range.after.begin(), range.after.end());
  }
  StoreU32(journal, kChecksumOffset, Checksum(journal));
  return journal;
}

// What the journal says, or nothing when it is not whole.
std::optional<ArchiveUndo> ParseJournal(std::span<const std::uint8_t> journal) {
  if (journal.size() < kJournalHeader ||
      !std::ranges::equal(journal.first(kMagic.size()), kMagic) ||
      LoadU32(journal, kChecksumOffset) != Checksum(journal)) {
    return std::nullopt;
  }
  ArchiveUndo undo;
  undo.oldSize = LoadU64(journal, kCheckedFrom + 4);
  undo.newSize = LoadU64(journal, kCheckedFrom + 12);
  const std::uint32_t count = LoadU32(journal, kCheckedFrom);
  journal = journal.subspan(kJournalHeader);
  for (std::uint32_t i = 0; i < count; ++i) {
    if (journal.size() < kRangeHeader) return std::nullopt;
    const std::uint64_t offset = LoadU64(journal, 0);
    const std::uint64_t length = LoadU32(journal, 8);
    journal = journal.subspan(kRangeHeader);
    if (2 * length > journal.size() || length > undo.oldSize || offset > undo.oldSize - length) {
      return std::nullopt;
    }
    const auto before = journal.first(static_cast<std::size_t>(length));
    const auto after = journal.subspan(before.size(), before.size());
    undo.ranges.push_back(
        {offset, Bytes(before.begin(), before.end()), Bytes(after.begin(), after.end())});
    journal = journal.subspan(2 * before.size());
  }
  if (!journal.empty()) return std::nullopt;
  return undo;
}

// Whether this program began the journal: it has the program's mark, or what is left of the mark
// when the disk lost the bytes.
bool IsOwnJournal(std::span<const std::uint8_t> journal) {
  const auto start = journal.first(std::min(journal.size(), kMagic.size()));
  return std::ranges::equal(start, std::span(kMagic).first(start.size())) ||
         std::ranges::all_of(start, [](std::uint8_t byte) { return byte == 0; });
}

// Adds the blocks in which `after` differs from what the file holds at `offset`.
void AddChangedBlocks(std::uint64_t offset, std::span<const std::uint8_t> before,
                      std::span<const std::uint8_t> after, std::vector<OverwrittenRange>& ranges) {
  for (std::size_t at = 0; at < before.size(); at += kCompareBlock) {
    const std::size_t size = std::min(kCompareBlock, before.size() - at);
    const auto was = before.subspan(at, size);
    const auto becomes = after.subspan(at, size);
    if (std::ranges::equal(was, becomes)) continue;
    if (ranges.empty() || ranges.back().offset + ranges.back().before.size() != offset + at) {
      ranges.push_back({offset + at, {}, {}});
    }
    ranges.back().before.insert(ranges.back().before.end(), was.begin(), was.end());
    ranges.back().after.insert(ranges.back().after.end(), becomes.begin(), becomes.end());
  }
}

// Which bytes of the file as it is now the staged writes change.
std::optional<ArchiveUndo> PlanUndo(File& archive, const StagedWrites& staged) {
  const auto size = archive.Size();
  if (!size) return std::nullopt;
  ArchiveUndo undo;
  undo.oldSize = *size;
  undo.newSize = std::max(*size, staged.End());
  for (const auto& [offset, bytes] : staged.Pieces()) {
    if (offset >= *size) break;
    Bytes before(static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), *size - offset)));
    if (!archive.ReadAt(offset, before)) return std::nullopt;
    AddChangedBlocks(offset, before, std::span(bytes).first(before.size()), undo.ranges);
  }
  return undo;
}

bool WriteJournal(File& file, const fs::path& path, const Bytes& journal, std::string& error) {
  if (file.WriteAt(0, journal) && file.Sync() && file.Holds(0, journal)) {
    return SyncFolderOf(path, &error);
  }
  error = file.Error();
  return false;
}

struct NewBytes {
  std::uint64_t offset;
  std::span<const std::uint8_t> bytes;
};

// Lists what is to be written. What lies beyond the file's old end comes first, so that a full disk
// shows before an old byte is touched.
std::vector<NewBytes> WritesOf(const StagedWrites& staged, const ArchiveUndo& undo) {
  std::vector<NewBytes> writes;
  for (const auto& [offset, bytes] : staged.Pieces()) {
    const std::uint64_t from = std::max(offset, undo.oldSize);
    if (from >= offset + bytes.size()) continue;
    writes.push_back({from, std::span(bytes).subspan(static_cast<std::size_t>(from - offset))});
  }
  for (const auto& range : undo.ranges) writes.push_back({range.offset, range.after});
  return writes;
}

// Reads back what was written: the journal is given up only when the new bytes are surely there.
bool WriteChanges(File& archive, const StagedWrites& staged, const ArchiveUndo& undo) {
  const std::vector<NewBytes> writes = WritesOf(staged, undo);
  return std::ranges::all_of(
             writes, [&](const NewBytes& w) { return archive.WriteAt(w.offset, w.bytes); }) &&
         archive.Sync() && std::ranges::all_of(writes, [&](const NewBytes& w) {
           return archive.Holds(w.offset, w.bytes);
         });
}

bool RemoveJournal(const fs::path& archivePath, std::string& error) {
  const fs::path journal = JournalPath(archivePath);
  if (!RemoveFile(journal, &error)) return false;
  // Should this fail and the power with it, the journal may be back: the save is then undone whole.
  SyncFolderOf(journal);
  return true;
}

enum class JournalMatch { OtherState, Untouched, Changed };

// Whether the archive is the one that the interrupted save was changing: each byte that the journal
// names is then the old or the new one.
JournalMatch MatchArchive(File& archive, const ArchiveUndo& undo) {
  const auto size = archive.Size();
  if (!size || *size < undo.oldSize || *size > undo.newSize) return JournalMatch::OtherState;
  bool changed = *size != undo.oldSize;
  for (const auto& range : undo.ranges) {
    Bytes now(range.before.size());
    if (!archive.ReadAt(range.offset, now)) return JournalMatch::OtherState;
    for (std::size_t i = 0; i < now.size(); ++i) {
      if (now[i] == range.before[i]) continue;
      if (now[i] != range.after[i]) return JournalMatch::OtherState;
      changed = true;
    }
  }
  return changed ? JournalMatch::Changed : JournalMatch::Untouched;
}

struct JournalFile {
  bool own = false;                 // whether this program began it
  std::optional<ArchiveUndo> undo;  // what a whole journal says
};

// Looks at the journal beside the archive. Nothing when the file cannot be read.
std::optional<JournalFile> ReadJournal(const fs::path& path, std::string& error) {
  File file;
  const auto size = file.Open(path, FileAccess::Read) ? file.Size() : std::nullopt;
  Bytes bytes(static_cast<std::size_t>(std::min<std::uint64_t>(size.value_or(0), kMagic.size())));
  if (!size || !file.ReadAt(0, bytes)) {
    error = file.Error();
    return std::nullopt;
  }
  if (*size > kMaxJournal || !IsOwnJournal(bytes)) return JournalFile{};
  bytes.resize(static_cast<std::size_t>(*size));
  if (!file.ReadAt(0, bytes)) {
    error = file.Error();
    return std::nullopt;
  }
  return JournalFile{true, ParseJournal(bytes)};
}

}  // namespace

fs::path JournalPath(const fs::path& archivePath) {
  fs::path path = archivePath;
  path += "-journal";
  return path;
}

bool JournalExists(const fs::path& archivePath) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(JournalPath(archivePath), ignored));
}

std::string StrayJournalReason(const fs::path& archivePath) {
  return JournalPath(archivePath).filename().string() +
         " is in the way: an interrupted save of another state of this archive left it. Move it to "
         "another folder, or delete it if you do not need that state.";
}

bool SetJournalAside(const fs::path& archivePath, std::string& error) {
  const fs::path journal = JournalPath(archivePath);
  fs::path aside = journal;
  aside += ".old";
  std::error_code ignored;
  for (int number = 2; fs::exists(fs::symlink_status(aside, ignored)); ++number) {
    aside = journal;
    aside += ".old" + std::to_string(number);
  }
  return RenameFile(journal, aside, &error) && SyncFolderOf(journal, &error);
}

ApplyResult ApplyWrites(File& archive, const fs::path& archivePath, const StagedWrites& staged,
                        ArchiveUndo& undo, std::string& error) {
  auto plan = PlanUndo(archive, staged);
  if (!plan) {
    error = archive.Error();
    return ApplyResult::Undone;
  }
  undo = std::move(*plan);
  if (undo.ranges.empty() && undo.newSize == undo.oldSize) return ApplyResult::Done;

  const Bytes bytes = JournalBytes(undo);
  const fs::path path = JournalPath(archivePath);
  File journal;
  if (bytes.size() > kMaxJournal) {
    error = "The save is too large";
    return ApplyResult::Undone;
  }
  if (JournalExists(archivePath)) {  // it belongs to another state, and the user may need it
    error = StrayJournalReason(archivePath);
    return ApplyResult::Undone;
  }
  if (!journal.Open(path, FileAccess::CreateNew)) {
    error = path.filename().string() + ": " + journal.Error();
    return ApplyResult::Undone;
  }
  if (!WriteJournal(journal, path, bytes, error)) {
    undo = {undo.oldSize, undo.oldSize, {}};
  } else if (!WriteChanges(archive, staged, undo)) {
    error = archive.Error();
  } else if (RemoveJournal(archivePath, error)) {
    return ApplyResult::Done;
  }
  std::string ignored;
  return UndoWrites(archive, archivePath, undo, ignored) ? ApplyResult::Undone
                                                         : ApplyResult::Pending;
}

bool UndoWrites(File& archive, const fs::path& archivePath, const ArchiveUndo& undo,
                std::string& error) {
  const bool changed = !undo.ranges.empty() || undo.newSize != undo.oldSize;
  bool done = true;
  for (const auto& range : undo.ranges) {
    done = done && archive.WriteAt(range.offset, range.before);
  }
  if (changed) done = done && archive.Truncate(undo.oldSize) && archive.Sync();
  for (const auto& range : undo.ranges) {
    done = done && archive.Holds(range.offset, range.before);
  }
  if (!done) error = archive.Error();
  return done && RemoveJournal(archivePath, error);
}

bool RecoverArchive(const fs::path& archivePath, JournalUse use, std::string& error) {
  if (!JournalExists(archivePath)) return true;
  const auto journal = ReadJournal(JournalPath(archivePath), error);
  if (!journal) return false;
  std::string reason;
  const bool playsBack = use == JournalUse::PlayBack;
  if (!journal->undo) {
    if (journal->own && playsBack) RemoveJournal(archivePath, reason);
    return true;
  }
  File archive;
  const bool there = archive.Open(archivePath, FileAccess::Read);
  const JournalMatch match =
      there ? MatchArchive(archive, *journal->undo) : JournalMatch::OtherState;
  if (match == JournalMatch::Untouched && playsBack) RemoveJournal(archivePath, reason);
  if (match != JournalMatch::Changed) return true;
  if (!playsBack) {
    error = "Another Mapwright is just saving it";
    return false;
  }
  if (archive.Open(archivePath, FileAccess::ReadWrite)) {
    return UndoWrites(archive, archivePath, *journal->undo, error);
  }
  error = archive.Error();
  return false;
}

}  // namespace mw
