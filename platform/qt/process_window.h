// The small window that is shown while the program waits for a process that can be cancelled.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>
#include <functional>
#include <memory>

namespace Ui {
class ProcessWindow;
}

namespace mw {

class ProcessWindow : public QDialog {
 public:
  // `cancel` is called, once, for Cancel, Escape or the close box. The window stays until it is
  // destroyed.
  ProcessWindow(QWidget* owner, const QString& title, const QString& activity,
                std::function<void()> cancel);
  ~ProcessWindow() override;

  void reject() override;

 private:
  void ShowElapsedTime();

  std::unique_ptr<Ui::ProcessWindow> ui_;
  std::function<void()> cancel_;
  QElapsedTimer started_;
  QTimer seconds_;
};

// "0:07", "59:59", "1:00:00".
QString ElapsedTimeText(qint64 seconds);

}  // namespace mw
