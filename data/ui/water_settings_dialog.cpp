#include <QRegularExpressionValidator>
#include <array>
#include <string>
#include <vector>

#include "core/text.h"
#include "data/ui/environment_dialogs.h"
#include "data/ui/environment_fields.h"
#include "ui_167_water_settings.h"

namespace mw {
namespace {

constexpr int kWaterTextures = 8, kNormalMaps = 2;

// One of the three textures of the water: its settings, and the controls that show them.
struct TextureLayer {
  PathText& texture;
  Floats2& direction;
  float& speed;
  float& tileFactor;
  const char* offered;  // format of the names in its list
  int offeredCount;
  QComboBox& textureCombo;
  QLineEdit &directionXEdit, &directionYEdit, &speedEdit;
  QComboBox& tileCombo;
  // The commands that keep them.
  const char *textureCommand, *directionCommand, *speedCommand, *tileCommand;
};

std::array<TextureLayer, 3> Layers(const Ui::WaterSettings& ui) {
  ModConfig& m = modConfig;
  return {{{m.WaterTexLayer1, m.WaterScrollDirection1, m.WaterScrollLayer1, m.WaterTileLayer1,
            "texture/water%02d", kWaterTextures, *ui.texture1Combo, *ui.direction1XEdit,
            *ui.direction1YEdit, *ui.speed1Edit, *ui.tile1Combo, "water.texLayer1",
            "water.scrollDirection1", "water.scrollLayer1", "water.tileLayer1"},
           {m.WaterTexLayer2, m.WaterScrollDirection2, m.WaterScrollLayer2, m.WaterTileLayer2,
            "texture/water%02d", kWaterTextures, *ui.texture2Combo, *ui.direction2XEdit,
            *ui.direction2YEdit, *ui.speed2Edit, *ui.tile2Combo, "water.texLayer2",
            "water.scrollDirection2", "water.scrollLayer2", "water.tileLayer2"},
           {m.WaterNormalMap, m.WaterScrollDirectionNormalmap, m.WaterScrollNormalmap,
            m.WaterTileNormalMap, "texture/normalMap%02d", kNormalMaps, *ui.normalMapCombo,
            *ui.directionNormalMapXEdit, *ui.directionNormalMapYEdit, *ui.speedNormalMapEdit,
            *ui.tileNormalMapCombo, "water.normalMap", "water.scrollDirectionNormalmap",
            "water.scrollNormalmap", "water.tileNormalmap"}}};
}

QString Shown(const PathText& texture) { return QString::fromUtf8(texture.c_str()); }

void ShowTexture(const TextureLayer& layer) {
  for (int number = 1; number <= layer.offeredCount; ++number) {
    layer.textureCombo.addItem(QString::asprintf(layer.offered, number));
  }
  layer.textureCombo.lineEdit()->setMaxLength(static_cast<int>(PathText::kCapacity));
  // In a script a blank ends the name, and what follows would be lost.
  layer.textureCombo.setValidator(
      new QRegularExpressionValidator(QRegularExpression("\\S*"), &layer.textureCombo));
  layer.textureCombo.setEditText(Shown(layer.texture));
}

void ShowTileFactor(const TextureLayer& layer) {
  for (const char* text : kTileFactorTexts) layer.tileCombo.addItem(text);
  std::optional<int> entry = TileFactorEntry(layer.tileFactor);
  if (!entry) {
    layer.tileCombo.addItem(QString::fromStdString(FormatText("%f", double{layer.tileFactor})));
    entry = layer.tileCombo.count() - 1;
  }
  layer.tileCombo.setCurrentIndex(*entry);
}

void ShowWater(const Ui::WaterSettings& ui) {
  ui.specularCheck->setChecked(modConfig.WaterSpecularEnable);
  ShowColour(*ui.shallowSwatch, modConfig.WaterColor);
  ShowColour(*ui.deepSwatch, modConfig.WaterDeepColor);
  ShowFloat(*ui.alphaDepthEdit, modConfig.WaterAlphaDepth);
  ShowFloat(*ui.shallowAlphaEdit, modConfig.WaterShallowAlpha);
  std::vector<SettingControl> controls{{ui.specularCheck, "water.specularEnable"},
                                       {ui.shallowSwatch, "water.color"},
                                       {ui.deepSwatch, "water.deepColor"},
                                       {ui.alphaDepthEdit, "water.waterAlphaDepth"},
                                       {ui.shallowAlphaEdit, "water.waterShallowAlpha"}};
  for (const TextureLayer& layer : Layers(ui)) {
    ShowTexture(layer);
    ShowFloat(layer.directionXEdit, layer.direction[0]);
    ShowFloat(layer.directionYEdit, layer.direction[1]);
    ShowFloat(layer.speedEdit, layer.speed);
    ShowTileFactor(layer);
    controls.insert(controls.end(), {{&layer.textureCombo, layer.textureCommand},
                                     {&layer.directionXEdit, layer.directionCommand},
                                     {&layer.directionYEdit, layer.directionCommand},
                                     {&layer.speedEdit, layer.speedCommand},
                                     {&layer.tileCombo, layer.tileCommand}});
  }
  DisableWhatIsNotKept(controls);
}

// A name of bytes that are no text is shown with marks in their place: it stays as it is unless it
// was changed.
void StoreTexture(const TextureLayer& layer) {
  const QString typed = layer.textureCombo.currentText();
  if (typed != Shown(layer.texture)) ChangeSetting(layer.texture, typed.toStdString());
}

// The entry beyond the known factors is the layer's own, which stays as it is.
void StoreTileFactor(const TextureLayer& layer) {
  const int entry = layer.tileCombo.currentIndex();
  const bool isKnown = entry >= 0 && entry < static_cast<int>(kTileFactorTexts.size());
  if (isKnown) ChangeSetting(layer.tileFactor, TileFactorOf(entry));
}

void StoreWater(const Ui::WaterSettings& ui) {
  ChangeSetting(modConfig.WaterSpecularEnable, ui.specularCheck->isChecked());
  ChangeSetting(modConfig.WaterColor, ColourIn(*ui.shallowSwatch));
  ChangeSetting(modConfig.WaterDeepColor, ColourIn(*ui.deepSwatch));
  ChangeSetting(modConfig.WaterAlphaDepth, FloatIn(*ui.alphaDepthEdit));
  ChangeSetting(modConfig.WaterShallowAlpha, FloatIn(*ui.shallowAlphaEdit));
  for (const TextureLayer& layer : Layers(ui)) {
    StoreTexture(layer);
    ChangeSetting(layer.direction,
                  Floats2{FloatIn(layer.directionXEdit), FloatIn(layer.directionYEdit)});
    ChangeSetting(layer.speed, FloatIn(layer.speedEdit));
    StoreTileFactor(layer);
  }
}

}  // namespace

bool WaterSettingsDialog(QWidget* owner) {
  return RunSettingsDialog<Ui::WaterSettings>(owner, ShowWater, StoreWater);
}

}  // namespace mw
