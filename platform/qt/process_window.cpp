#include "platform/qt/process_window.h"

#include <chrono>
#include <utility>

#include "ui_211_process.h"

namespace mw {

using namespace std::chrono_literals;

ProcessWindow::ProcessWindow(QWidget* owner, const QString& title, const QString& activity,
                             std::function<void()> cancel)
    : QDialog(owner), ui_(std::make_unique<Ui::ProcessWindow>()), cancel_(std::move(cancel)) {
  ui_->setupUi(this);
  setWindowTitle(title);
  ui_->activityText->setText(activity);
  // Modal, so that the desktop keeps it in front of the windows that take no input.
  setModal(true);
  started_.start();
  connect(&seconds_, &QTimer::timeout, this, &ProcessWindow::ShowElapsedTime);
  seconds_.start(1s);
  ShowElapsedTime();
}

ProcessWindow::~ProcessWindow() = default;

void ProcessWindow::reject() {
  if (!ui_->cancelButton->isEnabled()) return;
  ui_->cancelButton->setEnabled(false);
  ui_->activityText->setText("Stopping the game...");
  cancel_();
}

void ProcessWindow::ShowElapsedTime() {
  ui_->elapsedText->setText("Elapsed time: " + ElapsedTimeText(started_.elapsed() / 1000));
}

QString ElapsedTimeText(qint64 seconds) {
  const qint64 minutes = seconds / 60, hours = minutes / 60;
  const QString rest = QString("%1").arg(seconds % 60, 2, 10, QChar('0'));
  if (hours == 0) return QString("%1:%2").arg(minutes).arg(rest);
  return QString("%1:%2:%3").arg(hours).arg(minutes % 60, 2, 10, QChar('0')).arg(rest);
}

}  // namespace mw
