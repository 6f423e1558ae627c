// The wait cursor, which stays until the mouse has really moved: Qt also reports moves of the
// windows under it.
#pragma once

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QObject>

namespace mw {

class WaitCursor : public QObject {
 public:
  void Show() {
    startedAt_ = QCursor::pos();
    if (shown_) return;
    shown_ = true;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    qApp->installEventFilter(this);
  }
  void Hide() {
    if (!shown_) return;
    shown_ = false;
    qApp->removeEventFilter(this);
    QApplication::restoreOverrideCursor();
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::MouseMove && QCursor::pos() != startedAt_) Hide();
    return false;
  }

 private:
  bool shown_ = false;
  QPoint startedAt_;
};

}  // namespace mw
