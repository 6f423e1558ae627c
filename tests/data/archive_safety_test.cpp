// What keeps a level safe while it is open: the state before the first save stays as a backup, what
// a save wrote is read back, and a file that another program has changed is not written into.
#include <gtest/gtest.h>

#include "data/archive.h"
#include "support/archive_bytes.h"
#include "support/disk_faults.h"
#include "support/sandbox.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
constexpr const char* kLevel = "now/level.vra";
constexpr const char* kBackup = "now/level.vra.bak";

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

  static bool AddMember(const std::string& member) {
    Archive other;
    return other.Open(kLevel, true) && other.WriteMember(member, NoiseBytes(70, 7)) &&
           other.Close();
  }

  // Another program writes a file of its own over the archive, as a copy or a download does.
  static void ReplaceBy(const Bytes& bytes) {
    WriteBytes("now/other", bytes);
    fs::rename("now/other", kLevel);
  }

  Archive archive;
  Bytes oldBytes;
};

TEST_F(ArchiveSafety, TheStateBeforeTheFirstSaveStaysAsABackup) {
  WriteBytes(kBackup, TextBytes("of an earlier day"));
  ASSERT_TRUE(archive.BackUp()) << archive.Error();
  EXPECT_EQ(ReadBytes(kBackup), oldBytes);
  for (const std::uint32_t save : {2u, 3u}) {
    ASSERT_TRUE(archive.BackUp());
    ASSERT_TRUE(archive.WriteMember("heights", NoiseBytes(40000, save)));
    EXPECT_EQ(ReadBytes(kBackup), oldBytes);
  }
  ASSERT_TRUE(archive.Close());
  ASSERT_TRUE(archive.Open(kLevel, true));
  ASSERT_TRUE(archive.BackUp());
  EXPECT_EQ(ReadBytes(kBackup), oldBytes) << "opening it again is no new session";
}

TEST_F(ArchiveSafety, ABackupThatCannotBeMadeLeavesTheOldOne) {
  const Bytes earlier = NoiseBytes(100, 4);
  for (const FaultKind kind : {FaultKind::Stop, FaultKind::Fail, FaultKind::Full}) {
    for (std::size_t change = 0; change < 4; ++change) {
      WriteBytes(kBackup, earlier);
      {
        const DiskFaults faults(kind, change);
        const bool made = archive.BackUp();
        EXPECT_NE(made, faults.Hit());
        EXPECT_EQ(ReadBytes(kBackup), made ? oldBytes : earlier);
        if (made) return;  // what is left to do needs no room
      }
      EXPECT_EQ(ReadBytes(kLevel), oldBytes);
    }
  }
}

// The disk loses a write of a save without a word; which one is tried in turn.
TEST_F(ArchiveSafety, ASaveThatDoesNotReadBackAsWrittenIsUndone) {
  for (std::size_t lost = 0;; ++lost) {
    SCOPED_TRACE("write " + std::to_string(lost));
    std::size_t writes = 0;
    diskFaultPlan = [&](const DiskChange& change) -> std::optional<DiskFault> {
      if (change.kind != DiskChange::Kind::Write || writes++ != lost) return std::nullopt;
      return DiskFault{0, change.bytes.size() / 2};
    };
    const bool saved = archive.BeginSave() &&
                       archive.WriteMember("heights", NoiseBytes(40000, 5)) &&
                       archive.WriteMember("added", NoiseBytes(900, 6)) && archive.CommitSave();
    diskFaultPlan = nullptr;
    if (saved) {
      EXPECT_GT(lost, 3u) << "journal, directory and both members are read back";
      break;
    }
    EXPECT_FALSE(archive.Error().empty());
    EXPECT_EQ(ReadBytes(kLevel), oldBytes);
    EXPECT_EQ(archive.ReadMember("heights"), NoiseBytes(40000, 1));
    EXPECT_EQ(archive.StrayJournal(), "");
  }
  EXPECT_EQ(archive.ReadMember("heights"), NoiseBytes(40000, 5));
}

TEST_F(ArchiveSafety, NothingIsWrittenIntoAFileThatAnotherProgramChanged) {
  ASSERT_TRUE(archive.WriteMember("heights", NoiseBytes(30, 2)));  // would be compacted
  ASSERT_TRUE(AddMember("theirs"));
  const Bytes theirs = ReadBytes(kLevel);
  EXPECT_EQ(archive.OnDisk(), ArchiveOnDisk::Changed);
  EXPECT_FALSE(archive.WriteMember("ours", {}));
  EXPECT_NE(archive.Error().find("level.vra was changed"), std::string::npos) << archive.Error();
  EXPECT_FALSE(archive.BackUp()) << "the file that is open is not the one that is there";
  EXPECT_FALSE(archive.Close()) << "compacting would replace it";
  EXPECT_EQ(ReadBytes(kLevel), theirs);
}

TEST_F(ArchiveSafety, AChangeInPlaceDuringASaveStopsIt) {
  ASSERT_TRUE(archive.BeginSave());
  ASSERT_TRUE(archive.WriteMember("heights", NoiseBytes(30, 2)));
  Bytes theirs = oldBytes;
  theirs.back() ^= 1;
  theirs.push_back(0);
  WriteBytes(kLevel, theirs);
  EXPECT_FALSE(archive.CommitSave());
  EXPECT_EQ(ReadBytes(kLevel), theirs);
}

TEST_F(ArchiveSafety, TheChangedFileIsTakenOnWithWhatTheOtherProgramAdded) {
  ASSERT_TRUE(AddMember("theirs"));
  ASSERT_TRUE(archive.Reopen()) << archive.Error();
  EXPECT_EQ(archive.OnDisk(), ArchiveOnDisk::AsLeft);
  ASSERT_TRUE(archive.WriteMember("ours", NoiseBytes(20, 8)));
  ASSERT_TRUE(archive.Close());
  ASSERT_TRUE(archive.Open(kLevel, false));
  EXPECT_EQ(archive.ReadMember("theirs"), NoiseBytes(70, 7));
  EXPECT_EQ(archive.ReadMember("ours"), NoiseBytes(20, 8));
}

TEST_F(ArchiveSafety, AFileThatIsNoArchiveAnyMoreIsLeftAlone) {
  const Bytes something = TextBytes("a picture of a cat");
  ReplaceBy(something);
  EXPECT_FALSE(archive.Reopen());
  EXPECT_FALSE(archive.Error().empty());
  EXPECT_FALSE(archive.WriteMember("ours", {}));
  EXPECT_EQ(ReadBytes(kLevel), something);
  fs::remove(kLevel);
  EXPECT_TRUE(archive.Reopen()) << "once it is gone, what was open takes its place again";
  EXPECT_EQ(ReadBytes(kLevel), oldBytes);
}

TEST_F(ArchiveSafety, AFileThatWasMovedAwayIsBroughtBackAndTheMovedOneKeepsItsState) {
  fs::rename(kLevel, "now/moved.vra");
  EXPECT_EQ(archive.OnDisk(), ArchiveOnDisk::Gone);
  EXPECT_FALSE(archive.WriteMember("ours", {})) << "not into a file that nobody looks for";
  ASSERT_TRUE(archive.Reopen()) << archive.Error();
  ASSERT_TRUE(archive.WriteMember("ours", NoiseBytes(20, 8)));
  EXPECT_EQ(ReadBytes("now/moved.vra"), oldBytes);
  Archive back;
  ASSERT_TRUE(back.Open(kLevel, false));
  EXPECT_EQ(back.ReadMember("heights"), NoiseBytes(40000, 1));
  EXPECT_EQ(back.ReadMember("ours"), NoiseBytes(20, 8));
}

TEST_F(ArchiveSafety, AStrayJournalIsSetAsideOverNothing) {
  WriteBytes("now/level.vra-journal", TextBytes("of another state"));
  WriteBytes("now/level.vra-journal.old", TextBytes("kept before"));
  EXPECT_EQ(archive.StrayJournal(), "level.vra-journal");
  EXPECT_FALSE(archive.WriteMember("ours", {}));
  EXPECT_NE(archive.Error().find("level.vra-journal is in the way"), std::string::npos);
  ASSERT_TRUE(archive.SetStrayJournalAside()) << archive.Error();
  EXPECT_EQ(ReadBytes("now/level.vra-journal.old"), TextBytes("kept before"));
  EXPECT_EQ(ReadBytes("now/level.vra-journal.old2"), TextBytes("of another state"));
  EXPECT_TRUE(archive.WriteMember("ours", {}));
}

}  // namespace
}  // namespace mw
