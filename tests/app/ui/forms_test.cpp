// Every dialog as its form describes it: the keys of its fields and buttons, and the way of Tab.
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gmock/gmock.h>
#include <set>

#include "data/ui/radio_focus.h"
#include "ui_149_load_level.h"
#include "ui_150_select_mod.h"
#include "ui_151_new_mod.h"
#include "ui_152_edit_mod.h"
#include "ui_154_new_level.h"
#include "ui_155_create_road.h"
#include "ui_160_random_terrain.h"
#include "ui_164_light_settings.h"
#include "ui_165_fog_settings.h"
#include "ui_166_shadow_settings.h"
#include "ui_167_water_settings.h"
#include "ui_171_surface_assignments.h"
#include "ui_175_object_browser.h"
#include "ui_177_terrain_shadows.h"
#include "ui_180_sample_bits.h"
#include "ui_187_splash.h"
#include "ui_188_level_statistics.h"
#include "ui_2005_edit_properties.h"
#include "ui_2006_team_selection.h"
#include "ui_200_credits.h"
#include "ui_202_welcome.h"
#include "ui_210_add_file.h"
#include "ui_211_process.h"
#include "ui_212_sample_game.h"
#include "ui_214_check_level.h"
#include "ui_217_save_picture.h"

namespace mw {
namespace {

template <typename Ui>
void SetUp(QDialog& dialog) {
  Ui().setupUi(&dialog);
}

using Form = void (*)(QDialog&);
const Form kForms[] = {
    SetUp<Ui::LoadLevelDialog>,   SetUp<Ui::SelectModForm>,       SetUp<Ui::NewModForm>,
    SetUp<Ui::EditModForm>,       SetUp<Ui::NewLevelForm>,        SetUp<Ui::CreateRoad>,
    SetUp<Ui::RandomTerrainForm>, SetUp<Ui::LightSettings>,       SetUp<Ui::FogSettings>,
    SetUp<Ui::ShadowSettings>,    SetUp<Ui::WaterSettings>,       SetUp<Ui::SurfaceAssignmentsForm>,
    SetUp<Ui::ObjectBrowserForm>, SetUp<Ui::TerrainShadowsForm>,  SetUp<Ui::SampleBitsForm>,
    SetUp<Ui::SplashDialog>,      SetUp<Ui::LevelStatisticsForm>, SetUp<Ui::EditProperties>,
    SetUp<Ui::TeamSelection>,     SetUp<Ui::CreditsDialog>,       SetUp<Ui::WelcomeDialog>,
    SetUp<Ui::AddFileToArchive>,  SetUp<Ui::ProcessWindow>,       SetUp<Ui::SampleGameForm>,
    SetUp<Ui::CheckLevelForm>,    SetUp<Ui::SavePictureForm>};

// What Tab can reach, in the order in which the form names it: that in which it is read.
std::vector<QWidget*> Controls(const QDialog& dialog) {
  std::vector<QWidget*> controls;
  for (auto* widget : dialog.findChildren<QWidget*>()) {
    // Of an editable list: its field, or the list that opens.
    const bool isPart =
        qobject_cast<QComboBox*>(widget->parentWidget()) || widget->window() != &dialog;
    if ((widget->focusPolicy() & Qt::TabFocus) && !isPart) controls.push_back(widget);
  }
  return controls;
}

TEST(FormsTest, AreAllLookedAt) {
  const QDir resources(MAPWRIGHT_SOURCE "/resources", "*.ui");
  EXPECT_EQ(resources.entryList().size(), static_cast<qsizetype>(std::size(kForms)));
}

TEST(FormsTest, EveryFieldAndButtonHasAKeyOfItsOwn) {
  for (const Form form : kForms) {
    QDialog dialog;
    form(dialog);
    SCOPED_TRACE(dialog.objectName().toStdString());
    std::set<QString> keys;
    std::set<const QWidget*> reached;
    const auto take = [&](const QWidget* control, const QString& text) {
      const QString key = QKeySequence::mnemonic(text).toString();
      if (key.isEmpty()) return;
      EXPECT_TRUE(keys.insert(key).second) << key.toStdString() << " stands for two";
      reached.insert(control);
    };
    for (const auto* label : dialog.findChildren<QLabel*>()) take(label->buddy(), label->text());
    for (const auto* button : dialog.findChildren<QAbstractButton*>()) take(button, button->text());
    for (const QWidget* control : Controls(dialog)) {
      EXPECT_TRUE(reached.contains(control)) << control->objectName().toStdString();
    }
  }
}

TEST(FormsTest, TabGoesInReadingOrderAndIntoTheCheckedOneOfAGroup) {
  for (const Form form : kForms) {
    QDialog dialog;
    form(dialog);
    SCOPED_TRACE(dialog.objectName().toStdString());
    for (auto* widget : dialog.findChildren<QWidget*>()) widget->setEnabled(true);
    const auto radios = dialog.findChildren<QRadioButton*>();
    if (!radios.empty()) radios.last()->setChecked(true);
    LetTabGoToCheckedRadios(dialog);
    const auto controls = Controls(dialog);
    // Of buttons a dialog takes the default one rather than the first, unless it is told.
    if (!controls.empty() && qobject_cast<QPushButton*>(controls.front())) {
      controls.front()->setFocus();
    }
    dialog.setAttribute(Qt::WA_DontShowOnScreen);
    dialog.show();
    QWidget* current = dialog.focusWidget();
    for (const QWidget* control : controls) {
      if (!current || control != controls.front()) {
        QTest::keyClick(current ? current : &dialog, Qt::Key_Tab);
        current = dialog.focusWidget();
      }
      ASSERT_TRUE(current);
      EXPECT_EQ(current->objectName().toStdString(), control->objectName().toStdString());
    }
  }
}

}  // namespace
}  // namespace mw
