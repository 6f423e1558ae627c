#include "data/ui/add_file_dialog.h"

#include <QDialog>
#include <QFileDialog>
#include <string>
#include <string_view>

#include "data/game_file.h"
#include "data/mod_config.h"
#include "platform/prompts.h"
#include "ui_210_add_file.h"

namespace mw {
namespace {

std::string LastPart(std::string_view path) {
  return std::string(path.substr(path.find_last_of("/\\") + 1));
}

QString LevelMemberFolder() {
  return QString::fromStdString(modConfig.levelsFolder.String() + modConfig.LevelName.String());
}

void ChooseSource(QDialog& dialog, const Ui::AddFileToArchive& ui) {
  // The detail in parentheses, which is not shown, is this platform's pattern for every file.
  const QString source = QFileDialog::getOpenFileName(
      &dialog, "Source File", {}, "All Files *.* (*)", nullptr,
      QFileDialog::DontUseNativeDialog | QFileDialog::HideNameFilterDetails);
  if (source.isEmpty()) return;
  ui.sourceEdit->setText(source);
  ui.okButton->setEnabled(true);
  ui.okButton->setFocus();
}

void ImportSource(QDialog& dialog, const Ui::AddFileToArchive& ui) {
  const std::string source = ui.sourceEdit->text().toStdString();
  const std::string destination = ui.destinationCombo->currentText().toStdString();
  ClearGameFileError();
  if (!ImportDiskFile(source, destination + "\\" + LastPart(source))) {
    ShowPrompt(GameFileError(), "Error", PromptButtons::Ok, PromptIcon::Stop);
  }
  dialog.accept();
}

}  // namespace

void AddFileDialog(QWidget* owner) {
  QDialog dialog(owner);
  Ui::AddFileToArchive ui;
  ui.setupUi(&dialog);
  ui.destinationCombo->addItem(LevelMemberFolder());
  QObject::connect(ui.browseButton, &QPushButton::clicked, [&] { ChooseSource(dialog, ui); });
  QObject::connect(ui.okButton, &QPushButton::clicked, [&] { ImportSource(dialog, ui); });
  dialog.exec();
}

}  // namespace mw
