#include "data/ui/environment_dialogs.h"
#include "data/ui/environment_fields.h"
#include "ui_165_fog_settings.h"

namespace mw {
namespace {

void ShowFog(const Ui::FogSettings& ui) {
  ui.enabledCheck->setChecked(modConfig.VertexFogEnable != 0);
  ShowColour(*ui.colourSwatch, modConfig.FogColor);
  ShowFloat(*ui.beginEdit, modConfig.fogStart);
  ShowFloat(*ui.endEdit, modConfig.fogEnd);
  DisableWhatIsNotKept({{ui.enabledCheck, "renderer.vertexFogEnable"},
                        {ui.colourSwatch, "renderer.fogColorVec"},
                        {ui.beginEdit, "renderer.fogstart"},
                        {ui.endEdit, "renderer.fogend"}});
}

void StoreFog(const Ui::FogSettings& ui) {
  // Any number but 0 is on, and stays as it is.
  if (ui.enabledCheck->isChecked() != (modConfig.VertexFogEnable != 0)) {
    ChangeSetting<std::uint8_t>(modConfig.VertexFogEnable, ui.enabledCheck->isChecked());
  }
  ChangeSetting(modConfig.FogColor, ColourIn(*ui.colourSwatch));
  ChangeSetting(modConfig.fogStart, Truncated(NumberIn(*ui.beginEdit)));
  ChangeSetting(modConfig.fogEnd, Truncated(NumberIn(*ui.endEdit)));
}

}  // namespace

bool FogSettingsDialog(QWidget* owner) {
  return RunSettingsDialog<Ui::FogSettings>(owner, ShowFog, StoreFog);
}

}  // namespace mw
