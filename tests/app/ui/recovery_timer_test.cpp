#include "app/ui/recovery_timer.h"

#include <QDialog>
#include <QTest>
#include <gtest/gtest.h>

#include "app/recovery.h"
#include "app/session.h"
#include "core/editor_state.h"

namespace mw {
namespace {

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
