// Asks what to do first: open a level, create one, or leave. Shown until a level is there.
#pragma once

#include <QDialog>
#include <vector>

#include "app/recent_levels.h"
#include "app/shell.h"

namespace mw {

// What it offers beside the usual choices.
struct WelcomeOffer {
  bool sampleGame = false;
  std::vector<RecentLevel> recent;  // newest first
};

class WelcomeDialog : public QDialog {
 public:
  static constexpr std::size_t kMostRecent = 3;

  WelcomeDialog(QWidget* parent, const WelcomeOffer& offer);

  WelcomeChoice Ask();

 protected:
  // Escape and the close box choose a new level.
  void reject() override;

 private:
  // The last of its buttons, or null.
  QWidget* ShowRecent(const std::vector<RecentLevel>& recent, QWidget* group);
  void Choose(WelcomeChoice choice) { done(static_cast<int>(choice)); }
};

}  // namespace mw
