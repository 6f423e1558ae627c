// The open dialog, as its user sees it: its controls by their names. The tests of each dialog add
// what that dialog has.
#pragma once

#include <QDialog>
#include <stdexcept>

namespace mw {

struct DialogUnderTest {
  QDialog& window;

  // Throws, and so fails the test, when the dialog has no such control.
  template <typename W>
  W& Widget(const char* name) const {
    W* const widget = window.findChild<W*>(name);
    if (!widget) throw std::logic_error(name);
    return *widget;
  }
};

}  // namespace mw
