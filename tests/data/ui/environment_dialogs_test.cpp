#include "data/ui/environment_dialogs.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/story.h"
#include "core/text.h"
#include "data/level_archive_test.h"
#include "data/level_settings_commands.h"
#include "data/ui/colour_swatch.h"
#include "support/open_dialog.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

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

class EnvironmentDialogsTest : public LevelArchive<StoryTest> {
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

TEST_F(EnvironmentDialogsTest, TheNameOfAWaterTextureTakesNoBlankWhichWouldEndItInTheScript) {
  EXPECT_TRUE(RunAndPressOk(WaterSettingsDialog, [](const OpenDialog& dialog) {
    QTest::keyClicks(List(dialog, "texture2Combo").lineEdit(), "a b");
  }));
  EXPECT_EQ(modConfig.WaterTexLayer2, "ab");
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

// Every control with its text, by which it is known to a reader, and why it is disabled.
std::vector<std::string> ControlsOf(const QDialog& window) {
  std::vector<std::string> lines;
  for (const auto* control : window.findChildren<QWidget*>()) {
    QString text;
    if (const auto* box = qobject_cast<const QLineEdit*>(control)) {
      if (qobject_cast<const QComboBox*>(box->parentWidget())) continue;
      text = box->text();
    } else if (const auto* list = qobject_cast<const QComboBox*>(control)) {
      text = list->currentText() + " of";
      for (int i = 0; i < list->count(); ++i) text += " | " + list->itemText(i);
    } else if (const auto* check = qobject_cast<const QCheckBox*>(control)) {
      text = check->text() + (check->isChecked() ? " (on)" : " (off)");
    } else if (!qobject_cast<const ColourSwatch*>(control)) {
      continue;
    }
    const QString name = control->accessibleName() + control->accessibleDescription();
    if (!control->isEnabled()) text += " DISABLED: " + control->toolTip();
    lines.push_back((control->objectName() + " (" + name + "): " + text).toStdString());
  }
  return lines;
}

std::vector<std::string> Settings() {
  std::vector<std::string> lines;
  for (const SettingsCommand& command : SettingsCommands()) {
    if (!command.value) continue;
    lines.push_back(std::string(command.name) + " " + command.value(modConfig));
  }
  lines.push_back(FormatText("teams %i %i", modConfig.chosenTeam[0], modConfig.chosenTeam[1]));
  lines.push_back(editor.levelModified ? "modified" : "not modified");
  return lines;
}

// The lines that have become others.
std::string Changed(const std::vector<std::string>& before, const std::vector<std::string>& after) {
  std::string text;
  for (std::size_t i = 0; i < after.size(); ++i) {
    if (i >= before.size() || before[i] != after[i]) text += "  " + after[i] + "\n";
  }
  return text;
}

void Enter(const OpenDialog& dialog, const std::string& word) {
  if (word == "Escape") return QTest::keyClick(&dialog.window, Qt::Key_Escape);
  const std::string name = word.substr(0, word.find_first_of("=@"));
  const QString text = QString::fromStdString(word).section('=', 1).replace('_', ' ');
  auto& control = dialog.Widget<QWidget>(name.c_str());
  if (auto* box = qobject_cast<QLineEdit*>(&control)) return box->setText(text);
  if (auto* button = qobject_cast<QAbstractButton*>(&control)) return button->click();
  auto& list = List(dialog, name.c_str());
  if (word.find('@') != word.npos) return list.setCurrentIndex(word.back() - '0');
  if (list.findText(text) < 0) return list.setEditText(text);
  list.setCurrentText(text);
}

// What each dialog shows, what of it changes with an edit, and which settings are others then: the
// story in tests/golden/data/environment_dialogs.txt.
TEST_F(EnvironmentDialogsTest, EachControlShowsAndStoresItsSetting) {
  modConfig.fogStart = 20;
  modConfig.FogColor = {1, 1, 0};
  modConfig.GlobalAmbientColor = {1, 0, 0};
  modConfig.AmbientColor = {0, 1, 0};
  modConfig.DiffuseColor = {0, 0, 1};
  modConfig.SpecularColor = {0, 1, 1};
  modConfig.WaterColor = {1, 0, 1};
  modConfig.WaterDeepColor = {1, 1, 1};
  modConfig.terrainShadowAmbient = {10, 20, 30};
  modConfig.WaterAlphaDepth = 3;
  modConfig.WaterShallowAlpha = 4;
  modConfig.WaterScrollDirection1 = {5, 6};
  modConfig.WaterScrollDirection2 = {7, 8};
  modConfig.WaterScrollDirectionNormalmap = {9, 10};
  modConfig.WaterScrollLayer1 = 11;
  modConfig.WaterScrollLayer2 = 12;
  modConfig.WaterScrollNormalmap = 13;
  modConfig.WaterTileLayer1 = 0.125f;
  modConfig.WaterTileLayer2 = 0.3f;
  modConfig.WaterTileNormalMap = 1;
  modConfig.WaterTexLayer1 = "texture/water05";
  modConfig.WaterNormalMap = "texture/normalMap01";
  modConfig.chosenTeam = {0, 1};
  modConfig.currentSky = {"Sky_Own_m1", 7, 8, {0.25f, 0.5f, 1}};
  const std::vector<std::string> teams{"Germany", "United States", "Britain"};
  for (std::size_t i = 0; i < teams.size(); ++i) modConfig.teams[i].name = teams[i];
  modConfig.skies[0] = {"Bocage", {"Sky_Bocage_m1", 150, 180, {-0.191f, 0.45f, -0.873f}}};
  modConfig.skies[1] = {"Coast", {"SKY_OWN_M1", 120, 40, {-0.52f, 0.56f, -0.6f}}};
  // A verb: in the dialog, "name=text" enters a text, with "_" for a blank, "name@1" chooses an
  // entry by its number, "name" presses.
  const auto in = [this](Dialog& dialog) {
    return [this, &dialog](const Words& words) {
      editor.levelModified = false;
      const auto before = Settings();
      const bool stored = Run(dialog, [&](const OpenDialog& open) {
        auto shown = ControlsOf(open.window);
        Tell(open.window.windowTitle().toStdString() + "\n" + Changed({}, shown));
        for (const std::string& word : words) {
          Tell("- " + word);
          Enter(open, word);
          if (open.window.isVisible())
            Tell(Changed(std::exchange(shown, ControlsOf(open.window)), ControlsOf(open.window)));
        }
      });
      Tell((stored ? "= stored\n" : "= left\n") + Changed(before, Settings()));
    };
  };
  ActOut("data/environment_dialogs.txt",
         {{"fog", in(FogSettingsDialog)},
          {"teams", in(TeamSelectionDialog)},
          {"light", in(LightSettingsDialog)},
          {"shadows", in(ShadowSettingsDialog)},
          {"water", in(WaterSettingsDialog)},
          {"counts",
           [](const Words& words) {
             modConfig.teamCount = std::stoi(words.at(0));
             modConfig.skyCount = std::stoi(words.at(1));
           }},
          {"chosen",
           [](const Words& words) {
             modConfig.chosenTeam = {std::stoi(words.at(0)), std::stoi(words.at(1))};
           }},
          {"noterrainscript",
           [this](const Words&) { EXPECT_TRUE(level->RemoveMember(Member("init/terrain.con"))); }},
          {"skyscript",
           [this](const Words&) { Put("init/skyandsun.con", "sky.setRotAngle 1\r\n"); }}});
}

}  // namespace
}  // namespace mw
