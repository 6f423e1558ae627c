#include "terrain/ui/shadow_dialog.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

#include "data/mod_config.h"
#include "support/open_dialog.h"
#include "support/sandbox.h"
#include "terrain/shadow_work.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

class ShadowDialogTest : public SandboxTest {
 protected:
  ShadowDialogTest() {
    levelTextures = {};
    terrain.shadowSettings = {};
    modConfig = {};
    modConfig.MaterialSize = 256;
    modConfig.TexOffsetX = 1;
    levelTextures.SurfaceAssigned[2][1] = true;
  }

  // Runs the dialog, lets the user act, and presses the button.
  static bool Run(const char* button, const std::function<void(const DialogUnderTest&)>& act) {
    QTimer::singleShot(0, [&] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_TRUE(dialog);
      act({*dialog});
      dialog->findChild<QPushButton*>(button)->click();
    });
    return ShadowDialog(nullptr);
  }
  static void Click(const DialogUnderTest& dialog, int column, int row) {
    QTest::mouseClick(&dialog.Widget<QWidget>("grid"), Qt::LeftButton, {},
                      QPoint(32 * column + 28, 255 - 32 * row - 28));
  }
  // In the lower left corner of a cell.
  static QColor Mark(const DialogUnderTest& dialog, int column, int row) {
    QWidget& grid = dialog.Widget<QWidget>("grid");
    return grid.grab().toImage().pixelColor(QPoint(32 * column + 12, 255 - 32 * row - 4) *
                                            grid.devicePixelRatioF());
  }
};

TEST_F(ShadowDialogTest, AClickSelectsATileOfTheLevelAndAssignedOnesAreMarked) {
  const QColor yellow(255, 255, 0);
  EXPECT_TRUE(Run("okButton", [&](const DialogUnderTest& dialog) {
    EXPECT_EQ(dialog.window.windowTitle(), "Generate Terrain Shadows");
    EXPECT_NE(Mark(dialog, 3, 1), yellow);
    Click(dialog, 3, 1);
    EXPECT_EQ(Mark(dialog, 3, 1), yellow);
    Click(dialog, 2, 2);
    EXPECT_NE(Mark(dialog, 2, 2), yellow) << "selected, but not assigned";
    Click(dialog, 0, 0);
    Click(dialog, 7, 7);
    EXPECT_EQ(dialog.Widget<QWidget>("grid").accessibleDescription(), "1 tile selected: 2x1");
  }));
  decltype(terrain.shadowSettings.ShadowSelected) expected{};
  expected[2][1] = expected[1][2] = true;
  EXPECT_EQ(terrain.shadowSettings.ShadowSelected, expected) << "no tile of the level is elsewhere";
}

TEST_F(ShadowDialogTest, SelectAllAndClearAndTheDetail) {
  terrain.shadowSettings.ShadowPrecision = 3;
  Run("okButton", [&](const DialogUnderTest& dialog) {
    auto& detail = dialog.Widget<QComboBox>("detailCombo");
    EXPECT_EQ(detail.currentText(), "High 3.0");
    EXPECT_EQ(detail.count(), 8);
    detail.setCurrentIndex(7);
    dialog.Widget<QPushButton>("selectAllButton").click();
  });
  EXPECT_EQ(terrain.shadowSettings.ShadowPrecision, 4);
  EXPECT_TRUE(terrain.shadowSettings.ShadowSelected[7][7]);
  EXPECT_FALSE(Run("cancelButton", [&](const DialogUnderTest& dialog) {
    dialog.Widget<QPushButton>("clearButton").click();
    EXPECT_FALSE(terrain.shadowSettings.ShadowSelected[7][7]);
  }));
  EXPECT_TRUE(terrain.shadowSettings.ShadowSelected[7][7]) << "Cancel takes the tiles back";
}

}  // namespace
}  // namespace mw
