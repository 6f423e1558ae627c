#include "app/ui/level_statistics_dialog.h"

#include <QDialog>

#include "app/ui/qt_text.h"
#include "data/mod_config.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "ui_188_level_statistics.h"

namespace mw {
namespace {

// Only its button closes it: Escape does nothing, and neither does the close box.
class StatisticsWindow : public QDialog {
 public:
  using QDialog::QDialog;

 protected:
  void reject() override {}
};

QString SizeText(int side) { return QStringLiteral("%1x%1").arg(side); }

QString UsedText(std::size_t used, std::size_t capacity) {
  return QStringLiteral("%1 of %2").arg(used).arg(capacity);
}

QString EntitiesUsed(EntityKind kind, std::size_t capacity) {
  return UsedText(entities.Of(kind).instances.size(), capacity);
}

}  // namespace

void LevelStatisticsDialog(QWidget* owner) {
  StatisticsWindow dialog(owner);
  Ui::LevelStatisticsForm form;
  form.setupUi(&dialog);
  form.mapNameValue->setText(FromText(modConfig.LevelName.View()));
  form.mapSizeValue->setText(SizeText(modConfig.MaterialSize));
  form.worldSizeValue->setText(SizeText(modConfig.WorldSize));
  form.objectsValue->setText(UsedText(objectStore.objects.size(), kMaxStaticObjects));
  form.controlPointsValue->setText(
      EntitiesUsed(EntityKind::ControlPoint, kMaxControlPointTemplates));
  form.soldierSpawnsValue->setText(EntitiesUsed(EntityKind::SoldierSpawn, kMaxInstances));
  form.objectSpawnsValue->setText(EntitiesUsed(EntityKind::ObjectSpawn, kMaxInstances));
  dialog.exec();
}

}  // namespace mw
