// The one record of the platform on Qt: the windows that it works with and what it holds of the
// desktop. Start-up tells the windows; the rest is made when it is first needed.
#pragma once

#include <QLabel>
#include <QLockFile>
#include <QPointer>
#include <QWidget>
#include <array>
#include <functional>
#include <memory>

#include "platform/qt/process_wait.h"
#include "platform/qt/wait_cursor.h"

namespace mw {

struct Desktop {
  QPointer<QWidget> view;
  std::function<bool()> makeViewContextCurrent;  // asked while there is a view
  std::array<QPointer<QLabel>, 4> statusLabels;  // by part; part 0 has no width and no label
  std::unique_ptr<WaitCursor> waitCursor;
  ProcessWaitObserver processWaitObserver = [](bool) {};
  int heldInputLocks = 0;
  // Held until the program ends; one that a crash left behind names a process that is gone.
  std::unique_ptr<QLockFile> instanceLock;
};
extern Desktop desktop;

}  // namespace mw
