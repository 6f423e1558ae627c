// An archive takes the place of another: whatever change to the disk is the one at which the
// program stops, the change fails, the disk is full or the power is cut, the level is the old or
// the new one, whole.
#include <gtest/gtest.h>

#include "data/archive.h"
#include "support/archive_bytes.h"
#include "support/each_change.h"
#include "support/sandbox.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
constexpr const char* kLevel = "now/level.vra";
constexpr const char* kBackup = "now/level.vra.bak";
constexpr const char* kJournal = "now/level.vra-journal";

class ArchiveReplace : public SandboxTest {
 protected:
  ArchiveReplace() {
    fs::create_directory("old");
    Archive made;
    made.Create("old/level.vra");
    made.WriteMember("heights", NoiseBytes(5000, 1));
    made.Close();
    oldBytes = ReadBytes("old/level.vra");
    Restore();
  }
  static void Restore() {
    fs::remove_all("now");
    fs::copy("old", "now");
  }
  static bool ReplaceLevel(Archive& archive) {
    return archive.CreateAside(kLevel) && archive.BeginSave() &&
           archive.WriteMember("heights", NoiseBytes(9000, 2)) && archive.CommitSave() &&
           archive.PutInPlace();
  }
  void ExpectReplaced() {
    ASSERT_TRUE(ReplaceLevel(archive)) << archive.Error();
    EXPECT_TRUE(IsNew());
  }
  bool IsOld() const { return ReadBytes(kLevel) == oldBytes; }
  static bool IsNew() {
    Archive there;
    return there.Open(kLevel, true) && there.ReadMember("heights") == NoiseBytes(9000, 2);
  }
  static std::ptrdiff_t FileCount() { return std::distance(fs::directory_iterator("now"), {}); }

  Archive archive;
  Bytes oldBytes;
};

TEST_F(ArchiveReplace, TheOldLevelStaysUntilTheNewOneTakesItsPlace) {
  ASSERT_TRUE(archive.CreateAside(kLevel)) << archive.Error();
  ASSERT_TRUE(archive.WriteMember("heights", NoiseBytes(9000, 2)));
  EXPECT_TRUE(IsOld());
  ASSERT_TRUE(archive.PutInPlace()) << archive.Error();
  EXPECT_TRUE(archive.PutInPlace()) << "it has its place already";
  EXPECT_TRUE(IsNew());
  EXPECT_EQ(ReadBytes(kBackup), oldBytes);
  EXPECT_EQ(archive.TakeNewBackup(), "level.vra.bak");
  ASSERT_TRUE(archive.WriteMember("later", NoiseBytes(10, 3)));
  ASSERT_TRUE(archive.Close());
  EXPECT_TRUE(IsNew());
  EXPECT_EQ(FileCount(), 2) << "level and backup, no more";
}

TEST_F(ArchiveReplace, ANewLevelThatIsGivenUpLeavesNoTrace) {
  ASSERT_TRUE(archive.CreateAside(kLevel));
  ASSERT_TRUE(archive.BeginSave() && archive.WriteMember("heights", NoiseBytes(9000, 2)));
  EXPECT_FALSE(archive.PutInPlace()) << "in the middle of a save";
  ASSERT_TRUE(archive.CommitSave() && archive.Close());
  EXPECT_TRUE(IsOld());
  EXPECT_EQ(FileCount(), 1);
}

TEST_F(ArchiveReplace, ALevelThatDidNotExistGetsNoBackup) {
  fs::remove(kLevel);
  ExpectReplaced();
  EXPECT_FALSE(fs::exists(kBackup));
  EXPECT_EQ(archive.TakeNewBackup(), "");
}

TEST_F(ArchiveReplace, ADamagedLevelDoesNotReplaceTheBackupOfAWholeOne) {
  const Bytes damaged = TextBytes("not an archive");
  WriteBytes(kLevel, damaged);
  WriteBytes(kBackup, oldBytes);
  ExpectReplaced();
  EXPECT_EQ(ReadBytes(kBackup), oldBytes);
  EXPECT_EQ(ReadBytes("now/level.vra.damaged.bak"), damaged);
}

TEST_F(ArchiveReplace, WhatAKilledProgramLeftAsideIsReplaced) {
  WriteBytes("now/level.vra-new", NoiseBytes(300, 5));
  WriteBytes("now/level.vra-new-journal", NoiseBytes(300, 6));
  ExpectReplaced();
  EXPECT_FALSE(fs::exists("now/level.vra-new-journal"));
}

TEST_F(ArchiveReplace, AnInterruptedSaveIsPlayedBackIntoTheBackup) {
  for (std::size_t change = 0; IsOld(); ++change) {  // until some new bytes are in the file
    Restore();
    Archive stopped;
    ASSERT_TRUE(stopped.Open(kLevel, true));
    HitWhile(FaultKind::Stop, change, [&] { stopped.WriteMember("heights", NoiseBytes(5000, 7)); });
  }
  ASSERT_TRUE(fs::exists(kJournal));
  ExpectReplaced();
  EXPECT_EQ(ReadBytes(kBackup), oldBytes);
  EXPECT_FALSE(fs::exists(kJournal));
}

TEST_F(ArchiveReplace, AFileThatWouldBlockLaterSavesIsReportedBefore) {
  WriteBytes(kJournal, TextBytes("dear diary"));
  EXPECT_FALSE(ReplaceLevel(archive));
  EXPECT_NE(archive.Error().find("level.vra-journal is in the way"), std::string::npos);
  EXPECT_TRUE(IsOld());
}

TEST_F(ArchiveReplace, EveryChangeGoesWrong) {
  for (const FaultKind kind : kFailures) {
    EachChange(11, [&](std::size_t change) {
      Restore();
      Archive made, again;
      bool replaced = false;
      const bool hit = HitWhile(kind, change, [&] { replaced = ReplaceLevel(made); });
      const bool isNew = !IsOld();
      EXPECT_TRUE(isNew ? IsNew() && ReadBytes(kBackup) == oldBytes : !replaced);
      EXPECT_EQ(made.Error().empty(), replaced);
      made.Close();
      EXPECT_TRUE(kind == FaultKind::Stop || !fs::exists("now/level.vra-new"))
          << "a program that goes on cleans up behind itself";
      EXPECT_TRUE(isNew || ReplaceLevel(again)) << again.Error();
      return hit;
    });
  }
}

TEST_F(ArchiveReplace, ThePowerIsCut) {
  EachPowerCut("now", 11, [&](const auto& cut) {
    Restore();
    bool replaced = false;
    const bool hit = cut([&] {
      Archive made;
      replaced = ReplaceLevel(made);
    });
    const bool isNew = !IsOld();
    EXPECT_TRUE(!isNew || (IsNew() && ReadBytes(kBackup) == oldBytes));
    EXPECT_TRUE(isNew || !replaced || hit) << "a level that was complete is gone";
  });
}

}  // namespace
}  // namespace mw
