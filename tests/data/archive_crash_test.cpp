// Saving is all or nothing: every single change that a save makes to the disk is the one at which
// the program stops, the change fails, the disk is full, loses what it was given or the power is
// cut. Afterwards the archive is the old or the new one, byte for byte.
#include <gtest/gtest.h>
#include <lzo/lzoconf.h>
#include <map>

#include "core/hooks.h"
#include "core/text.h"
#include "data/archive.h"
#include "support/archive_bytes.h"
#include "support/each_change.h"
#include "support/golden.h"
#include "support/sandbox.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
constexpr const char* kLevel = "now/level.vra";
constexpr const char* kJournal = "now/level.vra-journal";
constexpr const char* kBackup = "now/level.vra.bak";
constexpr FaultKind kAllFaults[] = {FaultKind::Stop, FaultKind::Fail, FaultKind::Full,
                                    FaultKind::Short};
constexpr std::size_t kFewest = 6;  // changes that a save makes

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

void CopyFolder(const std::string& from, const std::string& to) {
  fs::remove_all(to);
  fs::copy(from, to);
}

class ArchiveCrash : public SandboxTest {
 protected:
  ArchiveCrash() {
    fs::create_directory("old");
    Archive archive;
    archive.Create("old/level.vra");
    archive.SetMode(StorageMode::Compressed);
    archive.BeginSave();
    const std::pair<const char*, std::size_t> members[] = {
        {"changed", 4000}, {"kept", 33000}, {"grown", 2000}, {"shrunk", 5000}, {"gone", 3000}};
    for (const auto& [name, size] : members) archive.WriteMember(name, NoiseBytes(size, 1));
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

  // Opens the archive again and expects one of the two states whole, and nothing left beside it.
  void ExpectOldOrNew(const std::string& path, bool expectNew) {
    Archive archive;
    ASSERT_TRUE(archive.Open(path, true)) << archive.Error();
    EXPECT_EQ(ContentsOf(archive), expectNew ? newContents : oldContents);
    EXPECT_EQ(ReadBytes(path), expectNew ? newBytes : oldBytes);
    EXPECT_FALSE(fs::exists(path + "-journal") || fs::exists(path + "-compact"));
  }

  // Leaves in `target` an archive with some old and some new bytes, and its journal.
  void StopInTheMiddleOfASave(const std::string& target) {
    for (std::size_t change = 0; !fs::exists(target); ++change) {
      CopyFolder("old", "now");
      Archive archive;
      ASSERT_TRUE(archive.Open(kLevel, true));
      const DiskFaults faults(FaultKind::Stop, change);
      SaveLevelChanges(archive);
      const Bytes now = ReadBytes(kLevel);
      if (!std::equal(oldBytes.begin(), oldBytes.begin() + kArchiveHeader, now.begin()))
        CopyFolder("now", target);
    }
  }

  Contents oldContents, newContents;
  Bytes oldBytes, newBytes;
};

// The program goes on: the open archive still holds the old level and saves it later. The backup is
// the one of an earlier day until it is this one, and no byte of the level changes before.
TEST_F(ArchiveCrash, ASaveThatFailsAtAnyChangeCanBeRepeated) {
  const Bytes earlier = NoiseBytes(100, 4);
  for (const FaultKind kind : kAllFaults) {
    EachChange(kFewest, [&](std::size_t change) {
      CopyFolder("old", "now");
      WriteBytes(kBackup, earlier);
      archives.backedUp.clear();
      Archive archive;
      EXPECT_TRUE(archive.Open(kLevel, true));
      archive.BackUpFirst(BackupKind::Whole);
      bool saved = false;
      const bool hit = HitWhile(kind, change, [&] {
        saved = SaveLevelChanges(archive);
        EXPECT_EQ(ContentsOf(archive), saved ? newContents : oldContents);
        EXPECT_EQ(archive.Error().empty(), saved);
        EXPECT_TRUE(ReadBytes(kBackup) == oldBytes ||
                    (ReadBytes(kBackup) == earlier && ReadBytes(kLevel) == oldBytes));
      });
      EXPECT_FALSE(saved && hit && kind == FaultKind::Short) << "a lost write was not noticed";
      CopyFolder("now", "reopened");
      ExpectOldOrNew("reopened/level.vra", saved);
      EXPECT_TRUE(saved || SaveLevelChanges(archive)) << archive.Error();
      EXPECT_EQ(ContentsOf(archive), newContents);
      ExpectOldOrNew(kLevel, true);
      EXPECT_EQ(ReadBytes(kBackup), oldBytes);
      return hit;
    });
  }
}

TEST_F(ArchiveCrash, ASaveDuringWhichThePowerIsCut) {
  EachPowerCut("now", kFewest, [&](const auto& cut) {
    CopyFolder("old", "now");
    archives.backedUp.clear();
    Archive archive;
    EXPECT_TRUE(archive.Open(kLevel, true));
    archive.BackUpFirst(BackupKind::Whole);
    bool saved = false;
    const bool hit = cut([&] { saved = SaveLevelChanges(archive); });
    EXPECT_TRUE(ReadBytes(kLevel) == oldBytes || ReadBytes(kBackup) == oldBytes);
    Archive reopened;
    EXPECT_TRUE(reopened.Open(kLevel, true)) << reopened.Error();
    const bool isNew = ContentsOf(reopened) == newContents;
    EXPECT_TRUE(isNew || !saved || hit) << "a save that was complete is gone";
    ExpectOldOrNew(kLevel, isNew);
  });
}

// A level that is made anew beside the old one takes its place.
TEST_F(ArchiveCrash, TheNewLevelTakesThePlaceOfTheOldOneWhole) {
  const Contents made = {{"heights", NoiseBytes(9000, 2)}};
  const auto replace = [&](Archive& archive) {
    return archive.CreateAside(kLevel) && archive.WriteMember("heights", made.at("heights")) &&
           archive.PutInPlace();
  };
  const auto isNew = [&] {
    if (ReadBytes(kLevel) == oldBytes) return false;
    Archive there;
    EXPECT_TRUE(there.Open(kLevel, true) && ContentsOf(there) == made) << there.Error();
    EXPECT_EQ(ReadBytes(kBackup), oldBytes);
    return true;
  };
  for (const FaultKind kind : kFailures) {
    EachChange(11, [&](std::size_t change) {
      CopyFolder("old", "now");
      Archive archive, again;
      bool replaced = false;
      const bool hit = HitWhile(kind, change, [&] { replaced = replace(archive); });
      EXPECT_TRUE(isNew() || !replaced);
      EXPECT_EQ(archive.Error().empty(), replaced);
      archive.Close();
      EXPECT_TRUE(kind == FaultKind::Stop || !fs::exists("now/level.vra-new"))
          << "a program that goes on cleans up behind itself";
      EXPECT_TRUE(isNew() || replace(again)) << again.Error();
      return hit;
    });
  }
  EachPowerCut("now", 11, [&](const auto& cut) {
    CopyFolder("old", "now");
    bool replaced = false;
    const bool hit = cut([&] {
      Archive archive;
      replaced = replace(archive);
    });
    EXPECT_TRUE(isNew() || !replaced || hit) << "a level that was complete is gone";
  });
  StopInTheMiddleOfASave("half");
  CopyFolder("half", "now");
  Archive archive;
  EXPECT_TRUE(replace(archive)) << archive.Error();
  EXPECT_TRUE(isNew()) << "and the interrupted save was undone in the backup";
  EXPECT_FALSE(fs::exists(kJournal));
}

TEST_F(ArchiveCrash, AnotherEditorsSaveIsNotUndone) {
  CopyFolder("old", "now");
  Archive archive;
  ASSERT_TRUE(archive.Open(kLevel, true));
  for (const bool writable : {false, true}) {
    bool looked = false;
    hooks.diskFault = [&](const DiskChange& change) -> std::optional<DiskFault> {
      if (change.kind != DiskChange::Kind::Remove) return std::nullopt;
      // All is written, the journal is still there.
      const Bytes underWay = ReadBytes(kLevel), journal = ReadBytes(kJournal);
      looked = !journal.empty();
      Archive second;
      EXPECT_FALSE(second.Open(kLevel, writable));
      EXPECT_EQ(second.Error(), "Another Mapwright is just saving it");
      EXPECT_EQ(ReadBytes(kLevel), underWay);
      EXPECT_EQ(ReadBytes(kJournal), journal);
      return std::nullopt;
    };
    EXPECT_TRUE(archive.WriteMember("kept", NoiseBytes(40000, writable ? 3 : 2)));
    hooks.diskFault = nullptr;
    EXPECT_TRUE(looked);
  }
}

// One golden file for all systems: what a program leaves on one of them, one on another takes up.
TEST_F(ArchiveCrash, WhatIsLeftHasTheSameBytesOnEverySystem) {
  std::string told, last;
  EachChange(kFewest, [&](std::size_t change) {
    CopyFolder("old", "now");
    Archive archive;
    EXPECT_TRUE(archive.Open(kLevel, true));
    const bool hit = HitWhile(FaultKind::Stop, change, [&] { SaveLevelChanges(archive); });
    std::string left = "left:\n";
    for (const char* path : {kLevel, kJournal}) {
      const Bytes bytes = fs::exists(path) ? ReadBytes(path) : Bytes{};
      left +=
          FormatText("  %s, %u bytes, checksum %08x\n", path, static_cast<unsigned>(bytes.size()),
                     lzo_crc32(0, bytes.data(), static_cast<lzo_uint>(bytes.size())));
    }
    if (left != last) told += left;
    last = left;
    return hit;
  });
  ExpectGolden("data/left_by_a_crash.txt", told);
}

TEST_F(ArchiveCrash, PuttingTheOldLevelBackIsInterrupted) {
  StopInTheMiddleOfASave("half");
  const auto open = [&] {
    Archive archive;
    const bool isOpen = archive.Open(kLevel, true);
    EXPECT_TRUE(!isOpen || ContentsOf(archive) == oldContents);
  };
  for (const FaultKind kind : kFailures) {
    EachChange(3, [&](std::size_t change) {
      CopyFolder("half", "now");
      const bool hit = HitWhile(kind, change, open);
      ExpectOldOrNew(kLevel, false);
      return hit;
    });
  }
  EachPowerCut("now", 3, [&](const auto& cut) {
    CopyFolder("half", "now");
    cut(open);
    ExpectOldOrNew(kLevel, false);
  });
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

  for (const FaultKind kind : kAllFaults) {
    EachChange(kFewest, [&](std::size_t change) {
      CopyFolder("old", "now");
      Archive archive;
      EXPECT_TRUE(archive.Open(kLevel, true));
      EXPECT_TRUE(archive.WriteMember("grown", changed));
      bool closed = false;
      const bool hit = HitWhile(kind, change, [&] { closed = archive.Close(); });
      EXPECT_TRUE(ReadBytes(kLevel) == (closed ? compactBytes : dirtyBytes));
      EXPECT_FALSE(closed && kind == FaultKind::Short && hit) << "a lost write was not noticed";
      Archive reopened;
      EXPECT_TRUE(reopened.Open(kLevel, true));
      EXPECT_FALSE(fs::exists("now/level.vra-compact")) << "what was left aside is cleaned up";
      return hit;
    });
  }
}

TEST_F(ArchiveCrash, ThePowerIsCutDuringCompacting) {
  EachPowerCut("now", kFewest, [&](const auto& cut) {
    CopyFolder("old", "now");
    Archive archive, reopened;
    EXPECT_TRUE(archive.Open(kLevel, true));
    EXPECT_TRUE(archive.RemoveMember("gone"));
    const Contents before = ContentsOf(archive);
    cut([&] { archive.Close(); });
    EXPECT_TRUE(reopened.Open(kLevel, true)) << reopened.Error();
    EXPECT_EQ(ContentsOf(reopened), before);
  });
}

TEST_F(ArchiveCrash, SavingTheSameAgainWritesNothing) {
  Archive archive;
  ASSERT_TRUE(archive.Open("new/level.vra", true));
  EXPECT_FALSE(HitWhile(FaultKind::Stop, 0, [&] {
    EXPECT_TRUE(archive.BeginSave());
    for (const auto& [name, bytes] : newContents) EXPECT_TRUE(archive.WriteMember(name, bytes));
    EXPECT_TRUE(archive.CommitSave());
  }));
}

TEST_F(ArchiveCrash, AJournalIsNotPlayedBackOverAnotherStateOfTheArchive) {
  StopInTheMiddleOfASave("half");
  const Bytes journal = ReadBytes("half/level.vra-journal");
  Archive archive;
  ASSERT_TRUE(archive.Open("old/level.vra", true));
  ASSERT_TRUE(archive.WriteMember("other", NoiseBytes(9, 9)));
  const Bytes other = ReadBytes("old/level.vra");
  WriteBytes("old/level.vra-journal", journal);

  ASSERT_TRUE(archive.Open("old/level.vra", true));
  EXPECT_FALSE(archive.WriteMember("more", {})) << "nothing is saved while that journal is there";
  EXPECT_NE(archive.Error().find("level.vra-journal"), std::string::npos) << archive.Error();
  EXPECT_EQ(ReadBytes("old/level.vra"), other);
  EXPECT_EQ(ReadBytes("old/level.vra-journal"), journal);
}

TEST_F(ArchiveCrash, AJournalThatIsTornOrSomethingElseChangesNothing) {
  StopInTheMiddleOfASave("half");
  const Bytes journal = ReadBytes("half/level.vra-journal");
  const Bytes halfSaved = ReadBytes("half/level.vra");
  const auto step = [](std::size_t at) { return at < 64 ? std::size_t{1} : 997; };
  for (std::size_t length = 0; length < journal.size(); length += step(length)) {
    WriteBytes("old/level.vra-journal",
               {journal.begin(), journal.begin() + std::ptrdiff_t(length)});
    ExpectOldOrNew("old/level.vra", false);
  }
  const auto open = [](const Bytes& bytes, const Bytes& itsJournal) {
    WriteBytes("old/level.vra", bytes);
    WriteBytes("old/level.vra-journal", itsJournal);
    Archive archive;
    return archive.Open("old/level.vra", true);
  };
  for (std::size_t at = 8; at < journal.size(); at += step(at)) {
    Bytes damaged = journal;
    damaged[at] ^= 0x40;
    open(halfSaved, damaged);
    EXPECT_EQ(ReadBytes("old/level.vra"), halfSaved) << "played back in spite of byte " << at;
  }
  Bytes longer = halfSaved;
  longer.resize(newBytes.size() + 1);
  open(longer, journal);
  EXPECT_EQ(ReadBytes("old/level.vra"), longer) << "no state of that save";
  EXPECT_TRUE(open(oldBytes, TextBytes("dear diary")));
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
