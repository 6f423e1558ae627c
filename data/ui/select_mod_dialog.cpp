#include "data/mods.h"
#include "data/ui/mod_dialog_base.h"
#include "data/ui/mod_dialogs.h"
#include "ui_150_select_mod.h"

namespace mw {
namespace {

class ModSelection : public ModDialog<Ui::SelectModForm> {
 public:
  ModSelection(QWidget* owner, bool cancelAllowed) : ModDialog(owner, cancelAllowed) {
    connect(form_.modListBox, &QListWidget::itemDoubleClicked, this, [this] { accept(); });
    connect(form_.newButton, &QPushButton::clicked, this, [this] { MakeNewMod(); });
    connect(form_.deleteButton, &QPushButton::clicked, this, [this] { DeleteSelectedMod(); });
    FillList(0);
    modList.picked = -1;
  }

  // Stays open when the configuration of the selected mod cannot be read.
  void accept() override {
    if (!SelectMod(form_.modListBox->currentRow())) return;
    modList.picked = form_.modListBox->currentRow();
    QDialog::accept();
  }

 private:
  void FillList(int selectedRow) {
    form_.modListBox->clear();
    for (const std::string& name : modList.names) {
      form_.modListBox->addItem(QString::fromStdString(name));
    }
    form_.modListBox->setCurrentRow(selectedRow);
    form_.modListBox->setFocus();
  }

  void MakeNewMod() {
    if (NewModConfig(this, true)) FillList(static_cast<int>(modList.names.size()) - 1);
  }

  void DeleteSelectedMod() {
    if (DeleteMod(form_.modListBox->currentRow())) FillList(0);
  }
};

}  // namespace

bool SelectModDialog(QWidget* owner, bool cancelAllowed) {
  return ModSelection(owner, cancelAllowed).exec() == QDialog::Accepted;
}

void ListMods(QWidget* owner) {
  FindMods();
  if (modList.names.empty()) {
    NewModConfig(owner, false);
  } else {
    SelectModDialog(owner, false);
  }
}

}  // namespace mw
