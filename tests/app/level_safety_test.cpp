// Saving asks before it destroys anything: the state before the first save, what another program
// has written, the journal of another state.
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

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
    Archive other;
    ASSERT_TRUE(other.Open(ArchivePath("Island"), true));
    ASSERT_TRUE(other.WriteMember("varnhold/levels/Island/theirs.txt", TextBytes("theirs")));
    ASSERT_TRUE(other.Close());
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
  Edit();
  SetHeight(21, 21, 78);
  ASSERT_TRUE(SaveLevel());
  EXPECT_EQ(ReadBytes(backup), before) << "later saves leave it";
  EXPECT_THAT(ListLevels(), ElementsAre("Island", "Valley"));
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
