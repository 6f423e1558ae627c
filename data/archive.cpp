#include "data/archive.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <utility>

#include "data/archive_compact.h"
#include "data/archive_directory.h"
#include "data/archive_journal.h"
#include "data/archive_replace.h"
#include "data/archive_segments.h"
#include "platform/disk.h"
#include "platform/file.h"

namespace mw {

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

constexpr char kNoMemory[] = "Not enough memory";
constexpr char kTooLarge[] = "The archive would be larger than 4 GiB";

// The file itself, whatever links lead to it: its journal lies beside it.
fs::path RealPath(std::string_view path) {
  std::error_code error;
  const fs::path native = fs::absolute(NativePath(path), error);
  fs::path real = fs::weakly_canonical(native, error);
  return error ? native : real;
}

}  // namespace

std::string NormalMemberName(std::string_view name) {
  std::string normal(name);
  std::ranges::replace(normal, '\\', '/');
  return normal;
}

struct Archive::State {
  std::string path;  // as given
  fs::path realPath;
  std::optional<fs::path> place;  // that it is to take: realPath lies aside
  File file;
  bool writable = false;
  bool dirty = false;
  ArchiveContents contents;
  std::string error;

  // The group under way: what it changes in the file, and how things were before.
  bool saving = false;
  bool changed = false;
  StagedWrites staged;
  ArchiveContents contentsBefore;
  bool dirtyBefore = false;

  // A failed save that could not be undone on disk yet, and the bytes that belong there.
  std::optional<ArchiveUndo> pendingUndo;
  StagedWrites undone;

  bool Fail(std::string_view reason) {
    error = reason;
    return false;
  }
  bool OpenFile(FileAccess access);
  bool CreateFile(std::string_view path, fs::path at);
  bool Close();

  bool FinishUndo();
  bool Begin();
  bool Commit();
  void Rollback();
  template <typename Change>
  bool InGroup(Change change);
  void MarkChanged();
  bool StageDirectory();

  Bytes ReadStored(const ArchiveEntry& entry);
  bool MayOverwrite(const ArchiveEntry& entry) const;
  bool PlaceMember(std::string name, Bytes stored, std::uint32_t size);
};

bool Archive::State::OpenFile(FileAccess access) {
  return RecoverArchive(realPath, error) && (file.Open(realPath, access) || Fail(file.Error()));
}

bool Archive::State::Close() {
  if (!file.IsOpen()) return true;
  if (place) {
    file.Close();
    contents = {};
    return RemoveAside(*place, error);
  }
  Rollback();
  const bool good = FinishUndo() && (!dirty || CompactArchive(file, realPath, contents, error));
  file.Close();
  contents = {};
  return good;
}

// Brings the file back to what the entries say, after a save that could not be undone at once.
bool Archive::State::FinishUndo() {
  if (!pendingUndo) return true;
  if (!UndoWrites(file, realPath, *pendingUndo, error)) return false;
  pendingUndo.reset();
  undone.Clear();
  return true;
}

bool Archive::State::Begin() {
  if (saving) return Fail("A save is under way already");
  if (!file.IsOpen() || !writable) return Fail("The archive is not open for writing");
  if (!FinishUndo()) return false;
  contentsBefore = contents;
  dirtyBefore = dirty;
  changed = false;
  saving = true;
  return true;
}

bool Archive::State::Commit() {
  if (!saving) return Fail("No save is under way");
  if (changed && !StageDirectory()) {
    Rollback();
    return false;
  }
  ArchiveUndo undo;
  const ApplyResult result = ApplyWrites(file, realPath, staged, undo, error);
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

// Runs `change` in the group under way, or in one of its own.
template <typename Change>
bool Archive::State::InGroup(Change change) {
  const bool ownGroup = !saving;
  try {
    if (!ownGroup) return change();
    if (!Begin()) return false;
    if (change()) return Commit();
  } catch (const std::bad_alloc&) {
    Fail(kNoMemory);
  }
  if (ownGroup) Rollback();
  return false;
}

bool Archive::State::CreateFile(std::string_view givenPath, fs::path at) {
  path = givenPath;
  realPath = std::move(at);
  writable = true;
  std::error_code ignored;
  const bool existed = fs::exists(realPath, ignored);
  if (!OpenFile(FileAccess::Create)) return false;
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

// The member's bytes in the file, as they are or will be once the group under way is complete;
// fewer when the file has become shorter or cannot be read.
Bytes Archive::State::ReadStored(const ArchiveEntry& entry) {
  const std::uint64_t offset = entry.dataOffset;
  const std::uint64_t fileSize = file.Size().value_or(0);
  const std::uint64_t end =
      std::clamp(std::max(fileSize, staged.End()), offset, offset + entry.storedSize);
  Bytes stored(static_cast<std::size_t>(end - offset));
  const std::uint64_t inFile = std::clamp(fileSize, offset, end) - offset;
  if (!file.ReadAt(offset, std::span(stored).first(static_cast<std::size_t>(inFile)))) {
    Fail(file.Error());
    return {};
  }
  undone.PutOver(offset, stored);
  staged.PutOver(offset, stored);
  return stored;
}

// Whether the bytes of `entry` are its own: another member may lie on the same ones.
bool Archive::State::MayOverwrite(const ArchiveEntry& entry) const {
  const auto end = [](const ArchiveEntry& e) { return std::uint64_t{e.dataOffset} + e.storedSize; };
  return std::ranges::none_of(contents.entries, [&](const auto& other) {
    return &other.second != &entry && other.second.dataOffset < end(entry) &&
           entry.dataOffset < end(other.second);
  });
}

// Stages the member's stored bytes, at its old place where they fit, else after all others.
bool Archive::State::PlaceMember(std::string name, Bytes stored, std::uint32_t size) {
  const auto found = contents.entries.find(name);
  ArchiveEntry entry = found != contents.entries.end() ? found->second : ArchiveEntry{};
  std::uint64_t offset = DataEnd(contents.entries);
  if (found != contents.entries.end() && entry.storedSize >= stored.size() &&
      MayOverwrite(found->second)) {
    offset = entry.dataOffset;
  } else if (offset + stored.size() > kMaxArchiveSize) {
    return Fail(kTooLarge);
  }
  entry.dataOffset = static_cast<std::uint32_t>(offset);
  entry.storedSize = static_cast<std::uint32_t>(stored.size());
  entry.size = size;
  staged.Write(offset, std::move(stored));
  contents.entries.insert_or_assign(std::move(name), entry);
  MarkChanged();
  return true;
}

Archive::Archive() : state_(std::make_unique<State>()) {}
Archive::~Archive() = default;

bool Archive::Open(std::string_view path, bool writable) {
  try {
    state_ = std::make_unique<State>();
    state_->path = path;
    state_->realPath = RealPath(path);
    state_->writable = writable;
    if (!state_->OpenFile(writable ? FileAccess::ReadWrite : FileAccess::Read)) return false;
    auto contents = ReadArchiveContents(state_->file, state_->error);
    if (!contents) {
      state_->file.Close();
      return false;
    }
    state_->contents = std::move(*contents);
    if (writable) RemoveFile(CompactedPath(state_->realPath));
    return true;
  } catch (const std::bad_alloc&) {
    state_->file.Close();
    return state_->Fail(kNoMemory);
  }
}

bool Archive::Create(std::string_view path) {
  try {
    state_ = std::make_unique<State>();
    return state_->CreateFile(path, RealPath(path));
  } catch (const std::bad_alloc&) {
    state_->file.Close();
    return state_->Fail(kNoMemory);
  }
}

bool Archive::CreateAside(std::string_view path) {
  try {
    state_ = std::make_unique<State>();
    state_->place = RealPath(path);
    return RemoveAside(*state_->place, state_->error) &&
           state_->CreateFile(path, AsidePath(*state_->place));
  } catch (const std::bad_alloc&) {
    state_->file.Close();
    return state_->Fail(kNoMemory);
  }
}

bool Archive::PutInPlace() {
  if (!state_->place) return true;
  try {
    if (state_->saving) return state_->Fail("A save is under way");
    const bool done =
        state_->FinishUndo() && PutAsideInPlace(state_->file, *state_->place, state_->error);
    std::error_code ignored;
    if (fs::exists(state_->realPath, ignored)) return done;
    state_->realPath = *std::exchange(state_->place, std::nullopt);
    return done;
  } catch (const std::bad_alloc&) {
    return state_->Fail(kNoMemory);
  }
}

const std::string& Archive::Path() const { return state_->path; }
bool Archive::Writable() const { return state_->writable; }
bool Archive::Dirty() const { return state_->dirty; }
StorageMode Archive::Mode() const { return state_->contents.header.mode; }
const ArchiveEntries& Archive::Entries() const { return state_->contents.entries; }
const std::string& Archive::Error() const { return state_->error; }

bool Archive::SetMode(StorageMode mode) {
  ArchiveContents& contents = state_->contents;
  if (!contents.entries.empty() && mode != contents.header.mode) {
    return state_->Fail("The archive holds members in its present storage mode");
  }
  contents.header.mode = mode;
  return true;
}

const ArchiveEntry* Archive::Find(std::string_view name) const {
  const auto found = Entries().find(NormalMemberName(name));
  return found != Entries().end() ? &found->second : nullptr;
}

std::optional<Bytes> Archive::ReadMember(std::string_view name) {
  const ArchiveEntry* entry = Find(name);
  if (!entry || !state_->file.IsOpen()) return std::nullopt;
  try {
    Bytes stored = state_->ReadStored(*entry);
    if (Mode() == StorageMode::Compressed) return ExpandMember(stored, entry->size);
    stored.resize(std::min<std::size_t>(stored.size(), entry->size));
    return stored;
  } catch (const std::bad_alloc&) {
    state_->Fail(kNoMemory);
    return std::nullopt;
  }
}

bool Archive::WriteMember(std::string_view name, std::span<const std::uint8_t> data) {
  return state_->InGroup([&] {
    std::string normal = NormalMemberName(name);
    if (normal.empty() || normal.size() > kMaxMemberName) {
      return state_->Fail("The member's name is empty or too long");
    }
    if (data.size() > kMaxArchiveSize) return state_->Fail(kTooLarge);
    const auto size = static_cast<std::uint32_t>(data.size());
    if (Mode() == StorageMode::Stored) {
      return state_->PlaceMember(std::move(normal), Bytes(data.begin(), data.end()), size);
    }
    const ArchiveEntry* old = Find(normal);
    auto stored = CompressMember(data, old ? state_->ReadStored(*old) : Bytes{});
    if (!stored) return state_->Fail("The member could not be compressed");
    return state_->PlaceMember(std::move(normal), std::move(*stored), size);
  });
}

bool Archive::RemoveMember(std::string_view name) {
  if (!Find(name)) return false;
  return state_->InGroup([&] {
    state_->contents.entries.erase(NormalMemberName(name));
    state_->MarkChanged();
    return true;
  });
}

bool Archive::RemoveMembersWithPrefix(std::string_view prefix) {
  return state_->InGroup([&] {
    const std::size_t removed =
        std::erase_if(state_->contents.entries, [start = NormalMemberName(prefix)](const auto& e) {
          return StartsWithNoCase(e.first, start);
        });
    if (removed > 0) state_->MarkChanged();
    return true;
  });
}

bool Archive::BeginSave() {
  try {
    return state_->Begin();
  } catch (const std::bad_alloc&) {
    return state_->Fail(kNoMemory);
  }
}

bool Archive::CommitSave() {
  try {
    return state_->Commit();
  } catch (const std::bad_alloc&) {
    state_->Rollback();
    return state_->Fail(kNoMemory);
  }
}

void Archive::RollbackSave() { state_->Rollback(); }

bool Archive::Close() {
  try {
    return state_->Close();
  } catch (const std::bad_alloc&) {
    state_->file.Close();
    return state_->Fail(kNoMemory);
  }
}

}  // namespace mw
