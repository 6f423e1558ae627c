// What the windows do by themselves: frames, and the file for recovery.
#include "app/ui/frame_loop.h"

#include <QDialog>
#include <QTest>
#include <gtest/gtest.h>

#include "app/recovery.h"
#include "app/session.h"
#include "app/ui/recovery_timer.h"
#include "core/editor_state.h"
#include "support/sandbox.h"

namespace mw {
namespace {

class FrameLoopTest : public SandboxTest {
 protected:
  void SetUp() override {
    mainWindow.resize(200, 100);
    mainWindow.show();
    mainWindow.activateWindow();
    if (!QTest::qWaitForWindowActive(&mainWindow, 3000)) {
      GTEST_SKIP() << "no window can be activated on this display";
    }
  }
  // Frames drawn in a while.
  int Frames() {
    QTest::qWait(20);
    const int before = shown;
    QTest::qWait(50);
    return shown - before;
  }

  QWidget mainWindow;
  int shown = 0;
  FrameLoop frames{&mainWindow, [this] { ++shown; }};
};

TEST_F(FrameLoopTest, DrawsWhileTheWindowIsInUseAndRestsDuringDialogs) {
  EXPECT_EQ(Frames(), 0) << "not started yet";
  frames.Start();
  EXPECT_GT(Frames(), 1);

  QDialog dialog(&mainWindow);
  dialog.open();
  EXPECT_EQ(Frames(), 0);
  EXPECT_FALSE(frames.IsRunning());
  dialog.done(0);
  mainWindow.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&mainWindow, 3000));
  EXPECT_GT(Frames(), 1);
}

TEST_F(FrameLoopTest, RestsWhileAProcessIsWaitedFor) {
  frames.Start();
  frames.Rest(true);
  frames.Rest(true);
  frames.Rest(false);
  EXPECT_EQ(Frames(), 0);
  frames.Rest(false);
  EXPECT_GT(Frames(), 1);
}

constexpr int kTwoLooks = 5000;  // milliseconds

TEST(RecoveryTimerTest, LooksNowAndThenButNotBehindADialog) {
  editor.levelLoaded = false;
  const auto hasLooked = [] { return !session.recovery.edited; };  // no level, no edits
  const RecoveryTimer timer;
  session.recovery.edited = true;
  QDialog dialog;
  dialog.setModal(true);
  dialog.show();
  EXPECT_FALSE(QTest::qWaitFor(hasLooked, kTwoLooks));
  dialog.done(0);
  EXPECT_TRUE(QTest::qWaitFor(hasLooked, kTwoLooks));
}

}  // namespace
}  // namespace mw
