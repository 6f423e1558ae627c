// Keeps the user's input from the program's windows for a while; they are still painted.
#pragma once

#include <QObject>

class QWidget;

namespace mw {

// While one of these lives, what the user presses, turns, drags or closes is dropped, except in one
// window. What was pressed before can be let go. They may nest.
class InputLock : public QObject {
 public:
  explicit InputLock(const QWidget* freeWindow);
  ~InputLock() override;
  static bool IsHeld();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool IsFree(const QObject* watched) const;

  const QWidget* freeWindow_;
};

}  // namespace mw
