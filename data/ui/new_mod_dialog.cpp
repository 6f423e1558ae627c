#include "data/mods.h"
#include "data/ui/mod_dialog_base.h"
#include "data/ui/mod_dialogs.h"
#include "platform/prompts.h"
#include "ui_151_new_mod.h"

namespace mw {
namespace {

class NewMod : public ModDialog<Ui::NewModForm> {
 public:
  NewMod(QWidget* owner, bool cancelAllowed) : ModDialog(owner, cancelAllowed) {
    form_.modNameEdit->selectAll();
  }

  // Stays open when the mod cannot be made under this name, or in this folder at all.
  void accept() override {
    if (CreateMod(form_.modNameEdit->text().toStdString())) {
      QDialog::accept();
    } else {
      AllowCancel();
      form_.modNameEdit->setFocus();
      form_.modNameEdit->selectAll();
    }
  }
};

}  // namespace

bool NewModConfig(QWidget* owner, bool cancelAllowed) {
  const PromptAnswer answer = ShowPrompt(
      "WARNING: Creating a new MOD configuration now will change your current map\n"
      "settings.  You will have to reload your map using the new MOD configuration\n"
      "in order for changes to take effect.\n\nDo you wish to proceed?",
      "New MOD Configuration", PromptButtons::YesNo);
  if (answer != PromptAnswer::Yes) return false;
  if (NewMod(owner, cancelAllowed).exec() != QDialog::Accepted) return false;
  if (!UseLastMod()) return false;
  const bool checked = EditModSettings(owner, cancelAllowed);
  LoadModContent();
  if (!checked) WarnOfMissingContent();
  return true;
}

}  // namespace mw
