// An archive takes the place of another: whatever change to the disk is the one at which the
// program stops, the change fails, the disk is full or the power is cut, the level is the old or
// the new one, whole.
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
constexpr const char* kLevel = "now/level.vra";
constexpr const char* kBackup = "now/level.vra.bak";

class ArchiveReplace : public SandboxTest {
 protected:
  ArchiveReplace() {
    fs::create_directory("old");
    Archive archive;
    archive.Create("old/level.vra");
    archive.WriteMember("heights", NoiseBytes(5000, 1));
    archive.Close();
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

  bool IsOld() const { return ReadBytes(kLevel) == oldBytes; }
  static bool IsNew() {
    Archive archive;
    return archive.Open(kLevel, true) && archive.ReadMember("heights") == NoiseBytes(9000, 2);
  }

  // Calls `attempt` with change 0, 1, 2 ... going wrong, each time in front of the old archive,
  // until it answers that all was over before that change.
  void AtEachChange(const std::function<bool(std::size_t change)>& attempt) {
    std::size_t change = 0;
    for (bool hit = true; hit && !HasFatalFailure(); ++change) {
      SCOPED_TRACE("change " + std::to_string(change));
      Restore();
      hit = attempt(change);
    }
    EXPECT_GT(change, 10u) << "replacing made hardly any changes";
  }

  Bytes oldBytes;
};

TEST_F(ArchiveReplace, TheOldLevelStaysUntilTheNewOneTakesItsPlace) {
  Archive archive;
  ASSERT_TRUE(archive.CreateAside(kLevel)) << archive.Error();
  ASSERT_TRUE(archive.WriteMember("heights", NoiseBytes(9000, 2)));
  EXPECT_TRUE(IsOld());
  ASSERT_TRUE(archive.PutInPlace()) << archive.Error();
  EXPECT_TRUE(IsNew());
  EXPECT_EQ(ReadBytes(kBackup), oldBytes);
  ASSERT_TRUE(archive.WriteMember("later", NoiseBytes(10, 3)));
  ASSERT_TRUE(archive.Close());
  EXPECT_TRUE(IsNew());
  EXPECT_EQ(std::distance(fs::directory_iterator("now"), {}), 2) << "level and backup, no more";
}

TEST_F(ArchiveReplace, ANewLevelThatIsGivenUpLeavesNoTrace) {
  Archive archive;
  ASSERT_TRUE(archive.CreateAside(kLevel));
  ASSERT_TRUE(archive.WriteMember("heights", NoiseBytes(9000, 2)));
  ASSERT_TRUE(archive.Close());
  EXPECT_TRUE(IsOld());
  EXPECT_EQ(std::distance(fs::directory_iterator("now"), {}), 1);
}

TEST_F(ArchiveReplace, ALevelThatDidNotExistGetsNoBackup) {
  fs::remove(kLevel);
  Archive archive;
  ASSERT_TRUE(ReplaceLevel(archive)) << archive.Error();
  EXPECT_TRUE(IsNew());
  EXPECT_FALSE(fs::exists(kBackup));
}

TEST_F(ArchiveReplace, ADamagedLevelDoesNotReplaceTheBackupOfAWholeOne) {
  const Bytes damaged = TextBytes("not an archive");
  WriteBytes(kLevel, damaged);
  WriteBytes(kBackup, oldBytes);
  Archive archive;
  ASSERT_TRUE(ReplaceLevel(archive)) << archive.Error();
  EXPECT_EQ(ReadBytes(kBackup), oldBytes);
  EXPECT_EQ(ReadBytes("now/level.vra.damaged.bak"), damaged);
}

TEST_F(ArchiveReplace, WhatAKilledProgramLeftAsideIsReplaced) {
  WriteBytes("now/level.vra-new", NoiseBytes(300, 5));
  WriteBytes("now/level.vra-new-journal", NoiseBytes(300, 6));
  Archive archive;
  ASSERT_TRUE(ReplaceLevel(archive)) << archive.Error();
  EXPECT_TRUE(IsNew());
  EXPECT_FALSE(fs::exists("now/level.vra-new-journal"));
}

TEST_F(ArchiveReplace, AnInterruptedSaveIsPlayedBackIntoTheBackup) {
  std::size_t change = 0;
  while (IsOld()) {  // until the program stops with some new bytes in the file
    Restore();
    Archive archive;
    ASSERT_TRUE(archive.Open(kLevel, true));
    const DiskFaults faults(FaultKind::Stop, change++);
    archive.WriteMember("heights", NoiseBytes(5000, 7));
  }
  ASSERT_TRUE(fs::exists("now/level.vra-journal"));
  Archive archive;
  ASSERT_TRUE(ReplaceLevel(archive)) << archive.Error();
  EXPECT_EQ(ReadBytes(kBackup), oldBytes);
  EXPECT_FALSE(fs::exists("now/level.vra-journal"));
}

TEST_F(ArchiveReplace, AFileThatWouldBlockLaterSavesIsReportedBefore) {
  WriteBytes("now/level.vra-journal", TextBytes("dear diary"));
  Archive archive;
  EXPECT_FALSE(ReplaceLevel(archive));
  EXPECT_NE(archive.Error().find("level.vra-journal is in the way"), std::string::npos);
  EXPECT_TRUE(IsOld());
}

TEST_F(ArchiveReplace, EveryChangeGoesWrong) {
  for (const FaultKind kind : {FaultKind::Stop, FaultKind::Fail, FaultKind::Full}) {
    AtEachChange([&](std::size_t change) {
      Archive archive;
      bool replaced = false, hit = false;
      {
        const DiskFaults faults(kind, change);
        replaced = ReplaceLevel(archive);
        hit = faults.Hit();
      }
      const bool isNew = !IsOld();
      EXPECT_TRUE(!isNew || IsNew());
      EXPECT_TRUE(isNew || !replaced);
      EXPECT_EQ(archive.Error().empty(), replaced);
      EXPECT_TRUE(!isNew || ReadBytes(kBackup) == oldBytes);
      archive.Close();
      EXPECT_TRUE(kind == FaultKind::Stop || !fs::exists("now/level.vra-new"))
          << "a program that goes on cleans up behind itself";
      Archive again;
      EXPECT_TRUE(isNew || ReplaceLevel(again)) << again.Error();
      return hit;
    });
  }
}

TEST_F(ArchiveReplace, ThePowerIsCut) {
  for (std::uint32_t seed = 0; seed < kPowerCuts; ++seed) {
    AtEachChange([&](std::size_t change) {
      bool replaced = false, hit = false;
      {
        Archive archive;
        PowerCut cut("now", change, seed);
        replaced = ReplaceLevel(archive);
        hit = cut.Hit();
        cut.Restart();
      }
      const bool isNew = !IsOld();
      EXPECT_TRUE(!isNew || (IsNew() && ReadBytes(kBackup) == oldBytes));
      EXPECT_TRUE(isNew || !replaced || hit) << "a level that was complete is gone";
      return hit;
    });
  }
}

}  // namespace
}  // namespace mw
