// A real process, really killed.
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include "app/recovery_fixture.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

class RecoveryKill : public RecoveryTest {};

TEST_F(RecoveryKill, AtAnyTime) {
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
