#include "app/ui/new_level_dialog.h"

#include <QSlider>

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

  // Runs the dialog while `act` uses it; tells what it shows then, and what was chosen.
  void Use(const std::string& what, const std::function<void(const DialogUnderTest&)>& act,
           std::initializer_list<PromptAnswer> answers = {}) {
    WhenOpen<QDialog>([act](QDialog& dialog) { act(DialogUnderTest{dialog}); });
    std::optional<NewLevelChoices> choices;
    Do(
        what, [&] { return (choices = RunNewLevelDialog(&window)).has_value(); }, answers);
    if (!choices) return;
    const auto& [singlePlayer, conquest, teamDeathMatch, captureTheFlag] = choices->rules;
    Tell(choices->name + ", size " + std::to_string(static_cast<int>(choices->size)) +
         ", height scale " + std::to_string(choices->heightScaleTenths) + ", theatre \"" +
         choices->theatre + '"' + (singlePlayer ? ", SP" : "") + (conquest ? ", CQ" : "") +
         (teamDeathMatch ? ", TDM" : "") + (captureTheFlag ? ", CTF" : "") +
         (choices->water ? ", water" : "") + (choices->randomTerrain ? ", random terrain" : ""));
  }
  static void Type(const DialogUnderTest& dialog, const char* name) {
    dialog.Widget<QLineEdit>("nameEdit").setText(name);
  }
};

TEST_F(NewLevelDialogTest, HandsOverWhatTheUserChose) {
  Use("accept the first values", [this](const DialogUnderTest& dialog) {
    TellControls(dialog.window);
    dialog.Widget<QLineEdit>("nameEdit").setFocus();
    QTest::keyClick(&dialog.window, Qt::Key_Tab);
    EXPECT_EQ(dialog.window.focusWidget()->objectName(), "mediumButton");
    Type(dialog, "My Level!");
    Click(dialog.window, {"okButton"});
  });
  Use("choose", [this](const DialogUnderTest& dialog) {
    Type(dialog, "Atoll");
    Click(dialog.window, {"smallButton", "conquestCheck", "captureTheFlagCheck", "waterCheck",
                          "randomTerrainCheck"});
    dialog.Widget<QComboBox>("theatreCombo").setCurrentIndex(1);
    for (const int tenths : {2, 3, 20}) {  // the least is under the water
      dialog.Widget<QSlider>("heightScaleSlider").setValue(tenths);
      TellControls(dialog.window);
    }
    QTest::keyClick(&dialog.window, Qt::Key_Return);
  });
  modConfig.theatreCount = 0;
  Use("a mod without theatres", [](const DialogUnderTest& dialog) {
    Type(dialog, "Atoll");
    Click(dialog.window, {"okButton"});
  });
}

TEST_F(NewLevelDialogTest, LargeLevelsWarnAndHaveWater) {
  const auto chooseLarge = [this](const DialogUnderTest& dialog) {
    dialog.Widget<QAbstractButton>("largeButton").setEnabled(true);
    Click(dialog.window, {"largeButton"});
    TellControls(dialog.window);
    Click(dialog.window, {"waterCheck"});
    TellControls(dialog.window);
    Click(dialog.window, {"cancelButton"});
  };
  Use("large, then without water", chooseLarge, {PromptAnswer::Ok});
}

TEST_F(NewLevelDialogTest, DefaultsSetTheLevelsNameToo) {
  Use("defaults", [this](const DialogUnderTest& dialog) {
    Click(dialog.window, {"smallButton", "conquestCheck", "waterCheck", "randomTerrainCheck"});
    dialog.Widget<QSlider>("heightScaleSlider").setValue(1);
    dialog.Widget<QComboBox>("theatreCombo").setCurrentIndex(1);
    Click(dialog.window, {"defaultsButton"});
    TellControls(dialog.window);
    QTest::keyClick(&dialog.window, Qt::Key_Escape);
  });
  EXPECT_EQ(modConfig.LevelName, "MyLevel");
}

TEST_F(NewLevelDialogTest, ARefusedNameKeepsTheDialogOpen) {
  const auto refused = [this](const DialogUnderTest& dialog) {
    Click(dialog.window, {"smallButton", "okButton"});  // "Island" is the open level
    Type(dialog, "");
    Click(dialog.window, {"okButton"});
    EXPECT_TRUE(dialog.window.isVisible());
    TellControls(dialog.window);
    Click(dialog.window, {"cancelButton"});
  };
  Use("refused names", refused, {PromptAnswer::No, PromptAnswer::Ok});
}

TEST_F(WindowTest, StatisticsCountWhatIsUsedAndCloseByTheirButtonOnly) {
  modConfig.LevelName = "Island";
  objectStore.objects.resize(3);
  entities.Of(EntityKind::SoldierSpawn).instances.push_back(std::make_unique<SoldierSpawn>());
  for (int i = 0; i < 2; ++i) {
    entities.Of(EntityKind::ControlPoint).instances.push_back(std::make_unique<ControlPoint>());
  }
  WhenOpen<QDialog>([this](QDialog& dialog) {
    QTest::keyClick(&dialog, Qt::Key_Escape);
    dialog.close();
    EXPECT_TRUE(dialog.isVisible());
    TellControls(dialog);
    Click(dialog, {"okButton"});
  });
  shell.levelStatisticsDialog();
}

}  // namespace
}  // namespace mw
