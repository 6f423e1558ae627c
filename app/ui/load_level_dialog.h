// Lets the user pick one of the current mod's levels.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

class QListWidget;

namespace mw {

class LoadLevelDialog : public QDialog {
 public:
  // The first of the names is selected.
  LoadLevelDialog(QWidget* parent, const std::vector<std::string>& names);

  std::string SelectedLevel() const;

 protected:
  // Only the buttons end the dialog: Escape does nothing, and neither does the close box.
  void reject() override {}

 private:
  QListWidget* levels_ = nullptr;
};

// Shows the levels of the current mod and makes the chosen one the level to open. False when
// cancelled, or when there are none (a message was shown).
bool RunLoadLevelDialog(QWidget* parent);

}  // namespace mw
