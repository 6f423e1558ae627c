// Files beside an archive: its backup, and an archive that is written aside until it can take
// another's place, so that the old one stays whole until the new one is complete. Used by
// `Archive`; docs/formats.md names the files.
#pragma once

#include <filesystem>
#include <string>

#include "platform/file.h"

namespace mw {

// The file that is written aside.
std::filesystem::path AsidePath(const std::filesystem::path& archivePath);
// The old state of a file that was saved into, or that a new one took the place of.
std::filesystem::path BackupPath(const std::filesystem::path& archivePath);

// Copies the open archive file to its backup, which is whole at any moment, made to last,
// and read back before it takes the place of an older one.
bool BackUpArchive(File& archive, const std::filesystem::path& archivePath, std::string& error);

// Removes a file that was written aside, and its journal. True when there is none afterwards.
bool RemoveAside(const std::filesystem::path& archivePath, std::string& error);

// Puts the synced file at AsidePath, open as `aside`, in the archive's place. A file that is there
// is copied to BackupPath first; the journal of an interrupted save is played back before. At any
// moment the old or the new file is there whole. False when that failed, with the old file in
// place as long as the file aside is there.
bool PutAsideInPlace(File& aside, const std::filesystem::path& archivePath, std::string& error);

}  // namespace mw
