#include "data/archive_state.h"

#include <algorithm>
#include <utility>

#include "core/bytes.h"
#include "data/archive_compact.h"
#include "data/archive_replace.h"
#include "platform/disk.h"

namespace mw {

namespace fs = std::filesystem;

fs::path RealPath(std::string_view path) {
  std::error_code error;
  const fs::path native = fs::absolute(NativePath(path), error);
  fs::path real = fs::weakly_canonical(native, error);
  return error ? native : real;
}

// Opens the file that the name leads to, and takes the claim on it where it is to be written.
bool Archive::State::OpenFile(FileAccess access) {
  constexpr int kMostTries = 16;
  for (int tries = 0; tries < kMostTries; ++tries) {
    if (!OpenOrProtect(access)) return false;
    // Who only reads has no use for the claim, but for playing back a journal.
    const bool claimed = (writable || JournalExists(realPath)) && file.Claim();
    if (file.IsAt(realPath)) return UseClaim(claimed);
  }
  file.Close();
  return Fail("Other programs keep replacing it");
}

// A file that can only be read is opened so, as write-protected.
bool Archive::State::OpenOrProtect(FileAccess access) {
  protection.clear();
  if (file.Open(realPath, access)) return true;
  const std::string reason = file.Error();
  if (access != FileAccess::ReadWrite || !file.Open(realPath, FileAccess::Read)) {
    return Fail(reason);
  }
  protection = reason;
  return true;
}

bool Archive::State::UseClaim(bool claimed) {
  if (writable && !claimed && protection.empty()) protection = kInUse;
  if (!protection.empty()) writable = false;
  const JournalUse use = claimed ? JournalUse::PlayBack : JournalUse::LeaveAlone;
  if (!RecoverArchive(realPath, use, error)) {
    file.Close();
    return false;
  }
  if (!writable) file.GiveUpClaim();
  return true;
}

bool Archive::State::LiftProtection() {
  if (protection.empty()) return writable;
  if (OnDisk() != ArchiveOnDisk::Gone) {
    State now;
    now.realPath = realPath;
    now.writable = true;
    if (!now.OpenFile(FileAccess::ReadWrite)) return Fail(now.error);
    if (!now.writable) return Fail(protection = now.protection);
    file = std::move(now.file);
  }
  protection.clear();
  return writable = true;
}

bool Archive::State::ReadContents() {
  auto read = ReadArchiveContents(file, error);
  if (!read) {
    file.Close();
    return false;
  }
  contents = std::move(*read);
  asLeft = file.Identity();
  return true;
}

ArchiveOnDisk Archive::State::OnDisk() const {
  if (!file.IsOpen()) return ArchiveOnDisk::AsLeft;
  const auto now = IdentityOf(realPath);
  if (now) return now == asLeft ? ArchiveOnDisk::AsLeft : ArchiveOnDisk::Changed;
  return file.Identity() == asLeft ? ArchiveOnDisk::Gone : ArchiveOnDisk::Changed;
}

bool Archive::State::IsAsLeft() {
  if (OnDisk() == ArchiveOnDisk::AsLeft) return true;
  return Fail(realPath.filename().string() +
              " was changed by another program since it was opened or last saved. Save Level can "
              "take the change on.");
}

// Takes the file as it is now in the place of the one that is open, which may be the same file.
bool Archive::State::Reopen() {
  State now;
  now.path = path;
  now.realPath = realPath;
  now.writable = true;
  now.backsUpFirst = backsUpFirst;
  now.backupKind = backupKind;
  file.GiveUpClaim();
  if (now.OpenFile(FileAccess::ReadWrite) && now.writable && now.ReadContents()) {
    *this = std::move(now);
    return true;
  }
  file.Claim();
  return Fail(now.protection.empty() ? now.error : now.protection);
}

// Writes the file that is open to its place again, from which another program has taken it.
bool Archive::State::BringBack() {
  File copy;
  const fs::path aside = AsidePath(realPath);
  std::error_code ignored;  // where it fails, making the copy fails next and says why
  fs::create_directories(realPath.parent_path(), ignored);
  if (!RemoveAside(realPath, error)) return false;
  if (!(copy.Open(aside, FileAccess::CreateNew) && copy.Claim() && copy.CopyContent(file) &&
        copy.CopyPermissions(file) && copy.Sync() && copy.HoldsContentOf(file))) {
    Fail(copy.Error());
  } else if (RenameFile(aside, realPath, &error) && SyncFolderOf(realPath, &error)) {
    file = std::move(copy);
    asLeft = file.Identity();
    return true;
  }
  RemoveFile(aside);
  return false;
}

fs::path Archive::State::BackupFile() const { return BackupPath(realPath, backupKind); }

// Keeps the state before the first change. The caller has seen that the file is as it was left.
bool Archive::State::BackUp() {
  if (place || archives.backedUp.contains(realPath)) return true;
  if (!BackUpArchive(file, BackupFile(), error)) return false;
  newBackup = BackupFile().filename().string();
  WaiveBackup();
  return true;
}

void Archive::State::WaiveBackup() { archives.backedUp.insert(realPath); }

bool Archive::State::Close() {
  if (!file.IsOpen()) return true;
  if (place) {
    file.Close();
    contents = {};
    return RemoveAside(*place, error);
  }
  Rollback();
  const bool good = FinishUndo() && (!dirty || IsAsLeft()) &&
                    (!dirty || CompactArchive(file, realPath, contents, error));
  file.Close();
  contents = {};
  return good;
}

// Brings the file back to what the entries say, after a save that could not be undone at once.
bool Archive::State::FinishUndo() {
  if (!pendingUndo) return true;
  if (!IsAsLeft()) return false;  // the journal stays, for whoever opens the file next
  const bool undoneNow = UndoWrites(file, realPath, *pendingUndo, error);
  asLeft = file.Identity();
  if (!undoneNow) return false;
  pendingUndo.reset();
  undone.Clear();
  return true;
}

bool Archive::State::Begin() {
  if (saving) return Fail("A save is under way already");
  if (!protection.empty()) return Fail("It is write-protected: " + protection);
  if (!file.IsOpen() || !writable) return Fail("The archive is not open for writing");
  if (!IsAsLeft() || !FinishUndo()) return false;
  if (backsUpFirst && !BackUp()) {
    return Fail("The backup, " + BackupFile().filename().string() +
                ", could not be made: " + error + ". Save Level can do without.");
  }
  contentsBefore = contents;
  dirtyBefore = dirty;
  changed = false;
  saving = true;
  return true;
}

bool Archive::State::Commit() {
  if (!saving) return Fail("No save is under way");
  if ((changed && !StageDirectory()) || !IsAsLeft()) {
    Rollback();
    return false;
  }
  ArchiveUndo undo;
  const ApplyResult result = ApplyWrites(file, realPath, staged, undo, error);
  asLeft = file.Identity();
  if (result == ApplyResult::Pending) {
    pendingUndo = std::move(undo);
    for (const auto& range : pendingUndo->ranges) undone.Write(range.offset, range.before);
  }
  if (result != ApplyResult::Done) {
    Rollback();
    return false;
  }
  staged.Clear();
  saving = false;
  return true;
}

void Archive::State::Rollback() {
  if (!saving) return;
  staged.Clear();
  contents = std::move(contentsBefore);
  dirty = dirtyBefore;
  saving = false;
}

bool Archive::State::CreateFile(std::string_view givenPath, fs::path at) {
  path = givenPath;
  realPath = std::move(at);
  writable = true;
  std::error_code ignored;
  const bool existed = fs::exists(realPath, ignored);
  if (!OpenFile(FileAccess::Create)) return false;
  if (!writable) {
    file.Close();
    return Fail(std::exchange(protection, {}));
  }
  asLeft = file.Identity();
  // What an existing file held before is cut off when the archive is closed.
  dirty = file.Size().value_or(0) > 0;
  const bool written = InGroup([&] {
    changed = true;
    return existed || SyncFolderOf(realPath, &error);
  });
  if (written) return true;
  file.Close();
  if (!existed) RemoveFile(realPath);
  return false;
}

void Archive::State::MarkChanged() {
  changed = true;
  dirty = true;
}

bool Archive::State::StageDirectory() {
  const std::uint64_t end = DataEnd(contents.entries);
  if (end + DirectorySize(contents.entries) > kMaxArchiveSize) return Fail(kTooLarge);
  contents.header.directoryOffset = static_cast<std::uint32_t>(end);
  staged.Write(0, HeaderBytes(contents.header));
  staged.Write(end, DirectoryBytes(contents.entries));
  return true;
}

// Reads the member's bytes in the file, as they are or will be once the group under way is
// complete; fewer when the file has become shorter or cannot be read. They lie at the end of
// `room`, which grows as needed: so a sanitizer sees whoever reads beyond them.
std::span<const std::uint8_t> Archive::State::ReadStored(const ArchiveEntry& entry, Bytes& room) {
  const std::uint64_t offset = entry.dataOffset;
  const std::uint64_t fileSize = file.Size().value_or(0);
  const std::uint64_t end =
      std::clamp(std::max(fileSize, staged.End()), offset, offset + entry.storedSize);
  const auto size = static_cast<std::size_t>(end - offset);
  if (room.size() < size) {
    room.clear();
    room.resize(size);
  }
  const auto stored = std::span(room).last(size);
  const auto inFile = static_cast<std::size_t>(std::clamp(fileSize, offset, end) - offset);
  if (!file.ReadAt(offset, stored.first(inFile))) {
    Fail(file.Error());
    return {};
  }
  std::ranges::fill(stored.subspan(inFile), std::uint8_t{0});  // the rest is all staged
  undone.PutOver(offset, stored);
  staged.PutOver(offset, stored);
  return stored;
}

// Whether the bytes of `entry` are its own: another member may lie on the same ones.
bool Archive::State::MayOverwrite(const ArchiveEntry& entry) const {
  const auto end = [](const ArchiveEntry& e) { return std::uint64_t{e.dataOffset} + e.storedSize; };
  for (const auto& [name, other] : contents.entries) {
    if (&other != &entry && other.dataOffset < end(entry) && entry.dataOffset < end(other)) {
      return false;
    }
  }
  return true;
}

// Stages the member's stored bytes, at its old place where they fit, else after all others.
bool Archive::State::PlaceMember(std::string_view name, Bytes stored, std::uint32_t size) {
  const ArchiveEntry* const old = contents.entries.Find(name);
  ArchiveEntry entry = old ? *old : ArchiveEntry{};
  std::uint64_t offset = DataEnd(contents.entries);
  if (old && entry.storedSize >= stored.size() && MayOverwrite(*old)) {
    offset = entry.dataOffset;
  } else if (offset + stored.size() > kMaxArchiveSize) {
    return Fail(kTooLarge);
  }
  entry.dataOffset = static_cast<std::uint32_t>(offset);
  entry.storedSize = static_cast<std::uint32_t>(stored.size());
  entry.size = size;
  entry.revision = NextRevision();
  staged.Write(offset, std::move(stored));
  contents.entries.Set(name, entry);
  MarkChanged();
  return true;
}

}  // namespace mw
