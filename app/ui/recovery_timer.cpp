#include "app/ui/recovery_timer.h"

#include <QApplication>

#include "app/level.h"
#include "app/recovery.h"
#include "platform/clock.h"

namespace mw {
namespace {

constexpr int kLook = 2000;  // milliseconds

void Look() {
  if (QApplication::activeModalWidget() || QApplication::mouseButtons() != Qt::NoButton) return;
  KeepRecovery(MillisecondsNow());
  NameNewBackup(MillisecondsNow());
}

}  // namespace

RecoveryTimer::RecoveryTimer() {
  timer_.callOnTimeout(Look);
  timer_.start(kLook);
}

}  // namespace mw
