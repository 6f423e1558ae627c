// The game's archive files (.vra): one file that holds many named members, stored as they are (mode
// 0) or as LZO1X segments of 32768 bytes (mode 1). An archive is read and updated in place;
// `ArchiveList` is the ordered set of archives that are open. docs/formats.md describes the file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/text.h"
#include "data/archive_entries.h"
#include "data/member_bytes.h"

namespace mw {

enum class StorageMode : std::uint32_t { Stored = 0, Compressed = 1 };

// The file at an open archive's path: as the archive was opened or last saved; changed or replaced
// by another program; or gone, with what it held still at hand.
enum class ArchiveOnDisk { AsLeft, Changed, Gone };

// The backup of an archive that could only be read in part has a name of its own, so that it never
// replaces the backup of a whole one.
enum class BackupKind { Whole, Damaged };

// Returns `name` with `/` for every separator.
std::string NormalMemberName(std::string_view name);

// One archive file. Nothing here throws; after a failure `Error` tells the system's reason.
//
// An archive that is open for writing has the claim on its file (File::Claim) until it is closed,
// so that no second editor writes it. The claim belongs to the file, not to its name: where a new
// file takes the archive's place, that one is claimed before it is renamed. After a compaction,
// with which the archive is closed, nothing is left to protect. Whoever opens the file looks, once
// it has the claim, whether the name still leads to the same file.
class Archive {
 public:
  Archive();
  ~Archive();  // closes without compacting
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;

  // Opens an existing archive, playing back a rollback journal that an interrupted save left beside
  // it. False when the file is missing or damaged (every offset and size is checked against the
  // file's length first), or while another editor is saving it. A read-only archive refuses every
  // change; so does a file that was opened for writing but cannot be written (WriteProtection).
  bool Open(std::string_view path, bool writable);
  // Creates the file, or takes over an existing one, as an archive without members (mode 0).
  bool Create(std::string_view path);
  // Creates an archive without members (mode 0) that is to take the place of the file at `path`.
  // Until PutInPlace it lies beside that file, which stays as it is; closed before, it is gone.
  bool CreateAside(std::string_view path);
  // Gives an archive that was created aside its place. What was there stays as `<path>.bak`. At any
  // moment the old or the new file is there whole. Does nothing when the archive has its place
  // already. False when that failed.
  bool PutInPlace();

  const std::string& Path() const;  // as given when it was opened
  bool Writable() const;
  // Why an archive that was opened for writing can only be read: the system's reason, or that
  // another editor has it open. Empty when it can be written, or never was to be.
  const std::string& WriteProtection() const;
  // Tries anew to get a write-protected archive for writing. True when it can be written now.
  bool LiftWriteProtection();
  bool Dirty() const;  // the directory has changed since the archive was opened or last compacted
  StorageMode Mode() const;
  // Chooses the mode of the members that are written from now on. False when the archive holds
  // members in the other mode, which would become unreadable.
  bool SetMode(StorageMode mode);
  const ArchiveEntries& Entries() const;
  const std::string& Error() const;

  const ArchiveEntry* Find(std::string_view name) const;
  // The member's bytes, as far as they can be read and decompressed; nothing when there is no such
  // member. The second form also tells what is missing.
  std::optional<std::vector<std::uint8_t>> ReadMember(std::string_view name);
  std::optional<MemberBytes> ReadMemberWithGaps(std::string_view name);
  // Adds the member or replaces its content. False, with the archive unchanged, when the name is
  // empty or too long, the archive is read-only, compression fails or the file cannot be written.
  bool WriteMember(std::string_view name, std::span<const std::uint8_t> data);
  bool RemoveMember(std::string_view name);
  // False when the archive could not be changed.
  bool RemoveMembersIf(const std::function<bool(std::string_view)>& isRemoved);
  // Names are compared without regard to case. False when the archive could not be changed.
  bool RemoveMembersWithPrefix(std::string_view prefix);

  // A group of changes that is done wholly or not at all, whatever happens to the program
  // meanwhile. It is kept in memory until CommitSave; reading sees it at once. A change outside a
  // group is a group of its own, which waits several times for the disk. Groups do not nest:
  // BeginSave within one fails.
  bool BeginSave();
  // Makes the group permanent. False, with everything rolled back, when the bytes could not be made
  // safe.
  bool CommitSave();
  void RollbackSave();

  // Another program may have changed the file meanwhile. Nothing is written into such a file: every
  // change fails until Reopen.
  ArchiveOnDisk OnDisk() const;
  // Takes on the file as it is now, or puts it back where it is gone. False, with the file as it
  // is, when it cannot be read as an archive.
  bool Reopen();

  // From now on the file is kept as it is on disk, as BackupName, before the first change that this
  // run of the program makes to it; without that no change begins.
  void BackUpFirst(BackupKind kind);
  // Makes that backup now; the file of the backup is whole at any moment. True without doing
  // anything when this state is kept already.
  bool BackUp();
  // Lets changes begin without the backup, because the user said so.
  void WaiveBackup();
  // The backup's path: `<file>.bak` or `<file>.damaged.bak`.
  std::string BackupName() const;
  // The name of a backup that was made since this was last asked, else an empty text.
  std::string TakeNewBackup();
  // The name of a journal beside the archive that belongs to another state of it, or an empty text.
  // Nothing is saved as long as it is there.
  std::string StrayJournal() const;
  // Renames that journal, which stays beside the archive.
  bool SetStrayJournalAside();

  // Compacts the file now and closes it. False as below.
  bool Compact();
  // Compacts the file if its directory has changed (by a new file and a rename), then closes it.
  // False when compacting failed; the archive on disk is then whole, but not compact.
  bool Close();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

// The archives that are open at a time, in the order in which they were opened.
class ArchiveList {
 public:
  // Opens an archive and appends it. Null, with nothing appended and the reason in `error`, when
  // opening fails.
  Archive* OpenArchive(std::string_view path, bool writable, std::string* error = nullptr);
  // Creates an archive in mode 1 that is open for writing.
  Archive* CreateArchive(std::string_view path);
  // The same, created aside (Archive::CreateAside). Null, with the reason in `error`, when it
  // fails.
  Archive* CreateArchiveAside(std::string_view path, std::string& error);
  // Closes (and compacts) the first archive with that path, compared without regard to case.
  bool CloseArchive(std::string_view path);
  // The most recently opened archive that holds the name.
  Archive* FindHolding(std::string_view name, bool writableOnly) const;
  // The most recently opened archive, or null.
  Archive* Last() const;
  // The most recent of the archives that were opened for writing, or null. Null as well when that
  // one is write-protected, because what is meant for it belongs into no other.
  Archive* LastWritable() const;
  // What the user is told where LastWritable is null.
  std::string ReasonNotWritable() const;
  // Forgets all archives without compacting them.
  void Clear();
  std::size_t Count() const { return archives_.size(); }
  Archive* At(std::size_t index) const { return archives_[index].get(); }

  // Files whose state before this run of the program is kept, or is not to be, whoever opened them.
  std::set<std::filesystem::path> backedUp;

 private:
  Archive* LastForWriting() const;

  std::vector<std::unique_ptr<Archive>> archives_;
};

extern ArchiveList archives;

}  // namespace mw
