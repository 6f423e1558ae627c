#include "data/archive.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "core/bytes.h"
#include "core/text.h"
#include "data/archive_compact.h"
#include "data/archive_replace.h"
#include "data/archive_segments.h"
#include "data/archive_state.h"

namespace mw {

namespace {

namespace fs = std::filesystem;

// A cache: room for the stored bytes of a member, kept from one to the next: reading costs less
// than fresh memory does.
Bytes& StoredRoom() {
  constexpr std::size_t kMostKept = std::size_t{8} << 20;
  static Bytes room;
  if (room.size() > kMostKept) room = {};
  return room;
}

// Whether the file is an archive of which every member can be decompressed to its full size.
bool CanAllBeRead(const fs::path& path) {
  Archive archive;
  if (!archive.Open(path.string(), false)) return false;
  for (const auto& [name, entry] : archive.Entries()) {
    const auto member = archive.ReadMemberWithGaps(name);
    if (!member || !member->IsWhole()) return false;
  }
  return true;
}

}  // namespace

std::string NormalMemberName(std::string_view name) {
  std::string normal(name);
  std::ranges::replace(normal, '\\', '/');
  return normal;
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
    if (!state_->ReadContents()) return false;
    if (state_->writable) RemoveFile(CompactedPath(state_->realPath));
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
    std::error_code ignored;
    const bool replaces = fs::exists(*state_->place, ignored);
    if (replaces && !CanAllBeRead(*state_->place)) state_->backupKind = BackupKind::Damaged;
    const bool done = state_->FinishUndo() && PutAsideInPlace(state_->file, *state_->place,
                                                              state_->backupKind, state_->error);
    if (fs::exists(state_->realPath, ignored)) return done;
    state_->realPath = *std::exchange(state_->place, std::nullopt);
    if (replaces) state_->newBackup = BackupName();
    WaiveBackup();  // no second backup is made
    return done;
  } catch (const std::bad_alloc&) {
    return state_->Fail(kNoMemory);
  }
}

const std::string& Archive::Path() const { return state_->path; }
bool Archive::Writable() const { return state_->writable; }
const std::string& Archive::WriteProtection() const { return state_->protection; }
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

const ArchiveEntry* Archive::Find(std::string_view name) const { return Entries().Find(name); }

std::optional<Bytes> Archive::ReadMember(std::string_view name) {
  auto member = ReadMemberWithGaps(name);
  if (!member) return std::nullopt;
  return std::move(member->data);
}

std::optional<MemberBytes> Archive::ReadMemberWithGaps(std::string_view name) {
  const ArchiveEntry* entry = Find(name);
  if (!entry || !state_->file.IsOpen()) return std::nullopt;
  try {
    if (Mode() == StorageMode::Compressed) {
      return ExpandMember(state_->ReadStored(*entry, StoredRoom()), entry->size);
    }
    MemberBytes member;
    Bytes& data = member.data;
    data.resize(std::min<std::size_t>(state_->ReadStored(*entry, data).size(), entry->size));
    if (data.size() < entry->size) member.gaps.push_back({data.size(), entry->size});
    return member;
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
      return state_->PlaceMember(normal, Bytes(data.begin(), data.end()), size);
    }
    const ArchiveEntry* old = Find(normal);
    std::span<const std::uint8_t> before;
    if (old) before = state_->ReadStored(*old, StoredRoom());
    auto stored = CompressMember(data, before);
    if (!stored) return state_->Fail("The member could not be compressed");
    if (old && old->size == size && std::ranges::equal(*stored, before)) {
      return true;  // the member has these bytes already
    }
    return state_->PlaceMember(normal, std::move(*stored), size);
  });
}

bool Archive::RemoveMember(std::string_view name) {
  if (!Find(name)) return false;
  return RemoveMembersIf([removed = NormalMemberName(name)](std::string_view member) {
    return EqualNoCase(member, removed);
  });
}

bool Archive::RemoveMembersIf(const std::function<bool(std::string_view)>& isRemoved) {
  return state_->InGroup([&] {
    if (state_->contents.entries.RemoveIf(isRemoved) > 0) state_->MarkChanged();
    return true;
  });
}

bool Archive::RemoveMembersWithPrefix(std::string_view prefix) {
  return RemoveMembersIf([start = NormalMemberName(prefix)](std::string_view member) {
    return StartsWithNoCase(member, start);
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

ArchiveOnDisk Archive::OnDisk() const { return state_->OnDisk(); }

bool Archive::Reopen() {
  try {
    if (state_->saving) return state_->Fail("A save is under way");
    switch (state_->OnDisk()) {
      case ArchiveOnDisk::Changed:
        return state_->Reopen();
      case ArchiveOnDisk::Gone:
        return state_->BringBack();
      case ArchiveOnDisk::AsLeft:
        break;
    }
    return true;
  } catch (const std::bad_alloc&) {
    return state_->Fail(kNoMemory);
  }
}

bool Archive::LiftWriteProtection() {
  try {
    return state_->LiftProtection();
  } catch (const std::bad_alloc&) {
    return state_->Fail(kNoMemory);
  }
}

void Archive::BackUpFirst(BackupKind kind) {
  state_->backsUpFirst = true;
  state_->backupKind = kind;
}

bool Archive::BackUp() {
  try {
    return state_->IsAsLeft() && state_->FinishUndo() && state_->BackUp();
  } catch (const std::bad_alloc&) {
    return state_->Fail(kNoMemory);
  }
}

void Archive::WaiveBackup() { state_->WaiveBackup(); }

std::string Archive::BackupName() const { return state_->BackupFile().filename().string(); }

std::string Archive::TakeNewBackup() { return std::exchange(state_->newBackup, {}); }

std::string Archive::StrayJournal() const {
  if (state_->pendingUndo || !JournalExists(state_->realPath)) return {};
  return JournalPath(state_->realPath).filename().string();
}

bool Archive::SetStrayJournalAside() {
  return StrayJournal().empty() || SetJournalAside(state_->realPath, state_->error);
}

bool Archive::Compact() {
  if (!state_->file.IsOpen() || !state_->writable) {
    return state_->Fail("The archive is not open for writing");
  }
  state_->dirty = true;
  return Close();
}

bool Archive::Close() {
  try {
    return state_->Close();
  } catch (const std::bad_alloc&) {
    state_->file.Close();
    return state_->Fail(kNoMemory);
  }
}

}  // namespace mw
