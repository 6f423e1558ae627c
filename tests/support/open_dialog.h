// Runs a modal dialog while a function plays its user, who sees its controls by their names.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>

namespace mw {

// The tests of each dialog add what that dialog has.
struct OpenDialog {
  QDialog& window;

  // Throws, and so fails the test, when the dialog has no such control.
  template <typename W>
  W& Widget(const char* name) const {
    W* const widget = window.findChild<W*>(name);
    if (!widget) throw std::logic_error(name);
    return *widget;
  }
  void Press(const char* button) const { Widget<QPushButton>(button).click(); }
};

// Once the next dialog is open, lets the user act, and cancels the dialog if it is still open then.
inline void WhenDialogOpens(const std::function<void(const OpenDialog&)>& act) {
  QTimer::singleShot(0, qApp, [act] {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(dialog) << "no dialog is open";
    act({*dialog});
    if (dialog->isVisible()) dialog->reject();
  });
}

}  // namespace mw
