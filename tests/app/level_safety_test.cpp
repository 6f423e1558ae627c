// Saving asks before it destroys anything: the state before the first save, what another program
// has written, the journal of another state.
#include <fstream>
#include <gtest/gtest.h>

#include "app/commands.h"
#include "app/level.h"
#include "app/level_fixture.h"
#include "support/archive_bytes.h"
#include "support/each_change.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
constexpr PromptAnswer kYes = PromptAnswer::Yes, kNo = PromptAnswer::No, kOk = PromptAnswer::Ok;

class LevelSafety : public LevelTest {
 protected:
  LevelSafety() {
    Open("Island");
    Edit();
  }

  // What a shell script would do to the level meanwhile.
  void ChangeByAnotherProgram() {
    const fs::path copy = folder / "copy.vra";
    fs::copy_file(island, copy, fs::copy_options::overwrite_existing);
    Archive other;
    ASSERT_TRUE(other.Open(copy.string(), true) &&
                other.WriteMember("varnhold/levels/Island/theirs.txt", TextBytes("theirs")) &&
                other.Close());
    WriteBytes(island, ReadBytes(copy));
    knownFiles["as another program left it"] = ReadBytes(island);
  }
  void Save(std::initializer_list<PromptAnswer> answers = {}) {
    Do(
        "save", [] { return SaveLevel(); }, answers);
  }
  void Close() { Do("close", CloseLevelArchive); }

  const fs::path backup = fs::path(island) += ".bak", journal = fs::path(island) += "-journal";
};

TEST_F(LevelSafety, TheFirstSaveOfASessionLeavesTheStateBeforeItAsABackup) {
  Save();
  for (const std::uint32_t time : {1000u, 3999u, 4000u, 9000u}) {
    Do("name the backup at " + std::to_string(time), [time] { NameNewBackup(time); });
  }
  Edit();
  SetHeight(21, 21, 78);
  Save();
  EXPECT_EQ(ListLevels(), (std::vector<std::string>{"Island", "Valley"}));
}

TEST_F(LevelSafety, TheBackupOfADamagedLevelReplacesNoneOfAWholeOne) {
  CloseLevelArchive();
  WriteBytes(backup, TextBytes("whole"));
  PutMember("heightmap.raw", Bytes(70'000));
  knownFiles["as opened"] = ReadBytes(island);
  Do("open", OpenLevel, {kOk});
  Save({kYes});
}

TEST_F(LevelSafety, WithoutRoomForABackupTheUserDecides) {
  fs::create_directory(backup);  // nothing can take its place
  Save({kNo});
  Save({kYes});
}

TEST_F(LevelSafety, ALevelThatAnotherProgramChangedIsNotOverwrittenUnasked) {
  ChangeByAnotherProgram();
  Save({kNo});
  Close();
}

TEST_F(LevelSafety, SavingIntoTheChangedLevelKeepsWhatTheOtherProgramAdded) {
  ChangeByAnotherProgram();
  Save({kYes});
  Save();  // its own saves are nobody else's
}

TEST_F(LevelSafety, ALevelThatIsNoArchiveAnyMoreIsLeftAloneUntilAGoodCopyIsPutInItsPlace) {
  WriteBytes(island, TextBytes("not an archive"));
  Save({kYes, kOk});
  WriteBytes(island, knownFiles["as opened"]);
  Save({kYes});
}

TEST_F(LevelSafety, ALevelThatWasDeletedIsSavedWithEverythingThatItHeld) {
  fs::remove(island);
  Save({kYes});
}

// What is asked at the end tells what has become of the archive, whether there are edits or not.
TEST_F(LevelSafety, ExitSaysWhatAnotherProgramDidAndOffersToSave) {
  const std::pair<std::string, std::function<void()>> cases[] = {
      {"nothing", [] {}},
      {"remove", [this] { fs::remove_all(levels); }},
      {"change", [this] { ChangeByAnotherProgram(); }}};
  for (const auto& [name, act] : cases) {
    for (const bool modified : {true, false}) {
      for (const PromptAnswer answer : {kYes, kNo}) {
        fs::create_directories(levels);
        WriteBytes(island, knownFiles["as opened"]);
        Open("Island");
        Edit();
        editor.levelModified = modified;
        act();
        const auto exit = [] { return ConfirmExit(); };
        const std::string what = name + (modified ? ", edits" : "") + ", exit";
        if (name == "nothing" && !modified) {
          Do(what, exit);
        } else {
          Do(what, exit, {answer});
        }
        CloseLevelArchive();
        fs::remove(backup);
      }
    }
  }
}

TEST_F(LevelSafety, ALevelOfAnotherEditorIsOpenForLookingAndSaveSaysWhyNot) {
  CloseLevelArchive();
  Archive other;
  ASSERT_TRUE(other.Open(ArchivePath("Island"), true));
  Do("open", OpenLevel, {kOk});
  Edit();
  Save({kOk});
  Do("in-game map", [] { RunCommand(kCommandGenerateInGameMap); }, {kOk});
  ASSERT_TRUE(other.WriteMember("varnhold/levels/Island/theirs.txt", TextBytes("theirs")));
  Do("exit", ConfirmExit, {kNo});
  other.Close();
  Save({kYes});  // once it can be written, it is
}

TEST_F(LevelSafety, WhatCannotBeCompactedIsToldAndTheLevelStays) {
  Save();
  ASSERT_TRUE(LevelArchive()->RemoveMember("varnhold/levels/Island/Textures/detail.dds"));
  Do("close", [] { return HitWhile(FaultKind::Full, 0, CloseLevelArchive); }, {kOk});
}

TEST_F(LevelSafety, AnotherLevelsArchiveIsNotSavedInto) {
  fs::copy(levels / "Valley.vra", island, fs::copy_options::overwrite_existing);
  knownFiles["that of Valley"] = ReadBytes(island);
  Save({kYes, kOk});
}

TEST_F(LevelSafety, AJournalOfAnotherStateIsRenamedOnTheUsersWord) {
  WriteBytes(journal, TextBytes("of another state"));
  fs::create_directory(fs::path(journal) += ".old");
  Save({kNo});
  Save({kYes});
}

}  // namespace
}  // namespace mw
