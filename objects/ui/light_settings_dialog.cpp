#include <QDialog>

#include "objects/ui/environment_dialogs.h"
#include "objects/ui/environment_fields.h"
#include "ui_164_light_settings.h"

namespace mw {
namespace {

const Sky& SkyAt(int entry) { return modConfig.skies[static_cast<std::size_t>(entry)]; }

void ShowSky(const Ui::LightSettings& ui, const SkySettings& sky) {
  ShowInteger(*ui.heightEdit, sky.heightOffset);
  ShowInteger(*ui.rotationEdit, sky.rotationAngle);
  ShowFloat(*ui.directionXEdit, sky.sunDirection[0]);
  ShowFloat(*ui.directionYEdit, sky.sunDirection[1]);
  ShowFloat(*ui.directionZEdit, sky.sunDirection[2]);
}

void ShowSettings(const Ui::LightSettings& ui) {
  ShowColour(*ui.globalAmbientSwatch, modConfig.GlobalAmbientColor);
  ShowColour(*ui.ambientSwatch, modConfig.AmbientColor);
  ShowColour(*ui.diffuseSwatch, modConfig.DiffuseColor);
  ShowColour(*ui.specularSwatch, modConfig.SpecularColor);
  ShowSky(ui, modConfig.currentSky);
  for (int entry = 0; entry < AvailableSkies(); ++entry) {
    ui.skyCombo->addItem(QString::fromUtf8(SkyAt(entry).name.c_str()));
  }
  ui.skyCombo->setCurrentIndex(AvailableSkies() > 0 ? CurrentSkyEntry() : -1);
}

void StoreSettings(const Ui::LightSettings& ui) {
  ChangeSetting(modConfig.GlobalAmbientColor, ColourIn(*ui.globalAmbientSwatch));
  ChangeSetting(modConfig.AmbientColor, ColourIn(*ui.ambientSwatch));
  ChangeSetting(modConfig.DiffuseColor, ColourIn(*ui.diffuseSwatch));
  ChangeSetting(modConfig.SpecularColor, ColourIn(*ui.specularSwatch));
  SkySettings& sky = modConfig.currentSky;
  ChangeSetting(sky.heightOffset, IntegerIn(*ui.heightEdit));
  ChangeSetting(sky.rotationAngle, IntegerIn(*ui.rotationEdit));
  ChangeSetting(sky.sunDirection, Floats3{FloatIn(*ui.directionXEdit), FloatIn(*ui.directionYEdit),
                                          FloatIn(*ui.directionZEdit)});
  if (const int entry = ui.skyCombo->currentIndex(); entry >= 0) {
    ChangeSetting(sky.mesh, SkyAt(entry).settings.mesh.View());
  }
}

}  // namespace

bool LightSettingsDialog(QWidget* owner) {
  QDialog dialog(owner);
  Ui::LightSettings ui;
  ui.setupUi(&dialog);
  ShowSettings(ui);
  QObject::connect(ui.skyCombo, &QComboBox::currentIndexChanged, &dialog,
                   [&ui](int entry) { ShowSky(ui, SkyAt(entry).settings); });
  if (dialog.exec() != QDialog::Accepted) return false;
  StoreSettings(ui);
  return true;
}

}  // namespace mw
