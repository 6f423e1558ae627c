// Changes to an archive file that are made wholly or not at all, whatever happens meanwhile. The
// bytes about to be overwritten first go to a rollback journal beside the archive; while it is
// there, opening the archive puts them back. Used by `Archive`; docs/formats.md describes the
// journal.
//
// The order is what makes it safe: the journal and its name are synced before the archive is
// touched, and the archive is synced, read back and compared before the journal is removed.
// Removing it is what completes the save.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "data/archive_staging.h"
#include "platform/file.h"

namespace mw {

// Bytes of the file that a save overwrites; `before` and `after` have the same length.
struct OverwrittenRange {
  std::uint64_t offset = 0;
  std::vector<std::uint8_t> before, after;
};

// How to undo a save.
struct ArchiveUndo {
  std::uint64_t oldSize = 0;  // what the archive file had before the save
  std::uint64_t newSize = 0;
  std::vector<OverwrittenRange> ranges;
};

std::filesystem::path JournalPath(const std::filesystem::path& archivePath);
bool JournalExists(const std::filesystem::path& archivePath);
// Why nothing is saved as long as a journal of another state of the archive lies beside it, and
// what the user can do.
std::string StrayJournalReason(const std::filesystem::path& archivePath);
// Renames such a journal without replacing any file: it stays beside the archive as
// `<journal>.old`, `.old2` ...
bool SetJournalAside(const std::filesystem::path& archivePath, std::string& error);

enum class ApplyResult {
  Done,
  Undone,   // the save failed, and the file is as it was
  Pending,  // the save failed, and so did undoing it: `undo` is still to be done
};
// Makes the staged writes to the archive file, and reads them back. `error` is the reason of a
// failure.
ApplyResult ApplyWrites(File& archive, const std::filesystem::path& archivePath,
                        const StagedWrites& staged, ArchiveUndo& undo, std::string& error);
// Puts the file back and removes the journal. It can be called again until it succeeds.
bool UndoWrites(File& archive, const std::filesystem::path& archivePath, const ArchiveUndo& undo,
                std::string& error);

// Who has no claim on the archive must leave its journal alone: it may be that of a save under way.
enum class JournalUse { PlayBack, LeaveAlone };
// Plays back the journal of an interrupted save. True when there is none, when it was not finished
// (the archive was not touched yet), or when it belongs to another state of the archive (it is left
// alone); false when the archive needs it and it cannot or must not be played back.
bool RecoverArchive(const std::filesystem::path& archivePath, JournalUse use, std::string& error);

}  // namespace mw
