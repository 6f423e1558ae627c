// Keeps the user's input from the program's windows for a while; they are still painted.
#pragma once

#include <QObject>

namespace mw {

// While one of these lives, what the user presses, turns, drags or closes is dropped. What was
// pressed before can be let go. They may nest.
class InputLock : public QObject {
 public:
  InputLock();
  ~InputLock() override;
  static bool IsHeld();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace mw
