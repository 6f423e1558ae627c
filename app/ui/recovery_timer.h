// Looks every few seconds whether the recovery file is to be written and whether a backup is to be
// named, while no dialog is open and no mouse button is held.
#pragma once

#include <QTimer>

namespace mw {

class RecoveryTimer {
 public:
  RecoveryTimer();

 private:
  QTimer timer_;
};

}  // namespace mw
