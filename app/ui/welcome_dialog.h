// Asks what to do first: open a level, create one, or leave. Shown until a level is there.
#pragma once

#include <QDialog>

#include "app/shell.h"

namespace mw {

class WelcomeDialog : public QDialog {
 public:
  explicit WelcomeDialog(QWidget* parent);

  WelcomeChoice Ask();

 protected:
  // Escape and the close box choose a new level.
  void reject() override;

 private:
  void Choose(WelcomeChoice choice) { done(static_cast<int>(choice)); }
};

}  // namespace mw
