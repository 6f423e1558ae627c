#include "app/ui/new_level_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>

#include "app/ui/level_statistics_dialog.h"
#include "app/ui/window_fixture.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "support/open_dialog.h"

namespace mw {
namespace {

class NewLevelDialogTest : public WindowTest {
 protected:
  NewLevelDialogTest() {
    modConfig.GamePath = GameFolder();
    modConfig.modFolder = "Mods\\varnhold\\";
    modConfig.levelsFolder = kLevelsFolder;
    modConfig.LevelName = "Island";
    modConfig.theatres[0] = "Desert";
    modConfig.theatres[1] = "Tropics";
    modConfig.theatreCount = 2;
  }

  // Runs the dialog while `act` uses it.
  std::optional<NewLevelChoices> Use(const std::function<void(const DialogUnderTest&)>& act) {
    WhenOpen<QDialog>([act](QDialog& dialog) { act(DialogUnderTest{dialog}); });
    return RunNewLevelDialog(&window);
  }
  static void Click(const DialogUnderTest& dialog, const char* button) {
    dialog.Widget<QAbstractButton>(button).click();
  }
  static bool IsOn(const DialogUnderTest& dialog, const char* button) {
    return dialog.Widget<QAbstractButton>(button).isChecked();
  }
  static void Type(const DialogUnderTest& dialog, const char* name) {
    dialog.Widget<QLineEdit>("nameEdit").setText(name);
  }
};

TEST_F(NewLevelDialogTest, OpensWithItsFirstValues) {
  const auto choices = Use([](const DialogUnderTest& dialog) {
    EXPECT_EQ(dialog.window.windowTitle(), "New Level");
    EXPECT_EQ(dialog.Widget<QLineEdit>("nameEdit").text(), "Island");
    EXPECT_EQ(dialog.Widget<QLabel>("heightScaleValue").text(), "0.6");
    EXPECT_FALSE(dialog.Widget<QRadioButton>("largeButton").isEnabled());
    dialog.Widget<QLineEdit>("nameEdit").setFocus();
    QTest::keyClick(&dialog.window, Qt::Key_Tab);
    EXPECT_EQ(dialog.window.focusWidget(), &dialog.Widget<QRadioButton>("mediumButton"));
    EXPECT_FALSE(dialog.Widget<QCheckBox>("singlePlayerCheck").isEnabled());
    EXPECT_EQ(dialog.Widget<QComboBox>("theatreCombo").count(), 2);
    Type(dialog, "My Level!");
    Click(dialog, "okButton");
  });
  ASSERT_TRUE(choices);
  EXPECT_EQ(choices->name, "My_Level_");
  EXPECT_EQ(choices->size, LevelSize::Medium);
  EXPECT_EQ(choices->heightScaleTenths, 6);
  EXPECT_TRUE(choices->rules.conquest && choices->rules.teamDeathMatch);
  EXPECT_FALSE(choices->rules.singlePlayer || choices->rules.captureTheFlag);
  EXPECT_FALSE(choices->water);
  EXPECT_EQ(choices->theatre, "Desert");
  EXPECT_TRUE(choices->randomTerrain);
}

TEST_F(NewLevelDialogTest, HandsOverWhatTheUserChose) {
  const auto choices = Use([](const DialogUnderTest& dialog) {
    Type(dialog, "Atoll");
    Click(dialog, "smallButton");
    const QLabel& notice = dialog.Widget<QLabel>("heightScaleNotice");
    dialog.Widget<QSlider>("heightScaleSlider").setValue(2);
    EXPECT_TRUE(notice.isVisible() && notice.text().contains("under its water"));
    dialog.Widget<QSlider>("heightScaleSlider").setValue(3);
    EXPECT_FALSE(notice.isVisible());
    dialog.Widget<QSlider>("heightScaleSlider").setValue(20);
    EXPECT_EQ(dialog.Widget<QLabel>("heightScaleValue").text(), "2.0");
    for (const char* box :
         {"conquestCheck", "captureTheFlagCheck", "waterCheck", "randomTerrainCheck"}) {
      Click(dialog, box);
    }
    dialog.Widget<QComboBox>("theatreCombo").setCurrentIndex(1);
    QTest::keyClick(&dialog.window, Qt::Key_Return);
  });
  ASSERT_TRUE(choices);
  EXPECT_EQ(choices->size, LevelSize::Small);
  EXPECT_EQ(choices->heightScaleTenths, 20);
  EXPECT_FALSE(choices->rules.conquest);
  EXPECT_TRUE(choices->rules.captureTheFlag && choices->rules.teamDeathMatch);
  EXPECT_TRUE(choices->water);
  EXPECT_EQ(choices->theatre, "Tropics");
  EXPECT_FALSE(choices->randomTerrain);
}

TEST_F(NewLevelDialogTest, LargeLevelsWarnAndHaveWater) {
  scripted::script.answers = {PromptAnswer::Ok};
  Use([](const DialogUnderTest& dialog) {
    dialog.Widget<QRadioButton>("largeButton").setEnabled(true);
    Click(dialog, "largeButton");
    EXPECT_TRUE(IsOn(dialog, "waterCheck"));
    EXPECT_TRUE(IsOn(dialog, "largeButton"));
    Click(dialog, "waterCheck");
    EXPECT_TRUE(IsOn(dialog, "mediumButton")) << "no large level without water";
    EXPECT_FALSE(IsOn(dialog, "largeButton"));
    Click(dialog, "cancelButton");
  });
  ASSERT_EQ(scripted::script.prompts.size(), 1u);
  EXPECT_EQ(scripted::script.prompts[0].text,
            "WARNING: Large maps are used for open sea maps.\nYou will not be able to use a large "
            "map for all terrain levels\nwithout using a huge amount of resources.");
  EXPECT_EQ(scripted::script.prompts[0].caption, "Large Map");
  EXPECT_EQ(scripted::script.prompts[0].icon, PromptIcon::Stop);
}

TEST_F(NewLevelDialogTest, DefaultsSetTheLevelsNameToo) {
  EXPECT_FALSE(Use([](const DialogUnderTest& dialog) {
    Click(dialog, "smallButton");
    Click(dialog, "waterCheck");
    Click(dialog, "randomTerrainCheck");
    dialog.Widget<QSlider>("heightScaleSlider").setValue(1);
    dialog.Widget<QComboBox>("theatreCombo").setCurrentIndex(1);
    Click(dialog, "defaultsButton");
    EXPECT_EQ(dialog.Widget<QLineEdit>("nameEdit").text(), "MyLevel");
    EXPECT_EQ(dialog.Widget<QLabel>("heightScaleValue").text(), "0.6");
    EXPECT_TRUE(IsOn(dialog, "mediumButton"));
    EXPECT_TRUE(IsOn(dialog, "captureTheFlagCheck"));
    EXPECT_FALSE(IsOn(dialog, "waterCheck"));
    EXPECT_FALSE(IsOn(dialog, "randomTerrainCheck")) << "as it was";
    EXPECT_EQ(dialog.Widget<QComboBox>("theatreCombo").currentText(), "Tropics") << "as it was";
    QTest::keyClick(&dialog.window, Qt::Key_Escape);
  }));
  EXPECT_EQ(modConfig.LevelName, "MyLevel");
}

TEST_F(NewLevelDialogTest, ARefusedNameKeepsTheDialogOpen) {
  scripted::script.answers = {PromptAnswer::No, PromptAnswer::Ok};
  EXPECT_FALSE(Use([](const DialogUnderTest& dialog) {
    Click(dialog, "smallButton");
    Click(dialog, "okButton");  // "Island" is the open level
    EXPECT_TRUE(dialog.window.isVisible());
    Type(dialog, "");
    Click(dialog, "okButton");
    EXPECT_TRUE(dialog.window.isVisible());
    EXPECT_TRUE(IsOn(dialog, "smallButton"));
    Click(dialog, "cancelButton");
  }));
  EXPECT_EQ(scripted::script.prompts.size(), 2u);
}

TEST_F(NewLevelDialogTest, AModWithoutTheatresHasNone) {
  modConfig.theatreCount = 0;
  const auto choices = Use([](const DialogUnderTest& dialog) {
    Type(dialog, "Atoll");
    Click(dialog, "okButton");
  });
  ASSERT_TRUE(choices);
  EXPECT_EQ(choices->theatre, "");
}

class LevelStatisticsTest : public WindowTest {};

TEST_F(LevelStatisticsTest, CountsWhatIsUsedAndClosesByItsButtonOnly) {
  modConfig.LevelName = "Island";
  objectStore.objects.resize(3);
  entities.Of(EntityKind::SoldierSpawn).instances.push_back(std::make_unique<SoldierSpawn>());
  for (int i = 0; i < 2; ++i) {
    entities.Of(EntityKind::ControlPoint).instances.push_back(std::make_unique<ControlPoint>());
  }
  WhenOpen<QDialog>([](QDialog& open) {
    const DialogUnderTest dialog{open};
    const auto text = [&](const char* label) { return dialog.Widget<QLabel>(label).text(); };
    EXPECT_EQ(open.windowTitle(), "Level Statistics");
    EXPECT_EQ(text("mapNameValue"), "Island");
    EXPECT_EQ(text("mapSizeValue"), "256x256");
    EXPECT_EQ(text("worldSizeValue"), "1024x1024");
    EXPECT_EQ(text("objectsValue"), "3 of 2048");
    EXPECT_EQ(text("controlPointsValue"), "2 of 8");
    EXPECT_EQ(text("soldierSpawnsValue"), "1 of 1024");
    EXPECT_EQ(text("objectSpawnsValue"), "0 of 1024");
    QTest::keyClick(&open, Qt::Key_Escape);
    EXPECT_TRUE(open.isVisible());
    open.close();
    EXPECT_TRUE(open.isVisible());
    dialog.Widget<QPushButton>("okButton").click();
  });
  operations.levelStatistics();
}

}  // namespace
}  // namespace mw
