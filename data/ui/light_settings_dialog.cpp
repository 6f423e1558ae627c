#include "data/ui/environment_dialogs.h"
#include "data/ui/environment_fields.h"
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

// A sky that the mod does not list has an entry of its own behind the others.
void ShowSkies(QComboBox& list) {
  for (int entry = 0; entry < AvailableSkies(); ++entry) {
    list.addItem(QString::fromUtf8(SkyAt(entry).name.c_str()));
  }
  const std::optional<int> current = CurrentSkyEntry();
  if (!current) {
    const QString mesh = QString::fromUtf8(modConfig.currentSky.mesh.c_str());
    list.addItem(mesh.isEmpty() ? "(none)" : "(not in the list: " + mesh + ")");
  }
  list.setCurrentIndex(current.value_or(AvailableSkies()));
}

void ShowLight(Ui::LightSettings& ui) {
  ShowColour(*ui.globalAmbientSwatch, modConfig.GlobalAmbientColor);
  ShowColour(*ui.ambientSwatch, modConfig.AmbientColor);
  ShowColour(*ui.diffuseSwatch, modConfig.DiffuseColor);
  ShowColour(*ui.specularSwatch, modConfig.SpecularColor);
  ShowSky(ui, modConfig.currentSky);
  ShowSkies(*ui.skyCombo);
  DisableWhatIsNotKept({{ui.globalAmbientSwatch, "renderer.globalAmbientColor"},
                        {ui.ambientSwatch, "renderer.ambientColor"},
                        {ui.diffuseSwatch, "renderer.diffuseColor"},
                        {ui.specularSwatch, "renderer.specularColor"},
                        {ui.heightEdit, "sky.changeOfsSkyHeight"},
                        {ui.rotationEdit, "sky.setRotAngle"},
                        {ui.directionXEdit, "sky.sunLightDirectionVec"},
                        {ui.directionYEdit, "sky.sunLightDirectionVec"},
                        {ui.directionZEdit, "sky.sunLightDirectionVec"},
                        {ui.skyCombo, "GeometryTemplate.file"}});
  QObject::connect(ui.skyCombo, &QComboBox::currentIndexChanged, ui.skyCombo, [&ui](int entry) {
    ShowSky(ui, entry < AvailableSkies() ? SkyAt(entry).settings : modConfig.currentSky);
  });
  ui.globalAmbientSwatch->setFocus();  // a button, which would have to yield to the default one
}

void StoreLight(const Ui::LightSettings& ui) {
  ChangeSetting(modConfig.GlobalAmbientColor, ColourIn(*ui.globalAmbientSwatch));
  ChangeSetting(modConfig.AmbientColor, ColourIn(*ui.ambientSwatch));
  ChangeSetting(modConfig.DiffuseColor, ColourIn(*ui.diffuseSwatch));
  ChangeSetting(modConfig.SpecularColor, ColourIn(*ui.specularSwatch));
  SkySettings& sky = modConfig.currentSky;
  ChangeSetting(sky.heightOffset, IntegerIn(*ui.heightEdit));
  ChangeSetting(sky.rotationAngle, IntegerIn(*ui.rotationEdit));
  ChangeSetting(sky.sunDirection, Floats3{FloatIn(*ui.directionXEdit), FloatIn(*ui.directionYEdit),
                                          FloatIn(*ui.directionZEdit)});
  if (const int entry = ui.skyCombo->currentIndex(); entry < AvailableSkies()) {
    ChangeSetting(sky.mesh, SkyAt(entry).settings.mesh.View());
  }
}

}  // namespace

bool LightSettingsDialog(QWidget* owner) {
  return RunSettingsDialog<Ui::LightSettings>(owner, ShowLight, StoreLight);
}

}  // namespace mw
