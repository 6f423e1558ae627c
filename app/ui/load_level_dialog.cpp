#include "app/ui/load_level_dialog.h"

#include "app/level.h"
#include "app/ui/qt_text.h"
#include "platform/prompts.h"
#include "ui_149_load_level.h"

namespace mw {

LoadLevelDialog::LoadLevelDialog(QWidget* parent, const std::vector<std::string>& names)
    : QDialog(parent) {
  Ui::LoadLevelDialog ui;
  ui.setupUi(this);
  levels_ = ui.levelList;
  for (const std::string& name : names) levels_->addItem(FromText(name));
  levels_->setCurrentRow(0);
  connect(levels_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
  connect(ui.okButton, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui.cancelButton, &QPushButton::clicked, this, [this] { done(QDialog::Rejected); });
}

std::string LoadLevelDialog::SelectedLevel() const {
  const QListWidgetItem* item = levels_->currentItem();
  return item ? item->text().toStdString() : std::string();
}

bool RunLoadLevelDialog(QWidget* parent) {
  const std::vector<std::string> names = ListLevels();
  if (names.empty()) {
    ShowPrompt("No levels were found for this mod.", "Error", PromptButtons::Ok, PromptIcon::Stop);
    return false;
  }
  LoadLevelDialog dialog(parent, names);
  if (dialog.exec() != QDialog::Accepted) return false;
  ChooseLevel(dialog.SelectedLevel());
  return true;
}

}  // namespace mw
