// The main window over the shell's logic: for the tests of the windows.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
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
  // Throws, and so fails the test, when the dialog has no such button.
  static void Click(const QWidget& dialog, std::initializer_list<const char*> buttons) {
    for (const char* name : buttons) {
      auto* const button = dialog.findChild<QAbstractButton*>(name);
      if (!button) throw std::logic_error(name);
      button->click();
    }
  }
  // With the left button held from one place to the other.
  static void DragFrom(QWidget* widget, QPoint from, QPoint to,
                       const std::function<void()>& beforeRelease = nullptr) {
    QTest::mousePress(widget, Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, widget->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     {});
    QApplication::sendEvent(widget, &move);
    if (beforeRelease) beforeRelease();
    QTest::mouseRelease(widget, Qt::LeftButton, {}, to);
  }

  // The story goes on with what a dialog shows: its title, and a line for each control.
  void TellControls(const QWidget& dialog) {
    Tell("window " + dialog.windowTitle().toStdString());
    for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
      if (widget->objectName().isEmpty() || widget->objectName().startsWith("qt_")) continue;
      QString line = "       " + widget->objectName() + ": " + Shown(widget);
      if (!widget->isEnabled()) line += " (grey)";
      if (widget->isHidden()) line += " (hidden)";
      Tell(line.toStdString());
    }
  }

  MainWindow window;

 private:
  static QString Shown(const QWidget* widget) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
      return button->isCheckable() ? button->isChecked() ? "on" : "off" : button->text();
    }
    if (const auto* label = qobject_cast<const QLabel*>(widget)) return label->text();
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget)) return edit->text();
    QStringList entries;
    int current = -1;
    if (const auto* box = qobject_cast<const QComboBox*>(widget)) {
      for (int i = 0; i < box->count(); ++i) entries << box->itemText(i);
      current = box->currentIndex();
    } else if (const auto* list = qobject_cast<const QListWidget*>(widget)) {
      for (int i = 0; i < list->count(); ++i) entries << list->item(i)->text();
      current = list->currentRow();
    }
    if (current >= 0) entries[current] = "[" + entries[current] + "]";
    return entries.join(", ");
  }
};

}  // namespace mw
