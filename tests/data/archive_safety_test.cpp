// What keeps a level safe while it is open: the state before the first save stays as a backup, what
// a save wrote is read back, and a file that another program has changed is not written into.
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "core/hooks.h"
#include "data/archive.h"
#include "platform/file.h"
#include "support/archive_bytes.h"
#include "support/each_change.h"
#include "support/sandbox.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
constexpr const char* kLevel = "now/level.vra";
constexpr const char* kBackup = "now/level.vra.bak";
constexpr const char* kDamagedBackup = "now/level.vra.damaged.bak";

class ArchiveSafety : public SandboxTest {
 protected:
  ArchiveSafety() {
    fs::create_directory("now");
    archive.Create(kLevel);
    archive.SetMode(StorageMode::Compressed);
    archive.WriteMember("heights", NoiseBytes(40000, 1));
    archive.Close();
    oldBytes = ReadBytes(kLevel);
    EXPECT_TRUE(archive.Open(kLevel, true));
  }

  // A program that asks for no claim adds a member; true when it could.
  static bool AddMember(const std::string& member) {
    fs::copy_file(kLevel, "now/copy", fs::copy_options::overwrite_existing);
    Archive other;
    const bool added = other.Open("now/copy", true) &&
                       other.WriteMember(member, NoiseBytes(70, 7)) && other.Close();
    WriteBytes(kLevel, ReadBytes("now/copy"));
    return added;
  }
  // Another program writes a file of its own over the archive, as a copy or a download does.
  static void ReplaceBy(const Bytes& bytes) {
    WriteBytes("now/other", bytes);
    fs::rename("now/other", kLevel);
  }
  void ExpectError(const char* part) {
    EXPECT_NE(archive.Error().find(part), std::string::npos) << archive.Error();
  }
  // What whoever opens the archive now reads.
  static std::optional<Bytes> OnDisk(const char* member) {
    Archive other;
    EXPECT_TRUE(other.Open(kLevel, false)) << other.Error();
    return other.ReadMember(member);
  }

  Archive archive;
  Bytes oldBytes;
};

TEST_F(ArchiveSafety, TheStateBeforeTheFirstSaveStaysAsABackup) {
  WriteBytes(kBackup, TextBytes("of an earlier day"));
  for (const std::uint32_t save : {1u, 2u, 3u}) {
    ASSERT_TRUE(archive.BackUp()) << archive.Error();
    EXPECT_EQ(ReadBytes(kBackup), oldBytes);
    ASSERT_TRUE(archive.WriteMember("heights", NoiseBytes(40000, save)));
  }
  ASSERT_TRUE(archive.Close() && archive.Open(kLevel, true) && archive.BackUp());
  EXPECT_EQ(ReadBytes(kBackup), oldBytes) << "opening it again is no new session";
}

TEST_F(ArchiveSafety, ABackupThatCannotBeMadeLeavesTheOldOne) {
  const Bytes earlier = NoiseBytes(100, 4);
  for (const FaultKind kind : kFailures) {
    bool made = false;
    EachChange(3, [&](std::size_t change) {
      WriteBytes(kBackup, earlier);
      const bool hit = HitWhile(kind, change, [&] { made = archive.BackUp(); });
      EXPECT_NE(made, hit);
      EXPECT_EQ(ReadBytes(kBackup), made ? oldBytes : earlier);
      EXPECT_EQ(ReadBytes(kLevel), oldBytes);
      return hit && change < 3;  // what is left to do then needs no room
    });
    if (made) break;
  }
}

// The disk loses a write of a save without a word; which one is tried in turn.
TEST_F(ArchiveSafety, ASaveThatDoesNotReadBackAsWrittenIsUndone) {
  EachChange(5, [&](std::size_t lost) {  // journal, directory and both members are read back
    bool saved = false;
    const bool hit = HitWhile(FaultKind::Short, lost, [&] {
      saved = archive.BeginSave() && archive.WriteMember("heights", NoiseBytes(40000, 5)) &&
              archive.WriteMember("added", NoiseBytes(900, 6)) && archive.CommitSave();
    });
    EXPECT_EQ(saved, !hit);
    EXPECT_TRUE(saved || !archive.Error().empty());
    EXPECT_EQ(ReadBytes(kLevel) == oldBytes, !saved);
    EXPECT_EQ(archive.ReadMember("heights"), NoiseBytes(40000, saved ? 5 : 1));
    EXPECT_EQ(archive.StrayJournal(), "");
    return hit;
  });
}

TEST_F(ArchiveSafety, NothingIsWrittenIntoAFileThatAnotherProgramChanged) {
  ASSERT_TRUE(archive.WriteMember("heights", NoiseBytes(30, 2)));  // would be compacted
  ASSERT_TRUE(AddMember("theirs"));
  const Bytes theirs = ReadBytes(kLevel);
  EXPECT_EQ(archive.OnDisk(), ArchiveOnDisk::Changed);
  EXPECT_FALSE(archive.WriteMember("ours", {}));
  ExpectError("level.vra was changed");
  EXPECT_FALSE(archive.BackUp()) << "the file that is open is not the one that is there";
  EXPECT_FALSE(archive.Close()) << "compacting would replace it";
  EXPECT_EQ(ReadBytes(kLevel), theirs);
}

TEST_F(ArchiveSafety, AChangeInPlaceDuringASaveStopsIt) {
  ASSERT_TRUE(archive.BeginSave() && archive.WriteMember("heights", NoiseBytes(30, 2)));
  Bytes theirs = oldBytes;
  theirs.back() ^= 1;
  theirs.push_back(0);
  WriteBytes(kLevel, theirs);
  EXPECT_FALSE(archive.Reopen()) << "not in the middle of a save";
  EXPECT_FALSE(archive.CommitSave());
  EXPECT_EQ(ReadBytes(kLevel), theirs);
}

TEST_F(ArchiveSafety, TheChangedFileIsTakenOnWithWhatTheOtherProgramAdded) {
  ASSERT_TRUE(AddMember("theirs"));
  ASSERT_TRUE(archive.Reopen()) << archive.Error();
  EXPECT_EQ(archive.OnDisk(), ArchiveOnDisk::AsLeft);
  ASSERT_TRUE(archive.WriteMember("ours", NoiseBytes(20, 8)) && archive.Close());
  EXPECT_EQ(OnDisk("theirs"), NoiseBytes(70, 7));
  EXPECT_EQ(OnDisk("ours"), NoiseBytes(20, 8));
}

TEST_F(ArchiveSafety, AFileThatIsNoArchiveAnyMoreIsLeftAlone) {
  const Bytes something = TextBytes("a picture of a cat");
  ReplaceBy(something);
  EXPECT_FALSE(archive.Reopen() || archive.WriteMember("ours", {}));
  EXPECT_FALSE(archive.Error().empty());
  EXPECT_EQ(ReadBytes(kLevel), something);
  fs::remove(kLevel);
  EXPECT_TRUE(archive.Reopen()) << "once it is gone, what was open takes its place again";
  EXPECT_EQ(ReadBytes(kLevel), oldBytes);
}

TEST_F(ArchiveSafety, AFileThatWasMovedAwayIsBroughtBackAndTheMovedOneKeepsItsState) {
  fs::rename(kLevel, "now/moved.vra");
  EXPECT_EQ(archive.OnDisk(), ArchiveOnDisk::Gone);
  EXPECT_FALSE(archive.WriteMember("ours", {})) << "not into a file that nobody looks for";
  ASSERT_TRUE(archive.Reopen() && archive.WriteMember("ours", NoiseBytes(20, 8)))
      << archive.Error();
  EXPECT_EQ(ReadBytes("now/moved.vra"), oldBytes);
  EXPECT_EQ(OnDisk("heights"), NoiseBytes(40000, 1));
  EXPECT_EQ(OnDisk("ours"), NoiseBytes(20, 8));
}

TEST_F(ArchiveSafety, ASecondEditorCanOnlyLookUntilTheFirstIsDone) {
  Archive second;
  ASSERT_TRUE(second.Open(kLevel, true)) << second.Error();
  EXPECT_FALSE(second.Writable());
  EXPECT_EQ(second.WriteProtection(), "Another Mapwright has it open");
  EXPECT_EQ(second.ReadMember("heights"), NoiseBytes(40000, 1));
  EXPECT_FALSE(second.WriteMember("theirs", {}));
  EXPECT_FALSE(second.Create(kLevel)) << "not even anew";
  ASSERT_TRUE(second.Open(kLevel, true));

  ASSERT_TRUE(archive.WriteMember("heights", NoiseBytes(30, 2)));
  EXPECT_FALSE(second.LiftWriteProtection());
  ASSERT_TRUE(archive.Close()) << "which puts a compacted file in its place";
  ASSERT_TRUE(second.LiftWriteProtection()) << second.Error();
  EXPECT_EQ(second.OnDisk(), ArchiveOnDisk::Changed);
  EXPECT_FALSE(second.WriteMember("heights", {})) << "not before the change is taken on";
  ASSERT_TRUE(second.Reopen() && second.WriteMember("theirs", NoiseBytes(9, 9)));
  ASSERT_TRUE(archive.Open(kLevel, true));
  EXPECT_FALSE(archive.Writable()) << "the claim has moved with the file that was taken on";
  EXPECT_EQ(archive.ReadMember("heights"), NoiseBytes(30, 2));
}

TEST_F(ArchiveSafety, TheClaimFollowsAFileThatTakesTheArchivesPlace) {
  const auto isClaimed = [] {
    Archive second;
    return second.Open(kLevel, true) && !second.Writable();
  };
  fs::remove(kLevel);
  ASSERT_TRUE(archive.Reopen());
  EXPECT_TRUE(isClaimed()) << "brought back";
  ReplaceBy(oldBytes);
  ASSERT_TRUE(archive.Reopen());
  EXPECT_TRUE(isClaimed()) << "taken on";
  Archive created;
  EXPECT_TRUE(created.CreateAside(kLevel));
  EXPECT_FALSE(created.PutInPlace()) << "it is open in another editor";
  EXPECT_EQ(created.Error(), "Another Mapwright has it open");
  EXPECT_FALSE(Archive().CreateAside(kLevel)) << "another editor is making one";
  ASSERT_TRUE(archive.Close() && created.PutInPlace()) << created.Error();
  EXPECT_TRUE(isClaimed()) << "newly made";
}

TEST_F(ArchiveSafety, AnotherEditorsSaveIsNotUndone) {
  for (const bool writable : {false, true}) {
    bool looked = false;
    hooks.diskFault = [&](const DiskChange& change) -> std::optional<DiskFault> {
      if (change.kind != DiskChange::Kind::Remove) return std::nullopt;
      // All is written, the journal is still there.
      const Bytes underWay = ReadBytes(kLevel), journal = ReadBytes("now/level.vra-journal");
      looked = !journal.empty();
      Archive second;
      EXPECT_FALSE(second.Open(kLevel, writable));
      EXPECT_EQ(second.Error(), "Another Mapwright is just saving it");
      EXPECT_EQ(ReadBytes(kLevel), underWay);
      EXPECT_EQ(ReadBytes("now/level.vra-journal"), journal);
      return std::nullopt;
    };
    EXPECT_TRUE(archive.WriteMember("heights", NoiseBytes(40000, writable ? 3 : 2)));
    hooks.diskFault = nullptr;
    EXPECT_TRUE(looked);
  }
}

// Takes from this thread the right to write what the file's permissions forbid, which root has.
class PermissionsCount {
 public:
  PermissionsCount() {
    syscall(SYS_capget, &header_, before_);
    __user_cap_data_struct without[2] = {before_[0], before_[1]};
    without[0].effective &= ~(1u << CAP_DAC_OVERRIDE);
    syscall(SYS_capset, &header_, without);
  }
  ~PermissionsCount() { syscall(SYS_capset, &header_, before_); }

 private:
  __user_cap_header_struct header_{_LINUX_CAPABILITY_VERSION_3, 0};
  __user_cap_data_struct before_[2] = {};
};

TEST_F(ArchiveSafety, AWriteProtectedFileIsOpenForLookingUntilItCanBeWritten) {
  const PermissionsCount guard;
  archive.Close();
  fs::permissions(kLevel, fs::perms::owner_read);
  ASSERT_TRUE(archive.Open(kLevel, true)) << archive.Error();
  EXPECT_EQ(archive.WriteProtection(), "Permission denied");
  EXPECT_EQ(archive.ReadMember("heights"), NoiseBytes(40000, 1));
  EXPECT_FALSE(archive.LiftWriteProtection());
  fs::permissions(kLevel, fs::perms::owner_all);
  ASSERT_TRUE(archive.LiftWriteProtection()) << archive.Error();
  EXPECT_TRUE(archive.WriteMember("heights", {})) << archive.Error();
}

TEST_F(ArchiveSafety, TheBackupComesBeforeTheFirstChangeOfAnyKind) {
  const Bytes earlier = TextBytes("of an earlier day");
  WriteBytes(kBackup, earlier);
  archive.BackUpFirst(BackupKind::Damaged);
  fs::create_directory(kDamagedBackup);  // nothing can take its place
  EXPECT_FALSE(archive.RemoveMember("heights"));
  ExpectError("level.vra.damaged.bak, could not be made");
  fs::remove(kDamagedBackup);
  ASSERT_TRUE(archive.RemoveMember("heights")) << archive.Error();
  EXPECT_EQ(archive.TakeNewBackup(), "level.vra.damaged.bak");
  EXPECT_EQ(archive.TakeNewBackup(), "");
  EXPECT_EQ(ReadBytes(kDamagedBackup), oldBytes);
  EXPECT_EQ(ReadBytes(kBackup), earlier) << "that of a level that could all be read";
}

TEST_F(ArchiveSafety, AStrayJournalIsSetAsideOverNothing) {
  WriteBytes("now/level.vra-journal", TextBytes("of another state"));
  WriteBytes("now/level.vra-journal.old", TextBytes("kept before"));
  EXPECT_EQ(archive.StrayJournal(), "level.vra-journal");
  EXPECT_FALSE(archive.WriteMember("ours", {}));
  ExpectError("level.vra-journal is in the way");
  ASSERT_TRUE(archive.SetStrayJournalAside()) << archive.Error();
  EXPECT_EQ(ReadBytes("now/level.vra-journal.old"), TextBytes("kept before"));
  EXPECT_EQ(ReadBytes("now/level.vra-journal.old2"), TextBytes("of another state"));
  EXPECT_TRUE(archive.WriteMember("ours", {}));
}

}  // namespace
}  // namespace mw
