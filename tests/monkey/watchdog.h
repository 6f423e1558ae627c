// Ends the program when one event takes too long.
#pragma once

#include <QThread>
#include <atomic>
#include <pthread.h>

namespace mw::monkey {

class Watchdog : public QThread {
 public:
  // Made on the thread of the windows. `seconds` count only while the program is not stopped.
  explicit Watchdog(int seconds) : seconds_(seconds), watched_(pthread_self()) {}
  ~Watchdog() override {
    done_ = true;
    wait();
  }
  // Something was done.
  void Pat() { quiet_ = 0; }

 protected:
  void run() override;

 private:
  const int seconds_;
  const pthread_t watched_;
  std::atomic<int> quiet_ = 0;  // ticks
  std::atomic<bool> done_ = false;
};

}  // namespace mw::monkey
