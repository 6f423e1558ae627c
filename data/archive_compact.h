// Compaction of an archive file: members back to back in the order of their offsets, nothing after
// the directory. Used by `Archive` when it closes.
#pragma once

#include <filesystem>
#include <string>

#include "data/archive_directory.h"
#include "platform/file.h"

namespace mw {

// The path of the file that compaction writes before it takes the archive's place.
std::filesystem::path CompactedPath(const std::filesystem::path& archivePath);

// Writes the compact archive aside, syncs it, reads it back and renames it over the old one, so
// that the old or the new file is there whole at any moment. Members that share bytes each keep
// theirs. Nothing is written when the file is compact already. False, with the old file as it was,
// when that fails.
bool CompactArchive(File& archive, const std::filesystem::path& archivePath,
                    const ArchiveContents& contents, std::string& error);

}  // namespace mw
