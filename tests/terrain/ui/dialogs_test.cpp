#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <limits>

#include "core/text.h"
#include "data/textures.h"
#include "objects/ui/run_dialog.h"
#include "support/golden.h"
#include "terrain/shadow_work.h"
#include "terrain/surface_assignments.h"
#include "terrain/ui/random_terrain_dialog.h"
#include "terrain/ui/road_dialog.h"
#include "terrain/ui/sample_bits_dialog.h"
#include "terrain/ui/shadow_dialog.h"
#include "terrain/ui/shadow_grid.h"
#include "terrain/ui/surface_assignments_dialog.h"
#include "terrain/ui/terrain_ui_test.h"

namespace mw {
namespace {

using TerrainDialogsTest = TerrainUiTest;

// What a user does with a control, by its name.
void Use(const OpenDialog& dialog, const char* name, const char* choice) {
  auto& widget = dialog.Widget<QWidget>(name);
  if (auto* list = qobject_cast<QComboBox*>(&widget)) {
    EXPECT_TRUE(list->isEnabled() && list->findText(choice) >= 0) << choice;
    list->setCurrentText(choice);
  } else {
    widget.setFocus();
    QTest::keyClick(&widget, qobject_cast<QSlider*>(&widget) ? Qt::Key_End : Qt::Key_Space);
  }
}

TEST_F(TerrainDialogsTest, WhatIsChosenCountsAsListedUnlessItIsCancelled) {
  std::string listing;
  const auto road = [&] {
    const bool confirmed = CreateRoadDialog(nullptr);
    listing += FormatText("%s, width %i, material %i, added %i\n", confirmed ? "OK" : "Cancel",
                          terrain.roadWidth, terrain.roadMaterial, terrain.roadAutoMaterial);
  };
  const auto random = [&] {
    const auto chosen = RandomTerrainDialog(nullptr);
    listing += !chosen ? "Cancel\n"
                       : FormatText("OK, base %i, amplitude %i, %i passes\n", chosen->base,
                                    chosen->amplitude, chosen->smoothPasses);
  };
  const auto bits = [&] {
    const auto chosen = SampleBitsDialog(nullptr, "Select Export Bits");
    listing += !chosen ? "Cancel\n" : FormatText("OK, %i bits\n", static_cast<int>(*chosen));
  };
  const auto shadows = [&] {
    const bool confirmed = ShadowDialog(nullptr);
    listing += FormatText("%s, detail %g, %s\n", confirmed ? "OK" : "Cancel",
                          terrain.shadowSettings.ShadowPrecision, DescribeTilesToTrace().c_str());
  };
  using Uses = std::vector<std::pair<const char*, const char*>>;
  const Uses wideRoad = {
      {"autoMaterialCheck", ""}, {"widthCombo", "Quadruple Lane"}, {"materialCombo", "Gravel"}};
  const Uses extremes = {{"smoothnessSlider", ""}, {"heightSlider", ""}};
  const struct {
    std::function<void()> run;
    Uses uses;
    const char* button;
  } rows[] = {
      {road, wideRoad, "cancelButton"},
      {road, wideRoad, "okButton"},
      {road, {{"materialCombo", "Mud"}}, "okButton"},
      {road, {{"autoMaterialCheck", ""}}, "okButton"},
      {random, extremes, "cancelButton"},
      {random, {}, "okButton"},
      {random, extremes, "okButton"},
      {bits, {}, "okButton"},
      {bits, {{"sixteenBitsRadio", ""}}, "okButton"},
      {bits, {{"twentyFourBitsRadio", ""}}, "okButton"},
      {bits, {{"twentyFourBitsRadio", ""}, {"eightBitsRadio", ""}}, "okButton"},
      {bits, {{"sixteenBitsRadio", ""}}, "cancelButton"},
      {shadows, {{"selectAllButton", ""}, {"detailCombo", "High 3.0"}}, "cancelButton"},
      {shadows, {{"selectAllButton", ""}, {"detailCombo", "Low 1.0"}}, "okButton"},
      {shadows, {{"clearButton", ""}}, "cancelButton"},
      {shadows, {{"clearButton", ""}}, "okButton"},
  };
  levelTextures.SurfaceAssigned[2][1] = levelTextures.SurfaceAssigned[7][7] = true;
  for (const auto& row : rows) {
    WhenDialogOpens([&](const OpenDialog& dialog) {
      listing += dialog.window.windowTitle().toStdString() + ": ";
      for (const auto& [name, choice] : row.uses) Use(dialog, name, choice);
      for (const char* number : {"smoothnessValue", "heightValue"}) {
        if (const auto* label = dialog.window.findChild<QLabel*>(number))
          listing += label->text().toStdString() + " ";
      }
      if (const auto* list = dialog.window.findChild<QComboBox*>("materialCombo"))
        listing += list->isEnabled() ? "" : "(grey material) ";
      dialog.Press(row.button);
    });
    row.run();
  }
  WhenDialogOpens([](const OpenDialog& dialog) {
    QTest::keyClick(&dialog.window, Qt::Key_Escape);
    EXPECT_FALSE(dialog.window.isVisible());
  });
  bits();
  ExpectGolden("terrain/dialog_answers.txt", listing);
}

// The grids of tiles. A cell's place is a pixel near its far corner, clear of text and lines.
QPoint Place(int column, int row) { return {32 * column + 28, 255 - 32 * row - 3}; }

void ClickTile(const OpenDialog& dialog, int column, int row) {
  QTest::mouseClick(&dialog.Widget<QWidget>("grid"), Qt::LeftButton, {}, Place(column, row));
}

// What a grid shows, a sign for each tile, and where its yellow lines run.
std::string Shown(QWidget& grid) {
  const QImage image = grid.grab().toImage();
  const auto colour = [&](const QPoint& at) {
    return image.pixelColor(at * grid.devicePixelRatioF());
  };
  std::string shown;
  for (int row = 7; row >= 0; --row) {
    for (int column = 0; column < 8; ++column) {
      const std::pair<QColor, char> signs[] = {
          {{115, 210, 100}, 'a'}, {{115, 111, 200}, 'f'}, {{215, 110, 100}, '-'}, {{0, 0, 0}, '.'}};
      const auto* const sign =
          std::ranges::find(signs, colour(Place(column, row)), &std::pair<QColor, char>::first);
      const bool marked = colour({32 * column + 12, 255 - 32 * row - 4}) == QColor(255, 255, 0);
      shown += marked ? 's' : sign == std::end(signs) ? '?' : sign->second;
    }
    shown += '\n';
  }
  for (int at = 0; at < 256; ++at) {
    if (colour({at, 20}) == QColor(255, 220, 60))
      shown += "line at x = " + std::to_string(at) + '\n';
    if (colour({20, at}) == QColor(255, 220, 60))
      shown += "line at y = " + std::to_string(at) + '\n';
  }
  return shown + grid.accessibleDescription().toStdString() + '\n';
}

TEST_F(TerrainDialogsTest, TheGridsShowTheTilesOfTheLevelAsListed) {
  constexpr int kLeast = std::numeric_limits<int>::min(), kMost = std::numeric_limits<int>::max();
  const struct {
    int size, offsetX, offsetY;
  } levels[] = {{512, 0, 0}, {512, 1, 3}, {512, -1, -2},        {256, 2, 0},
                {512, 8, 7}, {256, 0, 0}, {1024, kLeast, kMost}};
  std::string listing;
  for (const auto& [size, offsetX, offsetY] : levels) {
    modConfig.MaterialSize = size;
    modConfig.TexOffsetX = offsetX;
    modConfig.TexOffsetY = offsetY;
    levelTextures.SurfaceAssigned = {};
    levelTextures.SurfaceAssigned[2][1] = levelTextures.SurfaceAssigned[3][3] = true;
    terrain.shadowSettings.ShadowSelected = {};
    terrain.shadowSettings.ShadowSelected[3][3] = true;
    SurfaceGrid tiles;
    ShadowGrid shadows;
    listing += FormatText("==== level of %i cells, offsets %i, %i\n", size, offsetX, offsetY) +
               Shown(tiles) + "-- shadows\n" + Shown(shadows) + "-- default\n";
    for (const bool changes : {true, false}) {
      editor.levelModified = false;
      AssignAllTiles();
      EXPECT_EQ(editor.levelModified, changes);
    }
    tiles.Refresh();
    listing += Shown(tiles);
  }
  ExpectGolden("terrain/surface_grids.txt", listing);
}

TEST_F(TerrainDialogsTest, ClicksSelectTheTilesOfTheLevelWhoseShadowsAreTraced) {
  modConfig.MaterialSize = 256;
  modConfig.TexOffsetX = 1;
  WhenDialogOpens([](const OpenDialog& dialog) {
    for (const auto& [column, row] : {std::pair{3, 1}, {2, 2}, {0, 0}, {7, 7}})
      ClickTile(dialog, column, row);
    dialog.Press("okButton");
  });
  EXPECT_TRUE(ShadowDialog(nullptr));
  decltype(terrain.shadowSettings.ShadowSelected) expected{};
  expected[2][1] = expected[1][2] = true;
  EXPECT_EQ(terrain.shadowSettings.ShadowSelected, expected) << "no tile of the level is elsewhere";
}

class SurfaceAssignmentsDialogTest : public TerrainUiTest {
 protected:
  void RunAndPress(const char* button, const std::function<void(const OpenDialog&)>& act) {
    WhenDialogOpens([=](const OpenDialog& dialog) {
      act(dialog);
      dialog.Press(button);
    });
    SurfaceAssignmentsDialog(nullptr, [this] { ++viewDrawn; });
  }
  int viewDrawn = 0;
};

TEST_F(SurfaceAssignmentsDialogTest, AClickTogglesATileAndShowsItInTheView) {
  modConfig.TexOffsetX = 1;
  RunAndPress("okButton", [&](const OpenDialog& dialog) {
    ClickTile(dialog, 4, 2);
    EXPECT_EQ(dialog.Widget<QWidget>("grid").accessibleDescription(), "1 tile assigned: 3x2");
    EXPECT_EQ(viewDrawn, 1);
    ClickTile(dialog, 0, 2);
    EXPECT_EQ(viewDrawn, 1) << "no tile there";
    QTest::mouseClick(&dialog.Widget<QWidget>("grid"), Qt::RightButton, {}, Place(4, 2));
  });
  EXPECT_EQ(viewDrawn, 1);
  EXPECT_TRUE(levelTextures.SurfaceAssigned[3][2]);
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(SurfaceAssignmentsDialogTest, CancelTakesEverythingBackButTheLoadedTextureSet) {
  levelTextures.SurfaceAssigned[2][1] = true;
  modConfig.TexOffsetX = 1;
  modConfig.TexOffsetY = -2;
  const auto before = levelTextures.SurfaceAssigned;
  for (const bool wasModified : {false, true}) {
    for (const char* press : {"defaultButton", "clearButton"}) {
      editor.levelModified = wasModified;
      editor.textureSetName = "Default";
      RunAndPress("cancelButton", [&](const OpenDialog& dialog) {
        ClickTile(dialog, 5, 3);
        viewDrawn = 0;
        dialog.Press(press);
        EXPECT_EQ(viewDrawn, 1);
        EXPECT_EQ(modConfig.TexOffsetX, 0);
        EXPECT_EQ(levelTextures.SurfaceAssigned[7][7], press == std::string_view("defaultButton"));
        dialog.Widget<QComboBox>("textureSetCombo").setCurrentText("Winter");
        EXPECT_TRUE(levelTextures.textureSetChosen && editor.levelModified);
        viewDrawn = 0;
      });
      EXPECT_EQ(viewDrawn, 1) << "as it was before";
      EXPECT_EQ(levelTextures.SurfaceAssigned, before) << press;
      EXPECT_EQ(modConfig.TexOffsetX, 1);
      EXPECT_EQ(modConfig.TexOffsetY, -2);
      EXPECT_FALSE(levelTextures.textureSetChosen);
      EXPECT_EQ(editor.levelModified, wasModified);
      EXPECT_EQ(editor.textureSetName, "Winter");
    }
  }
}

TEST_F(SurfaceAssignmentsDialogTest, ShowMapBrightensTheGridByTheMiniMapsBits) {
  terrain.miniMap.grey.fill(0);
  terrain.miniMap.SetPixel(128 - 127, 128 - 1, 0x8C);  // column 127, row 1: the upper right corner
  RunAndPress("okButton", [](const OpenDialog& dialog) {
    const auto corner = [&dialog] {
      QWidget& grid = dialog.Widget<QWidget>("grid");
      return grid.grab().toImage().pixelColor(QPoint(254, 2) * grid.devicePixelRatioF());
    };
    const QColor free = corner();
    dialog.Widget<QCheckBox>("showMapCheck").click();
    EXPECT_EQ(corner(), QColor(115 | 0x8C, 111 | 0x8C, 200 | 0x8C));
    dialog.Widget<QCheckBox>("showMapCheck").click();
    EXPECT_EQ(corner(), free);
  });
}

TEST_F(SurfaceAssignmentsDialogTest, AChosenTextureSetIsLoadedAtOnceOrItsMissingIndexTold) {
  RunAndPress("okButton", [this](const OpenDialog& dialog) {
    auto& sets = dialog.Widget<QComboBox>("textureSetCombo");
    sets.setCurrentText("Winter");
    EXPECT_EQ(editor.textureSetName, "Winter");
    EXPECT_EQ(textureSet.textures[2].name, "Snow");
    EXPECT_EQ(viewDrawn, 1);
    levelTextures.textureSetChosen = editor.levelModified = false;
    Answer({PromptAnswer::Ok});
    sets.setCurrentText("Default");
    EXPECT_FALSE(levelTextures.textureSetChosen || editor.levelModified);
    ExpectBoxes({{"The texture set Default has no index.dat that can be read.", "Error",
                  PromptButtons::Ok, PromptIcon::Stop}});
    for (const bool loaded : {false, true}) {
      textureSet.detail.loaded = loaded;
      sets.showPopup();
      QTest::keyClick(sets.view(), Qt::Key_Return);
      EXPECT_EQ(levelTextures.textureSetChosen, loaded) << "though it is the one that was shown";
    }
  });
}

}  // namespace
}  // namespace mw
