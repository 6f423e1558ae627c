// Saving is all or nothing: every single change that a save makes to the disk is the one at which
// the program stops, the change fails, the disk is full or the power is cut. Afterwards the archive
// is the old or the new one, byte for byte.
#include <functional>
#include <gtest/gtest.h>
#include <map>

#include "data/archive.h"
#include "support/archive_bytes.h"
#include "support/disk_faults.h"
#include "support/sandbox.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
constexpr std::uint32_t kPowerCuts = 4;  // at each change, with other sectors lost each time

using Contents = std::map<std::string, Bytes>;

Contents ContentsOf(Archive& archive) {
  Contents contents;
  for (const auto& [name, entry] : archive.Entries()) {
    contents[std::string(name)] = *archive.ReadMember(name);
  }
  return contents;
}

// A save that grows, shrinks, changes, adds and removes members.
bool SaveLevelChanges(Archive& archive) {
  return archive.BeginSave() && archive.WriteMember("grown", NoiseBytes(5000, 11)) &&
         archive.WriteMember("shrunk", NoiseBytes(100, 12)) &&
         archive.WriteMember("changed", NoiseBytes(4000, 13)) && archive.RemoveMember("gone") &&
         archive.WriteMember("added", NoiseBytes(7000, 14)) &&
         archive.WriteMember("grown", NoiseBytes(6000, 15)) && archive.CommitSave();
}

class ArchiveCrash : public SandboxTest {
 protected:
  ArchiveCrash() {
    fs::create_directory("old");
    Archive archive;
    archive.Create("old/level.vra");
    archive.SetMode(StorageMode::Compressed);
    archive.BeginSave();
    archive.WriteMember("kept", NoiseBytes(33000, 1));
    archive.WriteMember("grown", NoiseBytes(2000, 2));
    archive.WriteMember("shrunk", NoiseBytes(5000, 3));
    archive.WriteMember("gone", NoiseBytes(3000, 4));
    archive.WriteMember("changed", NoiseBytes(4000, 5));
    archive.CommitSave();
    archive.WriteMember("grown", NoiseBytes(3000, 6));  // leaves a hole
    oldContents = ContentsOf(archive);
    CopyFolder("old", "new");
    Archive changed;
    changed.Open("new/level.vra", true);
    SaveLevelChanges(changed);
    newContents = ContentsOf(changed);
    oldBytes = ReadBytes("old/level.vra");
    newBytes = ReadBytes("new/level.vra");
  }

  static void CopyFolder(const std::string& from, const std::string& to) {
    fs::remove_all(to);
    fs::copy(from, to);
  }

  // Opens the archive again and expects one of the two states whole, and nothing left beside it.
  void ExpectOldOrNew(const std::string& path, bool expectNew) {
    Archive archive;
    ASSERT_TRUE(archive.Open(path, true)) << archive.Error();
    EXPECT_EQ(ContentsOf(archive) == newContents, expectNew);
    EXPECT_EQ(ContentsOf(archive) == oldContents, !expectNew);
    EXPECT_EQ(ReadBytes(path), expectNew ? newBytes : oldBytes);
    EXPECT_FALSE(fs::exists(path + "-journal"));
    EXPECT_FALSE(fs::exists(path + "-compact"));
  }

  // Calls `attempt` with change 0, 1, 2 ... going wrong, each time on a fresh copy of the old
  // archive, until it answers that the save was over before that change.
  void AtEachChange(const std::function<bool(std::size_t change)>& attempt) {
    std::size_t change = 0;
    for (bool hit = true; hit && !HasFatalFailure(); ++change) {
      SCOPED_TRACE("change " + std::to_string(change));
      CopyFolder("old", "now");
      hit = attempt(change);
    }
    EXPECT_GT(change, 5u) << "the save made hardly any changes";
  }

  // Leaves in `target` an archive with some old and some new bytes, and its journal.
  void StopInTheMiddleOfASave(const std::string& target) {
    for (std::size_t change = 0; !fs::exists(target); ++change) {
      CopyFolder("old", "now");
      Archive archive;
      ASSERT_TRUE(archive.Open("now/level.vra", true));
      const DiskFaults faults(FaultKind::Stop, change);
      SaveLevelChanges(archive);
      const Bytes now = ReadBytes("now/level.vra");
      if (!std::equal(oldBytes.begin(), oldBytes.begin() + 156, now.begin()))
        CopyFolder("now", target);
    }
  }

  // The save fails, the program goes on: the open archive still holds the old level and saves it
  // later.
  void ExpectFailedSaveCanBeRepeated(FaultKind kind) {
    AtEachChange([&](std::size_t change) {
      Archive archive;
      EXPECT_TRUE(archive.Open("now/level.vra", true));
      bool saved = false, hit = false;
      {
        const DiskFaults faults(kind, change);
        saved = SaveLevelChanges(archive);
        hit = faults.Hit();
        EXPECT_EQ(ContentsOf(archive), saved ? newContents : oldContents);
        EXPECT_EQ(archive.Error().empty(), saved);
      }
      CopyFolder("now", "reopened");
      ExpectOldOrNew("reopened/level.vra", saved);
      EXPECT_TRUE(saved || SaveLevelChanges(archive)) << archive.Error();
      EXPECT_EQ(ContentsOf(archive), newContents);
      ExpectOldOrNew("now/level.vra", true);
      return hit;
    });
  }

  Contents oldContents, newContents;
  Bytes oldBytes, newBytes;
};

TEST_F(ArchiveCrash, ASaveThatTheProgramDoesNotSurvive) {
  ExpectFailedSaveCanBeRepeated(FaultKind::Stop);
}

TEST_F(ArchiveCrash, ASaveInWhichOneWriteFails) { ExpectFailedSaveCanBeRepeated(FaultKind::Fail); }

TEST_F(ArchiveCrash, ASaveOntoAFullDisk) { ExpectFailedSaveCanBeRepeated(FaultKind::Full); }

TEST_F(ArchiveCrash, ASaveDuringWhichThePowerIsCut) {
  for (std::uint32_t seed = 0; seed < kPowerCuts; ++seed) {
    AtEachChange([&](std::size_t change) {
      Archive archive;
      EXPECT_TRUE(archive.Open("now/level.vra", true));
      PowerCut cut("now", change, seed);
      const bool saved = SaveLevelChanges(archive);
      cut.Restart();
      Archive reopened;
      EXPECT_TRUE(reopened.Open("now/level.vra", true)) << reopened.Error();
      const bool isNew = ContentsOf(reopened) == newContents;
      EXPECT_TRUE(isNew || !saved || cut.Hit()) << "a save that was complete is gone";
      ExpectOldOrNew("now/level.vra", isNew);
      return cut.Hit();
    });
  }
}

TEST_F(ArchiveCrash, PuttingTheOldLevelBackIsInterrupted) {
  StopInTheMiddleOfASave("half");
  for (const FaultKind kind : {FaultKind::Stop, FaultKind::Fail, FaultKind::Full}) {
    bool hit = true;
    for (std::size_t change = 0; hit; ++change) {
      CopyFolder("half", "now");
      {
        const DiskFaults faults(kind, change);
        Archive archive;
        const bool open = archive.Open("now/level.vra", true);
        EXPECT_TRUE(!open || ContentsOf(archive) == oldContents);
        hit = faults.Hit();
      }
      ExpectOldOrNew("now/level.vra", false);
    }
  }
}

TEST_F(ArchiveCrash, ThePowerIsCutWhilePuttingTheOldLevelBack) {
  StopInTheMiddleOfASave("half");
  for (std::uint32_t seed = 0; seed < kPowerCuts; ++seed) {
    bool hit = true;
    for (std::size_t change = 0; hit; ++change) {
      CopyFolder("half", "now");
      PowerCut cut("now", change, seed);
      Archive archive;
      archive.Open("now/level.vra", true);
      hit = cut.Hit();
      cut.Restart();
      ExpectOldOrNew("now/level.vra", false);
    }
  }
}

TEST_F(ArchiveCrash, CompactingIsInterrupted) {
  constexpr std::size_t kSeveralBlocks = 4'700'000;  // and a piece of one
  {
    Archive archive;
    ASSERT_TRUE(archive.Open("old/level.vra", true));
    ASSERT_TRUE(archive.WriteMember("large", NoiseBytes(kSeveralBlocks, 8)));
  }
  CopyFolder("old", "compact");
  Archive compact;
  ASSERT_TRUE(compact.Open("compact/level.vra", true));
  const Bytes changed = NoiseBytes(5, 7);
  ASSERT_TRUE(compact.WriteMember("grown", changed));
  const Bytes dirtyBytes = ReadBytes("compact/level.vra");
  ASSERT_TRUE(compact.Close());
  const Bytes compactBytes = ReadBytes("compact/level.vra");
  ASSERT_LT(compactBytes.size(), dirtyBytes.size());

  for (const FaultKind kind :
       {FaultKind::Stop, FaultKind::Fail, FaultKind::Full, FaultKind::Short}) {
    AtEachChange([&](std::size_t change) {
      Archive archive;
      EXPECT_TRUE(archive.Open("now/level.vra", true));
      EXPECT_TRUE(archive.WriteMember("grown", changed));
      bool hit = false, closed = false;
      {
        const DiskFaults faults(kind, change);
        closed = archive.Close();
        hit = faults.Hit();
      }
      EXPECT_TRUE(ReadBytes("now/level.vra") == (closed ? compactBytes : dirtyBytes));
      EXPECT_FALSE(closed && kind == FaultKind::Short && hit) << "a lost write was not noticed";
      Archive reopened;
      EXPECT_TRUE(reopened.Open("now/level.vra", true));
      EXPECT_FALSE(fs::exists("now/level.vra-compact")) << "what was left aside is cleaned up";
      return hit;
    });
  }
}

TEST_F(ArchiveCrash, ThePowerIsCutDuringCompacting) {
  for (std::uint32_t seed = 0; seed < kPowerCuts; ++seed) {
    AtEachChange([&](std::size_t change) {
      Archive archive;
      EXPECT_TRUE(archive.Open("now/level.vra", true));
      EXPECT_TRUE(archive.RemoveMember("gone"));
      const Contents before = ContentsOf(archive);
      PowerCut cut("now", change, seed);
      archive.Close();
      cut.Restart();
      Archive reopened;
      EXPECT_TRUE(reopened.Open("now/level.vra", true)) << reopened.Error();
      EXPECT_EQ(ContentsOf(reopened), before);
      return cut.Hit();
    });
  }
}

TEST_F(ArchiveCrash, RollingBackPutsEverythingBackWithoutTouchingTheFile) {
  Archive archive;
  ASSERT_TRUE(archive.Open("old/level.vra", true));
  ASSERT_TRUE(archive.BeginSave());
  EXPECT_FALSE(archive.BeginSave()) << "groups do not nest";
  ASSERT_TRUE(archive.WriteMember("kept", NoiseBytes(40000, 20)));
  ASSERT_TRUE(archive.RemoveMembersWithPrefix("g"));
  EXPECT_EQ(archive.ReadMember("kept"), NoiseBytes(40000, 20)) << "the group sees its own changes";
  archive.RollbackSave();
  EXPECT_EQ(ContentsOf(archive), oldContents);
  EXPECT_FALSE(archive.Dirty());
  EXPECT_EQ(ReadBytes("old/level.vra"), oldBytes);
  EXPECT_FALSE(archive.CommitSave()) << "there is no save to complete any more";
}

TEST_F(ArchiveCrash, SavingTheSameAgainWritesNothing) {
  Archive archive;
  ASSERT_TRUE(archive.Open("new/level.vra", true));
  const DiskFaults faults(FaultKind::Stop, 0);
  EXPECT_TRUE(archive.BeginSave());
  for (const auto& [name, bytes] : newContents) EXPECT_TRUE(archive.WriteMember(name, bytes));
  EXPECT_TRUE(archive.CommitSave());
  EXPECT_FALSE(faults.Hit());
}

TEST_F(ArchiveCrash, AJournalIsNotPlayedBackOverAnotherStateOfTheArchive) {
  StopInTheMiddleOfASave("half");
  const Bytes journal = ReadBytes("half/level.vra-journal");
  CopyFolder("old", "backup");
  Archive archive;
  ASSERT_TRUE(archive.Open("backup/level.vra", true));
  ASSERT_TRUE(archive.WriteMember("other", NoiseBytes(9, 9)));
  const Bytes restored = ReadBytes("backup/level.vra");
  WriteBytes("backup/level.vra-journal", journal);

  ASSERT_TRUE(archive.Open("backup/level.vra", true));
  EXPECT_EQ(ReadBytes("backup/level.vra"), restored);
  EXPECT_FALSE(archive.WriteMember("more", {})) << "nothing is saved while that journal is there";
  EXPECT_NE(archive.Error().find("level.vra-journal"), std::string::npos) << archive.Error();
  EXPECT_EQ(ReadBytes("backup/level.vra-journal"), journal);
}

TEST_F(ArchiveCrash, AJournalThatIsTornOrSomethingElseChangesNothing) {
  StopInTheMiddleOfASave("half");
  const Bytes journal = ReadBytes("half/level.vra-journal");
  const Bytes halfSaved = ReadBytes("half/level.vra");
  for (std::size_t length = 0; length < journal.size(); length += length < 64 ? 1 : 997) {
    WriteBytes("old/level.vra-journal",
               {journal.begin(), journal.begin() + std::ptrdiff_t(length)});
    ExpectOldOrNew("old/level.vra", false);
  }
  for (std::size_t at = 8; at < journal.size(); at += at < 64 ? 1 : 997) {
    Bytes damaged = journal;
    damaged[at] ^= 0x40;
    WriteBytes("old/level.vra", halfSaved);
    WriteBytes("old/level.vra-journal", damaged);
    Archive archive;
    archive.Open("old/level.vra", true);
    EXPECT_EQ(ReadBytes("old/level.vra"), halfSaved)
        << "played back a damaged journal, byte " << at;
  }
  WriteBytes("old/level.vra", oldBytes);
  WriteBytes("old/level.vra-journal", TextBytes("dear diary"));
  Archive archive;
  EXPECT_TRUE(archive.Open("old/level.vra", true));
  EXPECT_EQ(ReadBytes("old/level.vra-journal"), TextBytes("dear diary"));
}

TEST_F(ArchiveCrash, AJournalIsPlayedBackForAReadOnlyArchiveToo) {
  StopInTheMiddleOfASave("linked");
  fs::create_symlink(folder / "linked" / "level.vra", folder / "link.vra");
  Archive archive;
  ASSERT_TRUE(archive.Open("link.vra", false)) << "the journal lies beside the file, not the link";
  EXPECT_EQ(ContentsOf(archive), oldContents);
  EXPECT_EQ(ReadBytes("linked/level.vra"), oldBytes);
}

}  // namespace
}  // namespace mw
