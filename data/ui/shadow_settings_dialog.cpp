#include "data/ui/environment_dialogs.h"
#include "data/ui/environment_fields.h"
#include "ui_166_shadow_settings.h"

namespace mw {
namespace {

void ShowShadow(const Ui::ShadowSettings& ui) {
  ui.ambientSwatch->SetColour(modConfig.terrainShadowAmbient);
  ShowInteger(*ui.cullEdit, modConfig.terrainShadowSamplingCull);
  ShowFloat(*ui.intensityEdit, modConfig.ShadowColor);
  DisableWhatIsNotKept({{ui.ambientSwatch, "Terrain.ShadowAmbient"},
                        {ui.cullEdit, "Terrain.ShadowSamplingCullY"},
                        {ui.intensityEdit, "shadow.shadowColor"}});
  ui.ambientSwatch->setFocus();  // a button, which would have to yield to the default one
}

void StoreShadow(const Ui::ShadowSettings& ui) {
  ChangeSetting(modConfig.terrainShadowAmbient, ui.ambientSwatch->Colour());
  ChangeSetting(modConfig.terrainShadowSamplingCull, IntegerIn(*ui.cullEdit));
  ChangeSetting(modConfig.ShadowColor, FloatIn(*ui.intensityEdit));
}

}  // namespace

bool ShadowSettingsDialog(QWidget* owner) {
  return RunSettingsDialog<Ui::ShadowSettings>(owner, ShowShadow, StoreShadow);
}

}  // namespace mw
