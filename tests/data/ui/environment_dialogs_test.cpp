#include "data/ui/environment_dialogs.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/level_archive_test.h"
#include "data/ui/colour_swatch.h"
#include "objects/ui/run_dialog.h"
#include "support/sandbox.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

QLineEdit& Box(const OpenDialog& dialog, const char* name) {
  return dialog.Widget<QLineEdit>(name);
}
QComboBox& List(const OpenDialog& dialog, const char* name) {
  return dialog.Widget<QComboBox>(name);
}
ColourSwatch& Swatch(const OpenDialog& dialog, const char* name) {
  return dialog.Widget<ColourSwatch>(name);
}
QColor Painted(const OpenDialog& dialog, const char* name) {
  const QImage picture = Swatch(dialog, name).grab().toImage();
  return picture.pixelColor(picture.rect().center());
}

class EnvironmentDialogsTest : public LevelArchiveTest {
 protected:
  EnvironmentDialogsTest() {
    for (const char* script : {"init.con", "init/terrain.con"}) Put(script, "");
    Put("init/skyandsun.con", "GeometryTemplate.create StandardMesh SkyBox\r\n");
    editor.levelLoaded = true;
  }
  ~EnvironmentDialogsTest() override { modConfig = {}; }

  using Dialog = bool(QWidget*);
  static bool Run(Dialog& dialog, const std::function<void(const OpenDialog&)>& act) {
    WhenDialogOpens(act);
    return dialog(nullptr);
  }
  static bool RunAndPressOk(Dialog& dialog, const std::function<void(const OpenDialog&)>& act) {
    return Run(dialog, [act](const OpenDialog& open) {
      act(open);
      open.Press("okButton");
    });
  }
};

TEST_F(EnvironmentDialogsTest, ColoursAreShownAndStoredAsBytes) {
  modConfig.FogColor = {1, 0.5f, 0};
  EXPECT_TRUE(RunAndPressOk(FogSettingsDialog, [](const OpenDialog& dialog) {
    EXPECT_EQ(dialog.window.windowTitle(), "Fog Settings");
    EXPECT_EQ(Painted(dialog, "colourSwatch"), QColor(255, 127, 0));
    EXPECT_EQ(Swatch(dialog, "colourSwatch").accessibleName(), "Fog Color");
    EXPECT_EQ(Swatch(dialog, "colourSwatch").accessibleDescription(), "Red 255, green 127, blue 0");
  }));
  EXPECT_FLOAT_EQ(modConfig.FogColor[0], 1);
  EXPECT_NEAR(modConfig.FogColor[1], 0.498, 0.0005);
  EXPECT_EQ(modConfig.FogColor[2], 0);
}

TEST_F(EnvironmentDialogsTest, TheFirstFieldHasTheFocusThoughItIsAButton) {
  const std::pair<Dialog*, const char*> cases[] = {{LightSettingsDialog, "globalAmbientSwatch"},
                                                   {ShadowSettingsDialog, "ambientSwatch"}};
  for (const auto& [run, first] : cases) {
    RunAndPressOk(*run, [first = first](const OpenDialog& dialog) {
      EXPECT_EQ(dialog.window.focusWidget(), &Swatch(dialog, first));
    });
  }
}

TEST_F(EnvironmentDialogsTest, AStoredColourStaysTheSameWhenItIsStoredAgain) {
  for (int byte = 0; byte < 256; ++byte) {
    const ColourBytes colour{static_cast<std::uint8_t>(byte), 0, 255};
    EXPECT_EQ(BytesOf(FloatsOf(colour)), colour);
    const float saved = std::stof(std::to_string(FloatsOf(colour)[0]));
    EXPECT_EQ(BytesOf({saved, 0, 1}), colour) << "after it was written into a script";
  }
  EXPECT_EQ(BytesOf({-1, 7, 0.68f}), (ColourBytes{0, 255, 173})) << "out of range";
}

TEST_F(EnvironmentDialogsTest, TheControlsOfTheWatersThreeLayersAreToldApartByTheirNames) {
  Run(WaterSettingsDialog, [](const OpenDialog& dialog) {
    QStringList names;
    for (const char* layer : {"1", "2", "NormalMap"}) {
      for (const char* box : {"direction%1XEdit", "direction%1YEdit", "speed%1Edit"})
        names << Box(dialog, qPrintable(QString(box).arg(layer))).accessibleName();
      names << List(dialog, qPrintable(QString("tile%1Combo").arg(layer))).accessibleDescription();
    }
    for (const char* list : {"texture1Combo", "texture2Combo", "normalMapCombo"})
      names << List(dialog, list).accessibleDescription();
    EXPECT_FALSE(names.contains(""));
    EXPECT_EQ(names.removeDuplicates(), 0) << names.join(", ").toStdString();
    dialog.Press("cancelButton");
  });
}

TEST_F(EnvironmentDialogsTest, SwatchesOpenTheColourChooser) {
  modConfig.DiffuseColor = {1, 0, 0};
  const auto choose = [](const QColor& before, const QColor& colour) {
    WhenDialogOpens([=](const OpenDialog& chooser) {
      auto* const colours = qobject_cast<QColorDialog*>(&chooser.window);
      ASSERT_TRUE(colours);
      EXPECT_EQ(colours->windowTitle(), "Choose Color");
      EXPECT_EQ(colours->currentColor(), before);
      colours->setCurrentColor(colour);
      colours->accept();
    });
  };
  EXPECT_TRUE(RunAndPressOk(LightSettingsDialog, [&](const OpenDialog& dialog) {
    ColourSwatch& swatch = Swatch(dialog, "diffuseSwatch");
    QTest::mouseClick(&swatch, Qt::LeftButton);
    EXPECT_FALSE(qobject_cast<QColorDialog*>(QApplication::activeModalWidget()));
    choose(Qt::red, QColor(10, 20, 30));
    QTest::mouseDClick(&swatch, Qt::LeftButton);
    EXPECT_EQ(Painted(dialog, "diffuseSwatch"), QColor(10, 20, 30));
    choose(QColor(10, 20, 30), QColor(0, 51, 255));
    QTest::keyClick(&swatch, Qt::Key_Space);
    choose(QColor(0, 51, 255), QColor(255, 51, 0));
    QTest::keyClick(&swatch, Qt::Key_Return);
  }));
  EXPECT_THAT(modConfig.DiffuseColor, ElementsAre(1.0f, 51 * (1 / 255.0f), 0.0f));
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(EnvironmentDialogsTest, FogRangeIsCutToIntegers) {
  modConfig.fogStart = 20;
  modConfig.fogEnd = 400;
  EXPECT_TRUE(RunAndPressOk(FogSettingsDialog, [](const OpenDialog& dialog) {
    EXPECT_EQ(Box(dialog, "beginEdit").text(), "20.000");
    Box(dialog, "beginEdit").setText("-35.9");
    Box(dialog, "endEdit").setText("letters");
    dialog.Widget<QCheckBox>("enabledCheck").click();
  }));
  EXPECT_EQ(modConfig.fogStart, -35);
  EXPECT_EQ(modConfig.fogEnd, 0);
  EXPECT_EQ(modConfig.VertexFogEnable, 1);
}

TEST_F(EnvironmentDialogsTest, NumbersBeyondAnIntegerStayAtItsEnd) {
  EXPECT_TRUE(RunAndPressOk(FogSettingsDialog, [](const OpenDialog& dialog) {
    Box(dialog, "beginEdit").setText("-1e30");
    Box(dialog, "endEdit").setText("1e30");
  }));
  EXPECT_EQ(modConfig.fogStart, std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(modConfig.fogEnd, std::numeric_limits<std::int32_t>::max());
}

TEST_F(EnvironmentDialogsTest, AnotherSkyBringsItsOwnLight) {
  modConfig.skyCount = 2;
  modConfig.skies[0] = {"Bocage", {"Sky_Bocage_m1", 150, 180, {-0.191f, 0.45f, -0.873f}}};
  modConfig.skies[1] = {"Coast", {"Sky_Coast_m1", 120, 40, {-0.52f, 0.56f, -0.6f}}};
  modConfig.currentSky = {"SKY_COAST_M1", 7, 8, {0.25f, 0.5f, 1}};
  EXPECT_TRUE(RunAndPressOk(LightSettingsDialog, [](const OpenDialog& dialog) {
    EXPECT_EQ(dialog.window.windowTitle(), "Sun, Light, and Sky Settings");
    EXPECT_EQ(List(dialog, "skyCombo").currentText(), "Coast");
    EXPECT_EQ(Box(dialog, "heightEdit").text(), "7");
    EXPECT_EQ(Box(dialog, "directionXEdit").text(), "0.250");
    Box(dialog, "directionYEdit").setText("9");
    List(dialog, "skyCombo").setCurrentText("Bocage");
    EXPECT_EQ(Box(dialog, "heightEdit").text(), "150");
    EXPECT_EQ(Box(dialog, "rotationEdit").text(), "180");
    EXPECT_EQ(Box(dialog, "directionXEdit").text(), "-0.191");
    EXPECT_EQ(Box(dialog, "directionYEdit").text(), "0.450");
    Box(dialog, "rotationEdit").setText("90");
  }));
  EXPECT_EQ(modConfig.currentSky.mesh, "Sky_Bocage_m1");
  EXPECT_EQ(modConfig.currentSky.heightOffset, 150);
  EXPECT_EQ(modConfig.currentSky.rotationAngle, 90);
  EXPECT_THAT(modConfig.currentSky.sunDirection, ElementsAre(-0.191f, 0.45f, -0.873f));
}

TEST_F(EnvironmentDialogsTest, ShadowsAreStored) {
  modConfig.terrainShadowAmbient = {10, 20, 30};
  EXPECT_TRUE(RunAndPressOk(ShadowSettingsDialog, [](const OpenDialog& dialog) {
    EXPECT_EQ(Painted(dialog, "ambientSwatch"), QColor(10, 20, 30));
    Box(dialog, "cullEdit").setText("-4");
    Box(dialog, "intensityEdit").setText("0.55");
  }));
  EXPECT_THAT(modConfig.terrainShadowAmbient, ElementsAre(10, 20, 30));
  EXPECT_EQ(modConfig.terrainShadowSamplingCull, -4);
  EXPECT_EQ(modConfig.ShadowColor, 0.55f);
}

TEST_F(EnvironmentDialogsTest, WaterTileFactorsAreChosenFromAList) {
  modConfig.WaterTileLayer1 = 0.125f;
  modConfig.WaterTileLayer2 = 0.3f;
  modConfig.WaterTileNormalMap = 1;
  EXPECT_TRUE(RunAndPressOk(WaterSettingsDialog, [](const OpenDialog& dialog) {
    EXPECT_EQ(List(dialog, "tile1Combo").currentText(), "1/8");
    EXPECT_EQ(List(dialog, "tile1Combo").count(), 5);
    EXPECT_EQ(List(dialog, "tile2Combo").currentText(), "0.300000");
    EXPECT_EQ(List(dialog, "tile2Combo").count(), 6);
    List(dialog, "tileNormalMapCombo").setCurrentText("1/16");
  }));
  EXPECT_EQ(modConfig.WaterTileLayer1, 0.125f);
  EXPECT_EQ(modConfig.WaterTileLayer2, 0.3f);
  EXPECT_EQ(modConfig.WaterTileNormalMap, 0.0625f);
}

TEST_F(EnvironmentDialogsTest, WaterLayersAreStored) {
  modConfig.WaterTexLayer1 = "texture/water05";
  modConfig.WaterNormalMap = "texture/normalMap01";
  EXPECT_TRUE(RunAndPressOk(WaterSettingsDialog, [](const OpenDialog& dialog) {
    EXPECT_EQ(List(dialog, "texture1Combo").currentText(), "texture/water05");
    EXPECT_EQ(List(dialog, "texture1Combo").count(), 8);
    EXPECT_EQ(List(dialog, "texture2Combo").itemText(7), "texture/water08");
    EXPECT_EQ(List(dialog, "normalMapCombo").itemText(1), "texture/normalMap02");
    List(dialog, "texture1Combo").setCurrentText("texture/water02");
    List(dialog, "texture2Combo").setEditText("texture/ofMyOwn");
    Box(dialog, "direction1YEdit").setText("-0.5");
    Box(dialog, "direction2XEdit").setText("2");
    Box(dialog, "directionNormalMapXEdit").setText("0.25");
    Box(dialog, "speed2Edit").setText("0.02");
    Box(dialog, "shallowAlphaEdit").setText("0.5");
    dialog.Widget<QCheckBox>("specularCheck").click();
  }));
  EXPECT_EQ(modConfig.WaterTexLayer1, "texture/water02");
  EXPECT_EQ(modConfig.WaterTexLayer2, "texture/ofMyOwn");
  EXPECT_EQ(modConfig.WaterNormalMap, "texture/normalMap01");
  EXPECT_THAT(modConfig.WaterScrollDirection1, ElementsAre(0.0f, -0.5f));
  EXPECT_THAT(modConfig.WaterScrollDirection2, ElementsAre(2.0f, 0.0f));
  EXPECT_THAT(modConfig.WaterScrollDirectionNormalmap, ElementsAre(0.25f, 0.0f));
  EXPECT_EQ(modConfig.WaterScrollLayer2, 0.02f);
  EXPECT_EQ(modConfig.WaterShallowAlpha, 0.5f);
  EXPECT_TRUE(modConfig.WaterSpecularEnable);
}

TEST_F(EnvironmentDialogsTest, TeamsAreChosenByName) {
  modConfig.teamCount = 3;
  modConfig.teams[0].name = "Germany";
  modConfig.teams[1].name = "United States";
  modConfig.teams[2].name = "Britain";
  modConfig.chosenTeam = {2, 0};
  EXPECT_TRUE(RunAndPressOk(TeamSelectionDialog, [](const OpenDialog& dialog) {
    EXPECT_EQ(dialog.window.windowTitle(), "Team Selection");
    EXPECT_EQ(List(dialog, "teamOneCombo").count(), 3);
    EXPECT_EQ(List(dialog, "teamOneCombo").currentText(), "Britain");
    List(dialog, "teamTwoCombo").setCurrentText("United States");
  }));
  EXPECT_THAT(modConfig.chosenTeam, ElementsAre(2, 1));
}

TEST_F(EnvironmentDialogsTest, AModWithoutTeamsOrSkiesLosesNothing) {
  modConfig.chosenTeam = {0, 1};
  modConfig.currentSky.mesh = "Sky_Own_m1";
  EXPECT_TRUE(RunAndPressOk(TeamSelectionDialog, [](const OpenDialog&) {}));
  EXPECT_TRUE(RunAndPressOk(LightSettingsDialog, [](const OpenDialog&) {}));
  EXPECT_THAT(modConfig.chosenTeam, ElementsAre(0, 1));
  EXPECT_EQ(modConfig.currentSky.mesh, "Sky_Own_m1");

  modConfig.skyCount = 1;
  EXPECT_TRUE(RunAndPressOk(LightSettingsDialog, [](const OpenDialog& dialog) {
    EXPECT_EQ(List(dialog, "skyCombo").currentText(), "(not in the list: Sky_Own_m1)");
  }));
  EXPECT_EQ(modConfig.currentSky.mesh, "Sky_Own_m1");
}

TEST_F(EnvironmentDialogsTest, WhatNobodyEditedKeepsEveryDigit) {
  modConfig.ShadowColor = modConfig.WaterAlphaDepth = modConfig.WaterScrollLayer1 = 0.0004f;
  modConfig.WaterTileLayer1 = 1e-8f;
  modConfig.currentSky.sunDirection[2] = 0.0004f;
  modConfig.fogEnd = 123456789;
  for (Dialog* dialog : {LightSettingsDialog, FogSettingsDialog, ShadowSettingsDialog,
                         WaterSettingsDialog, TeamSelectionDialog}) {
    EXPECT_TRUE(RunAndPressOk(*dialog, [](const OpenDialog&) {}));
  }
  EXPECT_FALSE(editor.levelModified);
  modConfig.skyCount = 1;
  modConfig.skies[0] = {"Coast", {"Sky_Coast_m1", 0, 0, {0.0004f, 0, 0}}};
  RunAndPressOk(LightSettingsDialog,
                [](const OpenDialog& dialog) { List(dialog, "skyCombo").setCurrentIndex(0); });
  EXPECT_EQ(modConfig.currentSky.sunDirection[0], 0.0004f) << "of the sky that was chosen";
}

TEST_F(EnvironmentDialogsTest, WhatTheScriptsCannotKeepIsDisabledAndSaysWhy) {
  ASSERT_TRUE(level->RemoveMember("varnhold/levels/Island/init/terrain.con"));
  Put("init/skyandsun.con", "sky.setRotAngle 1\r\n");
  Run(LightSettingsDialog, [](const OpenDialog& dialog) {
    EXPECT_FALSE(List(dialog, "skyCombo").isEnabled());
    EXPECT_TRUE(List(dialog, "skyCombo").toolTip().contains("no StandardMesh template"));
    EXPECT_TRUE(Box(dialog, "heightEdit").isEnabled()) << "can be added at the end";
    dialog.Press("cancelButton");
  });
  Run(ShadowSettingsDialog, [](const OpenDialog& dialog) {
    EXPECT_FALSE(Box(dialog, "cullEdit").isEnabled());
    EXPECT_TRUE(Box(dialog, "cullEdit").toolTip().contains("no script init/terrain.con"));
    EXPECT_TRUE(Box(dialog, "intensityEdit").isEnabled());
    dialog.Press("cancelButton");
  });
}

TEST_F(EnvironmentDialogsTest, OkMarksTheLevelOnlyWhenSomethingChanged) {
  modConfig.fogEnd = 400;
  RunAndPressOk(FogSettingsDialog, [](const OpenDialog&) {});
  EXPECT_FALSE(editor.levelModified);
  RunAndPressOk(FogSettingsDialog,
                [](const OpenDialog& dialog) { Box(dialog, "endEdit").setText("300"); });
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(EnvironmentDialogsTest, CancelAndEscapeChangeNothing) {
  modConfig.FogColor = {1, 0.5f, 0};
  modConfig.WaterTexLayer1 = "texture/water05";
  EXPECT_FALSE(Run(FogSettingsDialog, [](const OpenDialog& dialog) {
    Box(dialog, "endEdit").setText("300");
    QTest::keyClick(&dialog.window, Qt::Key_Escape);
  }));
  EXPECT_FALSE(Run(WaterSettingsDialog, [](const OpenDialog& dialog) {
    List(dialog, "texture1Combo").setEditText("texture/other");
    dialog.Press("cancelButton");
  }));
  EXPECT_EQ(modConfig.fogEnd, 0);
  EXPECT_EQ(modConfig.FogColor[1], 0.5f);
  EXPECT_EQ(modConfig.WaterTexLayer1, "texture/water05");
  EXPECT_FALSE(editor.levelModified);
}

}  // namespace
}  // namespace mw
