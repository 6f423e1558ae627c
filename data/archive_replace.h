// Files beside an archive: its backup, and an archive that is written aside until it can take
// another's place, so that the old one stays whole until the new one is complete. Used by
// `Archive`; docs/formats.md names the files.
#pragma once

#include <filesystem>
#include <string>

#include "data/archive.h"
#include "platform/file.h"

namespace mw {

// What the user is told of a file that another editor has the claim on.
inline constexpr char kInUse[] = "Another Mapwright has it open";

// The path of the file that is written aside.
std::filesystem::path AsidePath(const std::filesystem::path& archivePath);
// The path of the backup, which holds the old state of a file that was saved into or replaced.
std::filesystem::path BackupPath(const std::filesystem::path& archivePath, BackupKind kind);

// Copies the open archive file to its backup, which is whole at any moment, made to last,
// and read back before it takes the place of an older one.
bool BackUpArchive(File& archive, const std::filesystem::path& backup, std::string& error);

// Removes a file that was written aside, and its journal. True when there is none afterwards; false
// also when another editor is writing it.
bool RemoveAside(const std::filesystem::path& archivePath, std::string& error);

// Puts the synced file at AsidePath, open as `aside`, in the archive's place. A file that is there
// is copied to its backup first; the journal of an interrupted save is played back before. At any
// moment the old or the new file is there whole. False when that failed, with the old file in
// place as long as the file aside is there; nothing takes the place of a file that another editor
// has open.
bool PutAsideInPlace(File& aside, const std::filesystem::path& archivePath, BackupKind kind,
                     std::string& error);

}  // namespace mw
