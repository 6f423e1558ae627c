#include "terrain/ui/surface_assignments_dialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/editor_state.h"
#include "data/mod_config.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "support/open_dialog.h"
#include "support/sandbox.h"
#include "terrain/level_textures.h"
#include "terrain/mini_map_picture.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

const QColor kAssigned(115, 210, 100), kFree(115, 111, 200), kBeforeOffset(215, 110, 100);

struct OpenDialog : DialogUnderTest {
  QWidget& Grid() const { return Widget<QWidget>("grid"); }
  void Press(const char* button) const { Widget<QPushButton>(button).click(); }
  // A cell by its column from the left and its row from the bottom, and a pixel near its far
  // corner, clear of text and lines.
  static QPoint Place(int column, int row) { return {32 * column + 28, 255 - 32 * row - 3}; }
  void Click(int column, int row) const {
    QTest::mouseClick(&Grid(), Qt::LeftButton, {}, Place(column, row));
  }
  QColor Colour(int column, int row) const {
    return Grid().grab().toImage().pixelColor(Place(column, row) * Grid().devicePixelRatioF());
  }
};

class SurfaceAssignmentsDialogTest : public SandboxTest {
 protected:
  SurfaceAssignmentsDialogTest() {
    levelTextures = {};
    textureSet = {};
    modConfig = {};
    modConfig.MaterialSize = 512;
    editor.textureSetName = "Default";
    CreateFolder("TextureSets");
    for (const char* name : {"Winter", "Default", "old.set"}) {
      CreateFolder(std::string("TextureSets/") + name);
    }
    EXPECT_TRUE(WriteWholeFile("TextureSets/Winter/index.dat", "Texture=2,Snow,snow.bmp\n"));
  }

  // Runs the dialog, lets the user act, and cancels if it is still open then.
  void Run(const std::function<void(const OpenDialog&)>& act) {
    bool opened = false;
    QTimer::singleShot(0, [&] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_TRUE(dialog);
      opened = true;
      act({*dialog});
      if (dialog->isVisible()) dialog->findChild<QPushButton*>("cancelButton")->click();
    });
    SurfaceAssignmentsDialog(nullptr, [this] { ++viewDrawn; });
    EXPECT_TRUE(opened);
  }

  int viewDrawn = 0;
};

TEST_F(SurfaceAssignmentsDialogTest, ShowsTheTilesWithTheirOffsets) {
  levelTextures.SurfaceAssigned[2][1] = true;
  modConfig.TexOffsetX = 1;
  Run([](const OpenDialog& dialog) {
    EXPECT_EQ(dialog.window.windowTitle(), "Surface Map Assignments");
    EXPECT_EQ(dialog.Grid().pos(), QPoint(10, 10));
    EXPECT_EQ(dialog.Grid().size(), QSize(256, 256));
    EXPECT_EQ(dialog.Colour(3, 1), kAssigned);
    EXPECT_EQ(dialog.Colour(2, 1), kFree);
    EXPECT_EQ(dialog.Colour(0, 5), kBeforeOffset);
    EXPECT_EQ(dialog.Colour(7, 7), kFree);
    EXPECT_EQ(dialog.Grid().accessibleName(), "Surface Tiles");
    EXPECT_EQ(dialog.Grid().accessibleDescription(), "1 tile assigned: 2x1");
  });
}

TEST_F(SurfaceAssignmentsDialogTest, OutsideASmallLevelTheGridIsBlack) {
  modConfig.MaterialSize = 256;
  Run([](const OpenDialog& dialog) {
    EXPECT_EQ(dialog.Colour(3, 3), kFree);
    EXPECT_EQ(dialog.Colour(4, 3), QColor(Qt::black));
    EXPECT_EQ(dialog.Colour(3, 4), QColor(Qt::black));
  });
}

TEST_F(SurfaceAssignmentsDialogTest, AClickTogglesATileAndShowsItInTheView) {
  modConfig.TexOffsetX = 1;
  Run([&](const OpenDialog& dialog) {
    dialog.Click(4, 2);
    EXPECT_TRUE(levelTextures.SurfaceAssigned[3][2]);
    EXPECT_EQ(dialog.Colour(4, 2), kAssigned);
    EXPECT_EQ(viewDrawn, 1);
    dialog.Click(0, 2);
    EXPECT_EQ(viewDrawn, 1) << "no tile there";
    dialog.Press("okButton");
  });
  EXPECT_TRUE(levelTextures.SurfaceAssigned[3][2]);
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(SurfaceAssignmentsDialogTest, CancelTakesEverythingBack) {
  levelTextures.SurfaceAssigned[2][1] = true;
  modConfig.TexOffsetX = 1;
  modConfig.TexOffsetY = -2;
  const auto before = levelTextures.SurfaceAssigned;
  for (const char* press : {"defaultButton", "clearButton"}) {
    Run([&](const OpenDialog& dialog) {
      dialog.Click(5, 3);
      dialog.Press(press);
      EXPECT_EQ(modConfig.TexOffsetX, 0);
      EXPECT_NE(levelTextures.SurfaceAssigned, before);
    });
    EXPECT_EQ(levelTextures.SurfaceAssigned, before) << press;
    EXPECT_EQ(modConfig.TexOffsetX, 1);
    EXPECT_EQ(modConfig.TexOffsetY, -2);
    EXPECT_FALSE(editor.levelModified);
  }
}

TEST_F(SurfaceAssignmentsDialogTest, ShowMapBrightensTheGridByTheMiniMapsBits) {
  terrain.miniMap.grey.fill(0);
  terrain.miniMap.SetPixel(128 - 127, 128 - 1, 0x8C);  // column 127, row 1: the upper right corner
  Run([](const OpenDialog& dialog) {
    dialog.Widget<QCheckBox>("showMapCheck").click();
    const QImage grid = dialog.Grid().grab().toImage();
    EXPECT_EQ(grid.pixelColor(254, 2), QColor(115 | 0x8C, 111 | 0x8C, 200 | 0x8C));
    EXPECT_EQ(dialog.Colour(3, 3), kFree);
    dialog.Widget<QCheckBox>("showMapCheck").click();
    EXPECT_EQ(dialog.Grid().grab().toImage().pixelColor(254, 2), kFree);
  });
}

TEST_F(SurfaceAssignmentsDialogTest, AChosenTextureSetIsLoadedAtOnce) {
  Run([](const OpenDialog& dialog) {
    auto& sets = dialog.Widget<QComboBox>("textureSetCombo");
    ASSERT_EQ(sets.count(), 2) << "not the folder with a dot";
    EXPECT_EQ(sets.itemText(0), "Default");
    EXPECT_EQ(sets.currentText(), "Default");
    EXPECT_EQ(dialog.Widget<QLabel>("textureSetLabel").buddy(), &sets);
    sets.setCurrentText("Winter");
    EXPECT_EQ(editor.textureSetName, "Winter");
    EXPECT_EQ(textureSet.textures[2].name, "Snow");
  });
  EXPECT_EQ(editor.textureSetName, "Winter") << "the set stays, whatever becomes of the tiles";
}

TEST_F(SurfaceAssignmentsDialogTest, ATextureSetWithoutAnIndexIsTold) {
  editor.textureSetName = "Winter";
  scripted::script.answers = {PromptAnswer::Ok};
  Run([](const OpenDialog& dialog) {
    dialog.Widget<QComboBox>("textureSetCombo").setCurrentText("Default");
  });
  ASSERT_EQ(scripted::script.prompts.size(), 1u);
  EXPECT_EQ(scripted::script.prompts[0].text,
            "The texture set Default has no index.dat that can be read.");
}

}  // namespace
}  // namespace mw
