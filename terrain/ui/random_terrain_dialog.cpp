#include "terrain/ui/random_terrain_dialog.h"

#include <QDialog>

#include "ui_160_random_terrain.h"

namespace mw {
namespace {

// The label beside the slider shows its value.
void SetUpSlider(QSlider& slider, QLabel& label, int lowest, int highest, int value) {
  QObject::connect(&slider, &QSlider::valueChanged, &label, qOverload<int>(&QLabel::setNum));
  slider.setRange(lowest, highest);
  slider.setValue(value);
}

}  // namespace

std::optional<RandomTerrainParameters> RandomTerrainDialog(QWidget* owner) {
  QDialog dialog(owner);
  Ui::RandomTerrainForm form;
  form.setupUi(&dialog);
  RandomTerrainParameters parameters;
  SetUpSlider(*form.smoothnessSlider, *form.smoothnessValue, kMinSmoothPasses, kMaxSmoothPasses,
              parameters.smoothPasses);
  SetUpSlider(*form.heightSlider, *form.heightValue, kMinTerrainAmplitude, kMaxTerrainAmplitude,
              parameters.amplitude);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  parameters.smoothPasses = form.smoothnessSlider->value();
  parameters.amplitude = form.heightSlider->value();
  return parameters;
}

}  // namespace mw
