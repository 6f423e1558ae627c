// Dialogs that only show a picture and go away at the next key or click: the splash (also "About")
// and the credits.
#pragma once

#include <QDialog>
#include <QTimer>

class QLabel;

namespace mw {

class PictureDialog : public QDialog {
 public:
  explicit PictureDialog(QWidget* parent) : QDialog(parent) {}

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
};

// Closes by itself after ten seconds, too.
class SplashDialog : public PictureDialog {
 public:
  explicit SplashDialog(QWidget* parent);
};

class CreditsDialog : public PictureDialog {
 public:
  explicit CreditsDialog(QWidget* parent);

  // One step of the scrolling: the picture rises a pixel, rests at its end, and starts again.
  void Tick();

 private:
  QLabel* picture_ = nullptr;
  QTimer ticks_;
  int counter_ = 0;
};

}  // namespace mw
