#include <QFileDialog>

#include "data/mods.h"
#include "data/ui/mod_dialog_base.h"
#include "data/ui/mod_dialogs.h"
#include "platform/disk.h"
#include "ui_152_edit_mod.h"

namespace mw {
namespace {

class ModSettings : public ModDialog<Ui::EditModForm> {
 public:
  ModSettings(QWidget* owner, bool cancelAllowed) : ModDialog(owner, cancelAllowed) {
    setWindowTitle(windowTitle() + " - " + QString::fromStdString(CurrentModName()));
    form_.gamePathEdit->setText(QString::fromUtf8(modConfig.GamePath.c_str()));
    for (const std::string& file : ObjectListChoices()) {
      form_.objectListBox->addItem(QString::fromStdString(file));
      if (modConfig.ObjectsList == file) {
        form_.objectListBox->setCurrentIndex(form_.objectListBox->count() - 1);
      }
    }
    connect(form_.browseButton, &QPushButton::clicked, this, [this] { Browse(); });
  }

  // Stays open when the game path cannot be used.
  void accept() override {
    if (ApplyModSettings(form_.gamePathEdit->text().toStdString(),
                         form_.objectListBox->currentText().toStdString())) {
      QDialog::accept();
    } else {
      AllowCancel();
      form_.gamePathEdit->setFocus();
    }
  }

 private:
  void Browse() {
    const std::string current = form_.gamePathEdit->text().toStdString();
    const QString folder = QFileDialog::getExistingDirectory(
        this, "Choose your root Varnhold directory:",
        QString::fromStdString(NativePath(current).string()),
        QFileDialog::ShowDirsOnly | QFileDialog::DontUseNativeDialog);
    if (folder.isEmpty()) return;
    form_.gamePathEdit->setText(QString::fromStdString(GamePathFromInput(folder.toStdString())));
  }
};

}  // namespace

bool EditModSettings(QWidget* owner, bool cancelAllowed) {
  return ModSettings(owner, cancelAllowed).exec() == QDialog::Accepted;
}

}  // namespace mw
