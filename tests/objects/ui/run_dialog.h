// Runs a modal dialog while a function plays its user.
#pragma once

#include <QApplication>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

#include "support/open_dialog.h"

namespace mw {

struct OpenDialog : DialogUnderTest {
  void Press(const char* button) const { Widget<QPushButton>(button).click(); }
};

// Once the next dialog is open, lets the user act, and cancels the dialog if it is still open then.
inline void WhenDialogOpens(const std::function<void(const OpenDialog&)>& act) {
  QTimer::singleShot(0, qApp, [act] {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(dialog) << "no dialog is open";
    act({{*dialog}});
    if (dialog->isVisible()) dialog->reject();
  });
}

}  // namespace mw
