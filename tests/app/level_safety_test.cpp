// Saving asks before it destroys anything: the state before the first save, what another program
// has written, the journal of another state.
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>

#include "app/commands.h"
#include "app/level.h"
#include "app/level_fixture.h"
#include "support/archive_bytes.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class LevelSafety : public LevelTest {
 protected:
  LevelSafety() {
    AnswerDialogs("Island");
    EXPECT_TRUE(OpenLevel());
    before = ReadBytes(path);
    Edit();
  }

  static void Edit() {
    SetHeight(20, 20, 77);
    editor.levelModified = true;
  }

  // What a shell script would do to the level meanwhile.
  void ChangeByAnotherProgram() {
    const fs::path copy = folder / "copy.vra";
    fs::copy_file(path, copy, fs::copy_options::overwrite_existing);
    Archive other;
    ASSERT_TRUE(other.Open(copy.string(), true));
    ASSERT_TRUE(other.WriteMember("varnhold/levels/Island/theirs.txt", TextBytes("theirs")));
    ASSERT_TRUE(other.Close());
    WriteBytes(path, ReadBytes(copy));
  }

  void ExpectUnsaved(const Bytes& onDisk) {
    EXPECT_TRUE(editor.levelModified);
    EXPECT_EQ(ReadBytes(path), onDisk);
    EXPECT_EQ(status().back(), "Could not save level Island");
  }
  std::string Question() const { return scripted::script.prompts.back().text; }

  const fs::path path = folder / "Mods/varnhold/Archives/varnhold/levels/Island.vra";
  const fs::path backup = fs::path(path) += ".bak";
  const fs::path journal = fs::path(path) += "-journal";
  Bytes before;
};

TEST_F(LevelSafety, TheFirstSaveOfASessionLeavesTheStateBeforeItAsABackup) {
  ASSERT_TRUE(SaveLevel());
  EXPECT_EQ(ReadBytes(backup), before);
  NameNewBackup(1000);
  EXPECT_EQ(status().back(), "Saved level Island") << "it is to be read";
  NameNewBackup(4000);
  EXPECT_EQ(status().back(), "The level as it was before is kept as Island.vra.bak.");
  const std::size_t said = status().size();
  NameNewBackup(9000);
  EXPECT_EQ(status().size(), said);
  Edit();
  SetHeight(21, 21, 78);
  ASSERT_TRUE(SaveLevel());
  EXPECT_EQ(ReadBytes(backup), before) << "later saves leave it";
  EXPECT_THAT(ListLevels(), ElementsAre("Island", "Valley"));
}

TEST_F(LevelSafety, TheBackupOfADamagedLevelReplacesNoneOfAWholeOne) {
  WriteBytes(backup, TextBytes("whole"));
  CloseLevelArchive();
  Archive archive;
  ASSERT_TRUE(archive.Open(ArchivePath("Island"), true) &&
              archive.WriteMember("varnhold/levels/Island/heightmap.raw", Bytes(70'000)) &&
              archive.Close());
  before = ReadBytes(path);
  scripted::script.answers = {PromptAnswer::Ok, PromptAnswer::Yes};
  ASSERT_TRUE(OpenLevel());
  ASSERT_TRUE(SaveLevel());
  EXPECT_EQ(ReadBytes(backup), TextBytes("whole"));
  EXPECT_EQ(ReadBytes(path.string() + ".damaged.bak"), before);
}

TEST_F(LevelSafety, WithoutRoomForABackupTheUserDecides) {
  fs::create_directory(backup);  // nothing can take its place
  scripted::script.answers = {PromptAnswer::No, PromptAnswer::Yes};
  EXPECT_FALSE(SaveLevel());
  EXPECT_THAT(Question(),
              HasSubstr("The backup of the level, Island.vra.bak, could not be made: "));
  ExpectUnsaved(before);
  EXPECT_TRUE(SaveLevel());
  EXPECT_EQ(MemberOnDisk("Island", "heightmap.raw")[(20 * 256 + 256 - 20) * 2 + 1], 77);
}

TEST_F(LevelSafety, ALevelThatAnotherProgramChangedIsNotOverwrittenUnasked) {
  ChangeByAnotherProgram();
  const Bytes theirs = ReadBytes(path);
  scripted::script.answers = {PromptAnswer::No};
  EXPECT_FALSE(SaveLevel());
  EXPECT_THAT(Question(), HasSubstr("Another program has changed the archive of level Island"));
  ExpectUnsaved(theirs);
  CloseLevelArchive();
  EXPECT_EQ(ReadBytes(path), theirs) << "closing does not touch it either";
}

TEST_F(LevelSafety, SavingIntoTheChangedLevelKeepsWhatTheOtherProgramAdded) {
  ChangeByAnotherProgram();
  const Bytes theirs = ReadBytes(path);
  scripted::script.answers = {PromptAnswer::Yes};
  ASSERT_TRUE(SaveLevel());
  EXPECT_EQ(ReadBytes(backup), theirs);
  EXPECT_EQ(TextOnDisk("Island", "theirs.txt"), "theirs");
  EXPECT_EQ(MemberOnDisk("Island", "heightmap.raw")[(20 * 256 + 256 - 20) * 2 + 1], 77);
  ASSERT_TRUE(SaveLevel()) << "its own saves are nobody else's";
}

TEST_F(LevelSafety, ALevelThatIsNoArchiveAnyMoreIsLeftAloneAndTheWorkStays) {
  const fs::path aside = folder / "good.vra";
  fs::copy(path, aside);
  std::ofstream(path, std::ios::trunc) << "not an archive";
  scripted::script.answers = {PromptAnswer::Yes, PromptAnswer::Ok};
  EXPECT_FALSE(SaveLevel());
  EXPECT_THAT(Question(), HasSubstr("The changed archive cannot be opened: "));
  ExpectUnsaved(TextBytes("not an archive"));
  // As the message says.
  fs::copy(aside, path, fs::copy_options::overwrite_existing);
  scripted::script.answers = {PromptAnswer::Yes};
  EXPECT_TRUE(SaveLevel());
  EXPECT_EQ(TextOnDisk("Island", "notes.txt"), "not the editor's");
}

TEST_F(LevelSafety, ALevelThatWasDeletedIsSavedWithEverythingThatItHeld) {
  fs::remove(path);
  scripted::script.answers = {PromptAnswer::Yes};
  ASSERT_TRUE(SaveLevel());
  EXPECT_THAT(Question(), HasSubstr("The archive of level Island is gone"));
  EXPECT_EQ(TextOnDisk("Island", "notes.txt"), "not the editor's");
  EXPECT_EQ(MemberOnDisk("Island", "heightmap.raw")[(20 * 256 + 256 - 20) * 2 + 1], 77);
}

// What is asked at the end tells what has become of the archive, whether there are edits or not.
TEST_F(LevelSafety, ExitSaysWhatAnotherProgramDidAndOffersToSave) {
  const std::string edited = "Would you like to save your changes before exiting?";
  const std::string gone = "with everything that it held before exiting?";
  const std::string changed = "Would you like to save into the changed archive before exiting?";
  const std::function<void()> remove = [this] { fs::remove_all(path.parent_path()); };
  const std::function<void()> change = [this] { ChangeByAnotherProgram(); };
  const struct {
    const std::function<void()>& act;
    bool modified;
    std::string question;
  } cases[] = {{[] {}, true, edited}, {[] {}, false, ""},      {remove, true, gone},
               {remove, false, gone}, {change, true, changed}, {change, false, changed}};
  for (const auto& [act, modified, question] : cases) {
    for (const bool save : {true, false}) {
      SCOPED_TRACE(question);
      fs::create_directories(path.parent_path());
      WriteBytes(path, before);
      scripted::script.prompts.clear();
      ASSERT_TRUE(OpenLevel());
      Edit();
      editor.levelModified = modified;
      act();
      const Bytes theirs = fs::exists(path) ? ReadBytes(path) : Bytes{};
      scripted::script.prompts.clear();
      scripted::script.answers = {save ? PromptAnswer::Yes : PromptAnswer::No};
      EXPECT_TRUE(ConfirmExit());
      CloseLevelArchive();
      if (question.empty()) {
        EXPECT_TRUE(scripted::script.prompts.empty());
        continue;
      }
      ASSERT_EQ(scripted::script.prompts.size(), 1u) << "nothing more, and nothing untrue";
      EXPECT_THAT(Question(), HasSubstr(question));
      if (save) {
        EXPECT_EQ(MemberOnDisk("Island", "heightmap.raw")[(20 * 256 + 256 - 20) * 2 + 1], 77);
        EXPECT_EQ(TextOnDisk("Island", "notes.txt"), "not the editor's");
      } else {
        EXPECT_EQ(fs::exists(path) ? ReadBytes(path) : Bytes{}, theirs);
      }
    }
  }
}

TEST_F(LevelSafety, ALevelOfAnotherEditorIsOpenForLookingAndSaveSaysWhyNot) {
  CloseLevelArchive();
  Archive other;
  ASSERT_TRUE(other.Open(ArchivePath("Island"), true));
  scripted::script.answers = {PromptAnswer::Ok};
  ASSERT_TRUE(OpenLevel());
  const std::string protection = "The level Island is write-protected.\n\n" + path.string() +
                                 ": Another Mapwright has it open.";
  EXPECT_THAT(Question(), HasSubstr(protection));
  Edit();
  scripted::script.answers = {PromptAnswer::Ok};
  EXPECT_FALSE(SaveLevel());
  EXPECT_THAT(Question(), HasSubstr("The level could not be saved.\n\n" + protection));
  ExpectUnsaved(before);
  scripted::script.answers = {PromptAnswer::Ok};
  RunCommand(kCommandGenerateInGameMap);
  EXPECT_EQ(Question(), "The level is write-protected: Another Mapwright has it open.");
  other.Close();
  EXPECT_TRUE(SaveLevel()) << "once it can be written, it is";
  EXPECT_EQ(MemberOnDisk("Island", "heightmap.raw")[(20 * 256 + 256 - 20) * 2 + 1], 77);
}

TEST_F(LevelSafety, AnotherLevelsArchiveIsNotSavedInto) {
  fs::copy(path.parent_path() / "Valley.vra", path, fs::copy_options::overwrite_existing);
  const Bytes valley = ReadBytes(path);
  scripted::script.answers = {PromptAnswer::Yes, PromptAnswer::Ok};
  EXPECT_FALSE(SaveLevel());
  EXPECT_THAT(Question(), HasSubstr("This archive holds the level Valley, not Island."));
  ExpectUnsaved(valley);
}

TEST_F(LevelSafety, AJournalOfAnotherStateIsRenamedOnTheUsersWord) {
  WriteBytes(journal, TextBytes("of another state"));
  scripted::script.answers = {PromptAnswer::No, PromptAnswer::Yes};
  EXPECT_FALSE(SaveLevel());
  EXPECT_THAT(Question(), HasSubstr("The file Island.vra-journal beside the level's archive"));
  ExpectUnsaved(before);
  EXPECT_EQ(ReadBytes(journal), TextBytes("of another state"));
  EXPECT_TRUE(SaveLevel());
  EXPECT_EQ(ReadBytes(journal.string() + ".old"), TextBytes("of another state"));
}

}  // namespace
}  // namespace mw
