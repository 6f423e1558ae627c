#include "app/ui/picture_dialog.h"

#include <QMouseEvent>
#include <QScreen>
#include <chrono>

#include "resources/pictures.h"
#include "ui_187_splash.h"
#include "ui_200_credits.h"

namespace mw {
namespace {

using namespace std::chrono_literals;

constexpr auto kSplashTime = 10s;
constexpr auto kCreditsTick = 50ms;
constexpr int kScrollEnd = -1280, kScrollRestart = -1450;  // counter values

bool IsModifier(int key) {
  switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
      return true;
    default:
      return false;
  }
}

}  // namespace

void PictureDialog::keyPressEvent(QKeyEvent* event) {
  // A modifier begins a combination of keys, such as the desktop's to close this window: if the
  // dialog went away with it, the rest would close the window behind.
  if (!IsModifier(event->key())) accept();
}

void PictureDialog::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton) accept();
}

SplashDialog::SplashDialog(QWidget* parent) : PictureDialog(parent) {
  Ui::SplashDialog ui;
  ui.setupUi(this);
  ui.pictureLabel->setPixmap(SplashPicture());
  if (!parent) {
    adjustSize();
    move(screen()->availableGeometry().center() - rect().center());
  }
  QTimer::singleShot(kSplashTime, this, &QDialog::accept);
}

CreditsDialog::CreditsDialog(QWidget* parent) : PictureDialog(parent) {
  Ui::CreditsDialog ui;
  ui.setupUi(this);
  picture_ = ui.pictureLabel;
  picture_->setPixmap(CreditsPicture());
  connect(&ticks_, &QTimer::timeout, this, &CreditsDialog::Tick);
  ticks_.start(kCreditsTick);
}

void CreditsDialog::Tick() {
  --counter_;
  if (counter_ > kScrollEnd) picture_->move(0, counter_);
  if (counter_ < kScrollRestart) counter_ = 0;
}

}  // namespace mw
