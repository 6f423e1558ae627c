#include "terrain/ui/road_dialog.h"

#include <QDialog>

#include "core/text.h"
#include "terrain/material_map.h"
#include "terrain/roads.h"
#include "terrain/terrain.h"
#include "ui_155_create_road.h"

namespace mw {
namespace {

void ShowRoad(const Ui::CreateRoad& ui) {
  const std::string count = FormatText("%i of %i(Max)", terrain.roadPointCount, kMaxRoadPoints);
  ui.pointsText->setText(QString::fromStdString(count));
  for (const char* name : kRoadWidthNames) ui.widthCombo->addItem(name);
  ui.widthCombo->setCurrentIndex(terrain.roadWidth - 1);
  for (const char* name : kMaterialNames) ui.materialCombo->addItem(name);
  ui.materialCombo->setCurrentIndex(terrain.roadMaterial);
  ui.autoMaterialCheck->setChecked(terrain.roadAutoMaterial != 0);
}

void StoreRoad(const Ui::CreateRoad& ui) {
  terrain.roadWidth = ui.widthCombo->currentIndex() + 1;
  terrain.roadMaterial = ui.materialCombo->currentIndex();
  terrain.roadAutoMaterial = ui.autoMaterialCheck->isChecked();
}

}  // namespace

bool CreateRoadDialog(QWidget* owner) {
  QDialog dialog(owner);
  Ui::CreateRoad ui;
  ui.setupUi(&dialog);
  ShowRoad(ui);
  if (dialog.exec() != QDialog::Accepted) return false;
  StoreRoad(ui);
  return true;
}

}  // namespace mw
