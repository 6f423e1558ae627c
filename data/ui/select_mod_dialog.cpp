#include <filesystem>

#include "data/mods.h"
#include "data/ui/mod_dialog_base.h"
#include "data/ui/mod_dialogs.h"
#include "platform/disk.h"
#include "platform/prompts.h"
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
    const int before = modList.current;
    if (!SelectMod(form_.modListBox->currentRow())) return AllowCancel();
    if (modList.current != before) WarnOfMissingContent();
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
  if (modList.names.empty()) return NewModConfig(owner, cancelAllowed);
  return ModSelection(owner, cancelAllowed).exec() == QDialog::Accepted;
}

bool FindModsAtStart() {
  FindMods();
  if (!modList.names.empty() || FileExists(kModTemplateFile)) return true;
  ShowPrompt(
      "There is neither a mod configuration (.cfg) nor the template mpwr.cfg in the folder\n"
      "in which Mapwright was started:\n\n" +
          WorkingFolder() + "\n\nStart it in its working folder, which holds them.",
      "Error", PromptButtons::Ok, PromptIcon::Stop);
  return false;
}

bool ListMods(QWidget* owner) {
  if (!FindModsAtStart()) return false;
  std::error_code ignored;
  const bool hasOwnTemplate = std::filesystem::exists(NativePath(kModTemplateFile), ignored);
  if (!modList.names.empty() || hasOwnTemplate) SelectModDialog(owner, false);
  return true;
}

}  // namespace mw
