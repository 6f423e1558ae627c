// The main window over the shell's logic: for the tests of the windows.
#pragma once

#include <QApplication>
#include <QTimer>
#include <functional>

#include "app/shell_fixture.h"
#include "app/ui/main_window.h"
#include "app/ui/shell_windows.h"

namespace mw {

class WindowTest : public ShellTest {
 protected:
  WindowTest() { ConnectShell(window); }
  ~WindowTest() override { DisconnectShell(); }

  // Does something with the next modal dialog once it is open.
  template <typename Dialog>
  static void WhenOpen(std::function<void(Dialog&)> act) {
    QTimer::singleShot(0, qApp, [act] {
      auto* dialog = dynamic_cast<Dialog*>(QApplication::activeModalWidget());
      ASSERT_TRUE(dialog) << "no such dialog is open";
      act(*dialog);
      if (dialog->isVisible()) {
        ADD_FAILURE() << "the dialog is still open";
        dialog->done(0);
      }
    });
  }

  MainWindow window;
};

}  // namespace mw
