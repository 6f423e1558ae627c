#include <QDialog>

#include "objects/ui/environment_dialogs.h"
#include "objects/ui/environment_fields.h"
#include "ui_165_fog_settings.h"

namespace mw {
namespace {

void ShowSettings(const Ui::FogSettings& ui) {
  ui.enabledCheck->setChecked(modConfig.VertexFogEnable != 0);
  ShowColour(*ui.colourSwatch, modConfig.FogColor);
  ShowFloat(*ui.beginEdit, static_cast<float>(modConfig.fogStart));
  ShowFloat(*ui.endEdit, static_cast<float>(modConfig.fogEnd));
}

void StoreSettings(const Ui::FogSettings& ui) {
  // Any number but 0 is on, and stays as it is.
  if (ui.enabledCheck->isChecked() != (modConfig.VertexFogEnable != 0)) {
    ChangeSetting<std::uint8_t>(modConfig.VertexFogEnable, ui.enabledCheck->isChecked());
  }
  ChangeSetting(modConfig.FogColor, ColourIn(*ui.colourSwatch));
  ChangeSetting(modConfig.fogStart, Truncated(FloatIn(*ui.beginEdit)));
  ChangeSetting(modConfig.fogEnd, Truncated(FloatIn(*ui.endEdit)));
}

}  // namespace

bool FogSettingsDialog(QWidget* owner) {
  QDialog dialog(owner);
  Ui::FogSettings ui;
  ui.setupUi(&dialog);
  ShowSettings(ui);
  if (dialog.exec() != QDialog::Accepted) return false;
  StoreSettings(ui);
  return true;
}

}  // namespace mw
