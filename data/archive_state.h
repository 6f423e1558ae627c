// What an open `Archive` knows and how it changes its file. Used by archive.cpp and
// archive_state.cpp only.
#pragma once

#include <filesystem>
#include <new>

#include "data/archive.h"
#include "data/archive_directory.h"
#include "data/archive_journal.h"
#include "data/archive_staging.h"
#include "platform/file.h"

namespace mw {

inline constexpr char kNoMemory[] = "Not enough memory";
inline constexpr char kTooLarge[] = "The archive would be larger than 4 GiB";

// The path of the file itself, whatever links lead to it, because its journal lies beside it.
std::filesystem::path RealPath(std::string_view path);

struct Archive::State {
  std::string path;  // as the caller gave it
  std::filesystem::path realPath;
  std::optional<std::filesystem::path> place;  // of an archive created aside: the one to take
  File file;
  bool writable = false;
  std::string protection;  // why it can only be read, though it was opened for writing
  bool dirty = false;
  ArchiveContents contents;
  std::string error;
  // The file as it was when it was opened or last changed. Nothing is written into another one.
  std::optional<FileIdentity> asLeft;

  // The group under way: what it changes in the file, and how things were before.
  bool saving = false;
  bool changed = false;
  StagedWrites staged;
  ArchiveContents contentsBefore;
  bool dirtyBefore = false;

  // The backup that is made before the first change, and its name when it was made just now.
  bool backsUpFirst = false;
  BackupKind backupKind = BackupKind::Whole;
  std::string newBackup;

  // A failed save that could not be undone on disk yet, and the bytes that belong there.
  std::optional<ArchiveUndo> pendingUndo;
  StagedWrites undone;

  bool Fail(std::string_view reason) {
    error = reason;
    return false;
  }
  bool OpenFile(FileAccess access);
  bool OpenOrProtect(FileAccess access);
  bool UseClaim(bool claimed);
  bool LiftProtection();
  bool ReadContents();
  bool CreateFile(std::string_view path, std::filesystem::path at);
  bool Close();

  ArchiveOnDisk OnDisk() const;
  bool IsAsLeft();
  bool Reopen();
  bool BringBack();

  std::filesystem::path BackupFile() const;
  bool BackUp();
  void WaiveBackup();

  bool FinishUndo();
  bool Begin();
  bool Commit();
  void Rollback();
  // Runs `change` in the group that is under way, or else in a group of its own.
  template <typename Change>
  bool InGroup(Change change);
  void MarkChanged();
  bool StageDirectory();

  std::span<const std::uint8_t> ReadStored(const ArchiveEntry& entry,
                                           std::vector<std::uint8_t>& room);
  bool MayOverwrite(const ArchiveEntry& entry) const;
  bool PlaceMember(std::string_view name, std::vector<std::uint8_t> stored, std::uint32_t size);
};

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

}  // namespace mw
