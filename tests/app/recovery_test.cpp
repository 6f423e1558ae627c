// Unsaved work outlives the program: whenever it is killed, the next start offers what was edited
// up to the last recovery file, whole, and the level on disk is as it was saved.
#include "app/recovery.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include "app/level_fixture.h"
#include "app/recovery_offer.h"
#include "app/session.h"
#include "core/history.h"
#include "support/archive_bytes.h"
#include "support/each_change.h"

namespace mw {
namespace {

namespace fs = std::filesystem;
constexpr PromptAnswer kYes = PromptAnswer::Yes, kOk = PromptAnswer::Ok;

const std::string kRecoveryFile = RecoveryFileName(0);

class RecoveryTest : public LevelTest {
 protected:
  RecoveryTest() {
    Restart();
    Open("Island");
  }
  void EditAsStep(int mark) {
    const HistoryStep step("Mark");
    KeepSetting(modConfig);
    Mark(mark);
  }
};

TEST_F(RecoveryTest, NothingIsWrittenBeforeItIsTimeOrWhileAButtonIsHeldOrWithoutEdits) {
  KeepRecovery(clock += session.recovery.interval);
  Mark(50);
  KeepRecovery(clock += session.recovery.interval);
  KeepRecovery(clock += session.recovery.interval - 1);
  EXPECT_FALSE(fs::exists(kRecoveryFile)) << "counted from the first edit";
  for (bool* const held : {&editor.leftHeld, &editor.rightHeld}) {
    *held = true;
    KeepRecovery(++clock);
    *held = false;
  }
  EXPECT_FALSE(fs::exists(kRecoveryFile));
  KeepRecovery(++clock);
  EXPECT_TRUE(fs::exists(kRecoveryFile));
  EXPECT_FALSE(HitWhile(FaultKind::Stop, 0, [this] { LetTimePass(); })) << "nothing new to write";
}

TEST_F(RecoveryTest, ADamagedFileIsKeptAndReported) {
  Work(50);
  const Bytes file = ReadBytes(kRecoveryFile);
  for (std::size_t at = 0; at < file.size(); at += at < 400 ? 13 : 40009) {
    SCOPED_TRACE(at);
    const bool reserved = at >= 8 && at < 156 && at % 2 == 1;  // bytes that mean nothing
    if (reserved) continue;
    Bytes damaged = file;
    damaged[at] ^= 4;
    if (at % 2 == 0) damaged.resize(at);
    WriteBytes(kRecoveryFile, damaged);
    Restart();
    Answer({kOk});
    EXPECT_FALSE(OfferRecovery());
    ExpectPrompts({"is damaged"});
    EXPECT_EQ(ReadBytes(kRecoveryFile + ".damaged"), damaged);
  }
}

TEST_F(RecoveryTest, AnInterruptedWritingLeavesTheOneBefore) {
  for (const FaultKind kind : kFailures) {
    Work(20);
    EachChange(3, [&](std::size_t change) {
      const int mark = 60 + static_cast<int>(change);
      Mark(mark);
      scripted::script.status[1].clear();
      const bool hit = HitWhile(kind, change, [this] { LetTimePass(); });
      if (hit) {
        EXPECT_THAT(status(), testing::ElementsAre(testing::MatchesRegex(
                                  "Could not write the recovery file: .*[a-z].*")));
      }
      Restart();
      Answer({kYes});
      EXPECT_TRUE(OfferRecovery());
      EXPECT_TRUE(Shown() == mark || (hit && Shown() >= 20)) << Shown();
      return hit;
    });
  }
}

// A real process, really killed.
TEST_F(RecoveryTest, AKillAtAnyTime) {
  for (unsigned attempt = 0; attempt < 12; ++attempt) {
    session.recovery.interval = 0;
    const pid_t editing = fork();
    ASSERT_GE(editing, 0);
    while (editing == 0) {
      Mark(modConfig.fogStart % 200 + 1);
      KeepRecovery(0);
    }
    usleep(30000 + 7000 * attempt);
    kill(editing, SIGKILL);
    waitpid(editing, nullptr, 0);
    Restart();
    EXPECT_EQ(ReadBytes(island), knownFiles["as opened"]);
    if (!fs::exists(kRecoveryFile)) continue;  // killed before the first one
    Answer({kYes});
    ASSERT_TRUE(OfferRecovery());
    EXPECT_GE(Shown(), 1) << "half of one edit and half of another";
    // A new past begins there, and none of it leads to what is on disk.
    const int recovered = Shown();
    EXPECT_EQ(NextUndo() + NextRedo(), "");
    EditAsStep(210);
    EXPECT_TRUE(Undo());
    EXPECT_EQ(Shown(), recovered);
    EXPECT_TRUE(editor.levelModified);
  }
  EXPECT_TRUE(fs::exists(kRecoveryFile)) << "no attempt got as far as a first file";
}

}  // namespace
}  // namespace mw
