// Unsaved work outlives the program: whenever it is killed, the next start offers what was edited
// up to the last recovery file, whole, and the level on disk is as it was saved.
#include "app/recovery_fixture.h"
#include "support/each_change.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

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

}  // namespace
}  // namespace mw
