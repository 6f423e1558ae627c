#include "terrain/ui/shadow_dialog.h"

#include <QDialog>

#include "terrain/shadow_work.h"
#include "terrain/terrain.h"
#include "ui_177_terrain_shadows.h"

namespace mw {

bool ShadowDialog(QWidget* owner) {
  const auto before = terrain.shadowSettings.ShadowSelected;
  QDialog dialog(owner);
  Ui::TerrainShadowsForm form;
  form.setupUi(&dialog);
  for (const char* const detail : kShadowDetails) form.detailCombo->addItem(detail);
  form.detailCombo->setCurrentIndex(ShadowDetailIndex());
  const auto select = [&](bool selected) {
    SelectAllShadows(selected);
    form.grid->Refresh();
  };
  QObject::connect(form.selectAllButton, &QPushButton::clicked, [&] { select(true); });
  QObject::connect(form.clearButton, &QPushButton::clicked, [&] { select(false); });
  QObject::connect(form.detailCombo, &QComboBox::currentIndexChanged, [](int index) {
    terrain.shadowSettings.ShadowPrecision = ShadowDetailValue(index);
  });
  if (dialog.exec() == QDialog::Accepted) return true;
  terrain.shadowSettings.ShadowSelected = before;
  return false;
}

}  // namespace mw
