// Unsaved work outlives the program: whenever it is killed, the next start offers what was edited
// up to the last recovery file, whole, and the level on disk is as it was saved.
#include "app/recovery.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include "app/commands.h"
#include "app/level.h"
#include "app/level_fixture.h"
#include "app/recovery_offer.h"
#include "app/session.h"
#include "data/mods.h"
#include "support/archive_bytes.h"
#include "support/disk_faults.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;

const std::string kRecoveryFile = RecoveryFileName(0);
constexpr const char* kOld = "mapwright.recovery.old";
constexpr const char* kDamaged = "mapwright.recovery.damaged";

class RecoveryTest : public LevelTest {
 protected:
  RecoveryTest() {
    Restart();
    AnswerDialogs("Island");
    EXPECT_TRUE(OpenLevel());
    saved = ReadBytes(path);
  }

  // As after a kill: memory is gone, the disk stays.
  static void Restart() {
    archives.Clear();
    session.recovery = Recovery{};
    editor.levelLoaded = editor.levelModified = editor.leftHeld = false;
    InitGrid();
    FindMods();
    SelectMod(0);
  }

  // One edit in several parts of the level, told apart by `mark`.
  static void Edit(int mark) {
    for (int j = 1; j < 100; ++j) SetHeight(30, j, static_cast<float>(mark));
    SetMaterial(static_cast<std::uint32_t>(mark % 16), 40, 40);
    modConfig.fogStart = mark;
    editor.levelModified = true;
  }
  // The mark of the edit that the editor shows; -1 for a mixture.
  static int Shown() {
    const int mark = modConfig.fogStart;
    for (int j = 1; j < 100; ++j) {
      if (terrain.grid[30][j].h != static_cast<float>(mark)) return -1;
    }
    return materialMapper->grid[40][40] == static_cast<std::uint32_t>(mark % 16) ? mark : -1;
  }

  // The clock shows that it is time to write.
  void LetTimePass() {
    KeepRecovery(clock);
    clock += session.recovery.interval;
    KeepRecovery(clock);
  }

  std::uint32_t clock = 0xFFFF'FFF0;  // about to wrap
  const fs::path path = folder / "Mods/varnhold/Archives/varnhold/levels/Island.vra";
  Bytes saved;
};

TEST_F(RecoveryTest, TheNextStartGoesOnWithTheUnsavedWork) {
  Edit(50);
  LetTimePass();
  Edit(51);
  LetTimePass();
  EXPECT_EQ(ReadBytes(path), saved) << "the level itself is not touched";
  Restart();
  scripted::script.answers = {PromptAnswer::Yes};
  ASSERT_TRUE(OfferRecovery());
  EXPECT_THAT(scripted::script.prompts.back().text, HasSubstr("level Island of mod varnhold"));
  EXPECT_EQ(Shown(), 51);
  EXPECT_TRUE(editor.levelModified);
  EXPECT_EQ(status().back(), "Recovered level Island. The recovered work is not saved yet.");
  EXPECT_TRUE(fs::exists(kRecoveryFile)) << "until it is saved, another kill is survived too";
  ASSERT_TRUE(SaveLevel());
  EXPECT_FALSE(fs::exists(kRecoveryFile));
  EXPECT_EQ(TextOnDisk("Island", "notes.txt"), "not the editor's");
  EXPECT_THAT(TextOnDisk("Island", "init/skyandsun.con"), HasSubstr("fogstart 51"));
}

TEST_F(RecoveryTest, NothingIsWrittenBeforeItIsTimeOrWhileAButtonIsHeldOrWithoutEdits) {
  KeepRecovery(clock += session.recovery.interval);
  Edit(50);
  KeepRecovery(clock += session.recovery.interval);
  KeepRecovery(clock += session.recovery.interval - 1);
  EXPECT_FALSE(fs::exists(kRecoveryFile)) << "counted from the first edit";
  editor.leftHeld = true;
  KeepRecovery(++clock);
  EXPECT_FALSE(fs::exists(kRecoveryFile));
  editor.leftHeld = false;
  KeepRecovery(++clock);
  EXPECT_TRUE(fs::exists(kRecoveryFile));
  const DiskFaults faults(FaultKind::Stop, 0);
  LetTimePass();
  EXPECT_FALSE(faults.Hit()) << "nothing new to write";
}

TEST_F(RecoveryTest, WorkThatIsSavedOrGivenUpIsNotOfferedAgain) {
  Edit(50);
  LetTimePass();
  ASSERT_TRUE(SaveLevel());
  EXPECT_FALSE(fs::exists(kRecoveryFile));
  Edit(51);
  LetTimePass();
  ASSERT_TRUE(fs::exists(kRecoveryFile));
  scripted::script.answers = {PromptAnswer::No};
  AnswerDialogs("");
  RunCommand(kCommandOpenLevel);
  EXPECT_TRUE(fs::exists(kRecoveryFile)) << "the dialog was cancelled, the edits are still there";
  scripted::script.answers = {PromptAnswer::No};
  AnswerDialogs("Valley");
  RunCommand(kCommandOpenLevel);
  EXPECT_FALSE(fs::exists(kRecoveryFile));
}

TEST_F(RecoveryTest, ARunningEditorsWorkIsNeitherOfferedNorReplaced) {
  Edit(50);
  LetTimePass();
  const Bytes file = ReadBytes(kRecoveryFile);
  Recovery running = std::move(session.recovery);
  Restart();
  EXPECT_FALSE(OfferRecovery());
  AnswerDialogs("Valley");
  ASSERT_TRUE(OpenLevel());
  Edit(51);
  LetTimePass();
  EXPECT_EQ(ReadBytes(kRecoveryFile), file);
  EXPECT_TRUE(fs::exists(RecoveryFileName(1)));
  running = Recovery{};  // both are killed
  Restart();
  scripted::script.answers = {PromptAnswer::No, PromptAnswer::Yes};
  ASSERT_TRUE(OfferRecovery()) << "one after the other";
  EXPECT_EQ(Shown(), 51);
  EXPECT_EQ(ReadBytes(kOld), file);
  ASSERT_TRUE(SaveLevel());
  for (const auto& entry : fs::directory_iterator(folder)) {
    EXPECT_EQ(entry.path().string().find("-lock"), std::string::npos) << entry.path();
  }
}

TEST_F(RecoveryTest, DeclinedWorkIsKeptOnceUnderAnotherName) {
  Edit(50);
  LetTimePass();
  const Bytes file = ReadBytes(kRecoveryFile);
  Restart();
  scripted::script.answers = {PromptAnswer::No};
  EXPECT_FALSE(OfferRecovery());
  EXPECT_EQ(ReadBytes(kOld), file);
  EXPECT_FALSE(OfferRecovery()) << "nothing is asked any more";
}

TEST_F(RecoveryTest, ADamagedFileIsKeptAndReported) {
  Edit(50);
  LetTimePass();
  const Bytes file = ReadBytes(kRecoveryFile);
  for (std::size_t at = 0; at < file.size(); at += at < 400 ? 13 : 40009) {
    SCOPED_TRACE(at);
    Bytes damaged = file;
    damaged[at] ^= 4;
    if (at % 2 == 0) damaged.resize(at);
    WriteBytes(kRecoveryFile, damaged);
    Restart();
    scripted::script.answers = {PromptAnswer::Ok};
    const bool reserved = at >= 8 && at < 156 && at % 2 == 1;  // bytes that mean nothing
    if (reserved) continue;
    EXPECT_FALSE(OfferRecovery());
    EXPECT_THAT(scripted::script.prompts.back().text, HasSubstr("is damaged"));
    EXPECT_EQ(ReadBytes(kDamaged), damaged);
  }
}

TEST_F(RecoveryTest, WorkOnALevelThatIsGoneIsKept) {
  Edit(50);
  LetTimePass();
  Restart();
  fs::remove(path);
  scripted::script.answers = {PromptAnswer::Yes, PromptAnswer::Ok};
  EXPECT_FALSE(OfferRecovery());
  EXPECT_THAT(scripted::script.prompts.back().text, HasSubstr("mapwright.recovery.old"));
  EXPECT_THAT(scripted::script.prompts.back().text, HasSubstr("No such file or directory"));
  EXPECT_FALSE(editor.levelModified);
  EXPECT_TRUE(fs::exists(kOld));
}

TEST_F(RecoveryTest, WorkOnADamagedMapComesBackAndTheMapOnDiskStillNeedsAWord) {
  ASSERT_TRUE(LevelArchive()->WriteMember("varnhold/levels/Island/heightmap.raw", Bytes(70'000)));
  scripted::script.answers = {PromptAnswer::Ok};
  ASSERT_TRUE(OpenLevel());
  Edit(50);
  LetTimePass();
  Restart();
  scripted::script.answers = {PromptAnswer::Yes, PromptAnswer::Ok, PromptAnswer::No};
  ASSERT_TRUE(OfferRecovery());
  EXPECT_EQ(Shown(), 50);
  EXPECT_THAT(scripted::script.prompts.back().text, HasSubstr("read to row 136 of 256"));
  ASSERT_TRUE(SaveLevel());
  EXPECT_THAT(scripted::script.prompts.back().text, HasSubstr("Replace the damaged height map"));
  EXPECT_EQ(MemberOnDisk("Island", "heightmap.raw"), Bytes(70'000));
  EXPECT_THAT(TextOnDisk("Island", "init/skyandsun.con"), HasSubstr("fogstart 50"));
}

// The program stops, a change fails or the disk is full, at every change that the writing makes.
TEST_F(RecoveryTest, AnInterruptedWritingLeavesTheOneBefore) {
  for (const FaultKind kind : {FaultKind::Stop, FaultKind::Fail, FaultKind::Full}) {
    Edit(20);
    LetTimePass();
    bool hit = true;
    for (std::size_t change = 0; hit; ++change) {
      SCOPED_TRACE(change);
      Edit(60 + static_cast<int>(change));
      {
        const DiskFaults faults(kind, change);
        LetTimePass();
        hit = faults.Hit();
      }
      if (hit && !status().empty()) {
        EXPECT_THAT(status().back(), MatchesRegex("Could not write the recovery file: .*[a-z].*"));
      }
      const Bytes file = ReadBytes(kRecoveryFile);
      Restart();
      scripted::script.answers = {PromptAnswer::Yes};
      ASSERT_TRUE(OfferRecovery());
      EXPECT_TRUE(Shown() == 60 + static_cast<int>(change) || (hit && Shown() >= 20)) << Shown();
    }
  }
}

// A real process, really killed.
TEST_F(RecoveryTest, AKillAtAnyTime) {
  session.recovery.interval = 0;
  for (int attempt = 0; attempt < 12; ++attempt) {
    const pid_t editing = fork();
    ASSERT_GE(editing, 0);
    if (editing == 0) {
      for (int mark = 1;; mark = mark % 200 + 1) {
        Edit(mark);
        KeepRecovery(0);
      }
    }
    usleep(30000 + 7000 * static_cast<unsigned>(attempt));
    kill(editing, SIGKILL);
    waitpid(editing, nullptr, 0);
    Restart();
    EXPECT_EQ(ReadBytes(path), saved);
    if (!fs::exists(kRecoveryFile)) continue;  // killed before the first one
    scripted::script.answers = {PromptAnswer::Yes};
    ASSERT_TRUE(OfferRecovery());
    EXPECT_GE(Shown(), 1) << "half of one edit and half of another";
    session.recovery.interval = 0;
  }
  EXPECT_TRUE(fs::exists(kRecoveryFile)) << "no attempt got as far as a first file";
}

}  // namespace
}  // namespace mw
