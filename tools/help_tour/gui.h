// Between the thread of the tour and the one of the windows. A click may open a dialog and return
// only when that is closed, so the tour sends its input without waiting for its end.
#pragma once

#include <QApplication>
#include <QString>
#include <QThread>
#include <functional>
#include <stdexcept>
#include <type_traits>

namespace mw::help {

// The tour cannot go on; what() is UTF-8.
class TourError : public std::runtime_error {
 public:
  explicit TourError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

// Runs `function` on the thread of the windows and returns its result.
template <typename Function>
auto OnGui(Function function) {
  using Result = std::invoke_result_t<Function>;
  if constexpr (std::is_void_v<Result>) {
    QMetaObject::invokeMethod(qApp, function, Qt::BlockingQueuedConnection);
  } else {
    Result result{};
    QMetaObject::invokeMethod(
        qApp, [&] { result = function(); }, Qt::BlockingQueuedConnection);
    return result;
  }
}

// Runs `input` there and returns when it has been handled, or is being handled by a dialog that it
// opened.
inline void Send(const std::function<void()>& input) {
  QMetaObject::invokeMethod(qApp, input, Qt::QueuedConnection);
  OnGui([] {});
}

// Asks `find` on the thread of the windows until its result is true; throws after a minute of
// waiting, in which the time that the program does not run does not count.
template <typename Find>
auto Await(const QString& what, Find find) {
  constexpr int kAttempts = 3000;
  constexpr unsigned long kPause = 20;  // milliseconds
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (auto found = OnGui(find)) return found;
    QThread::msleep(kPause);
  }
  throw TourError("waited in vain for " + what);
}

}  // namespace mw::help
