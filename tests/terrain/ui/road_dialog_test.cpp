#include "terrain/ui/road_dialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

#include "support/open_dialog.h"
#include "support/sandbox.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

struct OpenDialog : DialogUnderTest {
  QComboBox& Width() const { return Widget<QComboBox>("widthCombo"); }
  QComboBox& Material() const { return Widget<QComboBox>("materialCombo"); }
  QCheckBox& AutoMaterial() const { return Widget<QCheckBox>("autoMaterialCheck"); }
};

QStringList Entries(const QComboBox& list) {
  QStringList texts;
  for (int i = 0; i < list.count(); ++i) texts << list.itemText(i);
  return texts;
}

class RoadDialogTest : public SandboxTest {
 protected:
  RoadDialogTest() {
    CreateTerrain();
    terrain.roadPointCount = 7;
  }
  ~RoadDialogTest() override { DestroyTerrain(); }

  // Opens the dialog, lets the user act and presses a button.
  static bool Run(const char* button, const std::function<void(const OpenDialog&)>& act) {
    QTimer::singleShot(0, [&] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_TRUE(dialog);
      act({*dialog});
      dialog->findChild<QPushButton*>(button)->click();
    });
    return CreateRoadDialog(nullptr);
  }
};

TEST_F(RoadDialogTest, ShowsThePointsAndTheFirstSettings) {
  Run("cancelButton", [](const OpenDialog& dialog) {
    EXPECT_EQ(dialog.window.windowTitle(), "Create Road");
    EXPECT_EQ(dialog.Widget<QLabel>("pointsText").text(), "7 of 32(Max)");
    EXPECT_EQ(Entries(dialog.Width()),
              QStringList({"Path", "Single Lane", "Double Lane", "Quadruple Lane"}));
    EXPECT_EQ(dialog.Width().currentText(), "Path");
    EXPECT_EQ(dialog.Material().count(), 16);
    EXPECT_EQ(dialog.Material().currentText(), "Water");
    EXPECT_EQ(dialog.Material().itemText(15), "Paved Road");
    EXPECT_FALSE(dialog.AutoMaterial().isChecked());
    EXPECT_EQ(dialog.Widget<QLabel>("widthLabel").buddy(), &dialog.Width());
    EXPECT_EQ(dialog.Widget<QLabel>("materialLabel").buddy(), &dialog.Material());
  });
}

TEST_F(RoadDialogTest, TheMaterialCanBeChosenOnlyWhileItIsAdded) {
  Run("cancelButton", [](const OpenDialog& dialog) {
    EXPECT_FALSE(dialog.Material().isEnabled());
    dialog.AutoMaterial().click();
    EXPECT_TRUE(dialog.Material().isEnabled());
    dialog.AutoMaterial().click();
    EXPECT_FALSE(dialog.Material().isEnabled());
  });
}

TEST_F(RoadDialogTest, OkKeepsTheChoicesForThisRoadAndTheNext) {
  EXPECT_TRUE(Run("okButton", [](const OpenDialog& dialog) {
    dialog.Width().setCurrentText("Quadruple Lane");
    dialog.AutoMaterial().click();
    dialog.Material().setCurrentText("Gravel");
  }));
  EXPECT_EQ(terrain.roadWidth, 4);
  EXPECT_EQ(terrain.roadMaterial, 8);
  EXPECT_EQ(terrain.roadAutoMaterial, 1);
  Run("cancelButton", [](const OpenDialog& dialog) {
    EXPECT_EQ(dialog.Width().currentText(), "Quadruple Lane");
    EXPECT_EQ(dialog.Material().currentText(), "Gravel");
    EXPECT_TRUE(dialog.AutoMaterial().isChecked());
    EXPECT_TRUE(dialog.Material().isEnabled());
  });
}

TEST_F(RoadDialogTest, CancelChangesNothing) {
  EXPECT_FALSE(Run("cancelButton", [](const OpenDialog& dialog) {
    dialog.Width().setCurrentText("Double Lane");
    dialog.AutoMaterial().click();
    dialog.Material().setCurrentText("Mud");
  }));
  EXPECT_EQ(terrain.roadWidth, 1);
  EXPECT_EQ(terrain.roadMaterial, 1);
  EXPECT_EQ(terrain.roadAutoMaterial, 0);
}

}  // namespace
}  // namespace mw
