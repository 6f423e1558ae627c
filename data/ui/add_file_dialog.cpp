#include "data/ui/add_file_dialog.h"

#include <QDialog>
#include <QFileDialog>

#include "data/add_file.h"
#include "data/mod_config.h"
#include "ui_210_add_file.h"

namespace mw {
namespace {

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

// Stays open when nothing was added, so that another source or destination can be chosen.
void ImportSource(QDialog& dialog, const Ui::AddFileToArchive& ui) {
  if (AddFileToArchive(ui.sourceEdit->text().toStdString(),
                       ui.destinationCombo->currentText().toStdString())) {
    dialog.accept();
  }
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
