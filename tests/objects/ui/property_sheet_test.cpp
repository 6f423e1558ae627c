#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>

#include "data/mod_config.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "objects/sheet_text.h"
#include "objects/ui/property_sheet_dialog.h"
#include "support/golden.h"
#include "support/open_dialog.h"
#include "support/prompts.h"
#include "support/sandbox.h"

namespace mw {
namespace {

// A control by the name that a screen reader gives it.
template <typename W>
W& Named(const OpenDialog& dialog, const char* name) {
  for (W* control : dialog.window.findChildren<W*>()) {
    if (control->accessibleName() == name) return *control;
  }
  throw std::logic_error(name);
}

QLineEdit& Box(const OpenDialog& dialog, const char* name) {
  return Named<QLineEdit>(dialog, name);
}
QComboBox& List(const OpenDialog& dialog, const char* name) {
  return Named<QComboBox>(dialog, name);
}
// The controls of the rows, with where they stand and what they show.
std::string Shown(const OpenDialog& dialog) {
  std::ostringstream text;
  text << dialog.window.windowTitle().toStdString() << ", " << dialog.window.width() << " x "
       << dialog.window.height() << '\n';
  for (const QObject* child : dialog.Widget<QWidget>("rowsPage").children()) {
    const auto* const control = static_cast<const QWidget*>(child);
    const QRect place = control->geometry();
    text << "  " << control->metaObject()->className() << " at " << place.x() << ' ' << place.y()
         << ", " << place.width() << " x " << place.height() << ", "
         << control->accessibleName().toStdString() << (control->isEnabled() ? ": " : " (grey): ");
    if (const auto* label = qobject_cast<const QLabel*>(child)) {
      text << label->text().toStdString();
      if (label->buddy()) text << " -> " << label->buddy()->accessibleName().toStdString();
    } else if (const auto* box = qobject_cast<const QLineEdit*>(child)) {
      text << box->text().toStdString() << ", at most " << box->maxLength();
    } else if (const auto* check = qobject_cast<const QCheckBox*>(child)) {
      text << check->text().toStdString() << check->isChecked();
    } else if (const auto* list = qobject_cast<const QComboBox*>(child)) {
      for (int i = 0; i < list->count(); ++i)
        text << (i == list->currentIndex() ? " [" : " ") << list->itemText(i).toStdString()
             << (i == list->currentIndex() ? "]" : "");
    }
    text << '\n';
  }
  return text.str();
}

class PropertySheetTest : public SandboxTest {
 protected:
  PropertySheetTest() : fontBefore(QApplication::font()) {
    QFont usual = fontBefore;
    usual.setPixelSize(12);
    QApplication::setFont(usual);
    sheet.title = "Edit Control Point";
  }
  ~PropertySheetTest() override {
    QApplication::setFont(fontBefore);
    entities = Entities{};
    objectStore = ObjectStore{};
    modConfig = {};
  }

  bool Run(const std::function<void(const OpenDialog&)>& act) {
    WhenDialogOpens(act);
    return RunPropertySheet(nullptr, sheet);
  }
  bool RunAndPressOk(const std::function<void(const OpenDialog&)>& act) {
    return Run([act](const OpenDialog& dialog) {
      act(dialog);
      dialog.Press("okButton");
    });
  }

  static void AddControlPoint(const char* name, std::int32_t group, GameModeMask modes) {
    auto entry = std::make_unique<ControlPointTemplate>();
    entry->name = name;
    entry->spawnGroupId = group;
    entry->modes = modes;
    entities.Of(EntityKind::ControlPoint).templates.push_back(std::move(entry));
  }

  PropertySheet sheet;
  const QFont fontBefore;
};

TEST_F(PropertySheetTest, EveryKindOfFieldIsShownAndStoresWhatTheUserChanged) {
  objectStore.catalogue = ParseObjectList(
      "[VEHICLES_LAND]\nwilly=StandardMesh(m)\n[TREES]\noak=TreeMesh(m)\n[STATIONARY_WEAPONS]\n"
      "bofors=StandardMesh(m)\n[VEHICLES_AIR]\nspitfire=StandardMesh(m)\n[VEHICLES_SEA]\n"
      "barge=StandardMesh(m)\n[vehicles_land]\ncart=StandardMesh(m)\n");
  AddControlPoint("Village", 1, kModeConquest);
  AddControlPoint("Base", 2, kModeCaptureTheFlag);
  AddControlPoint("Harbour", 3, kModeConquest | kModeCaptureTheFlag);
  AddControlPoint("Village", 1, kModeConquest);
  modConfig.teams.front().name = "Britain";
  modConfig.teams.back().name = "Japan";
  modConfig.chosenTeam = {kMaxTeams - 1, 0};
  FixedString<48> name("Village"), shown("Fixed"), known("Spitfire"), unknown("tiger"), none;
  std::int32_t pair[] = {1, 2}, group = 3, osId = 9, team = 2;
  float position[] = {-2, 4e-5f, 1024.12345f};
  GameModeChoices modes = ChoicesOf(kModeConquest | kModeTeamDeathMatch);
  AddField(sheet, TextOf(name), 47, FieldType::Text, "Name");
  AddField(sheet, TextOf(shown), 47, FieldType::Text, "Shown")->editable = false;
  AddField(sheet, pair, 2, FieldType::Integers, "Pair");
  AddField(sheet, position, 3, FieldType::Floats, "Pos");
  AddField(sheet, TextOf(known), 47, FieldType::Vehicle, "Team 1 Object");
  AddField(sheet, TextOf(unknown), 47, FieldType::Vehicle, "Team 2 Object");
  AddField(sheet, TextOf(none), 47, FieldType::Vehicle, "Team 3 Object");
  AddField(sheet, &group, 1, FieldType::ControlPoint, "Spawn Group")->filterModes = kModeConquest;
  AddField(sheet, &osId, 1, FieldType::ControlPointOrNone, "OsID")->filterModes = kModeConquest;
  AddField(sheet, &team, 1, FieldType::Team, "team");
  AddField(sheet, modes.data(), kGameModeCount, FieldType::GameModes, "Game Modes");
  AddField(sheet, {}, 0, FieldType::Heading, "Rest");
  std::string told;
  EXPECT_TRUE(RunAndPressOk([&](const OpenDialog& dialog) { told += Shown(dialog); }));
  told += "OK, nothing was changed\n" + Described(sheet);
  EXPECT_TRUE(RunAndPressOk([](const OpenDialog& dialog) {
    Box(dialog, "Name").setText("Harbour");
    Box(dialog, "Pair 2").setText(" -7 ");
    Box(dialog, "Pos 1").setText("+1.25");
    List(dialog, "Team 1 Object").setCurrentText("bofors");
    List(dialog, "Team 3 Object").setCurrentText("willy");
    List(dialog, "Spawn Group").setCurrentText("Village");
    List(dialog, "OsID").setCurrentText("(none)");
    List(dialog, "team").setCurrentText("Japan");
    for (const int mode : {0, 1}) dialog.window.findChildren<QCheckBox*>()[mode]->click();
  }));
  told += "OK\n" + Described(sheet);
  // Without what they could offer, lists keep their values.
  entities = Entities{};
  objectStore = ObjectStore{};
  EXPECT_TRUE(RunAndPressOk([](const OpenDialog&) {}));
  told += "OK, nothing was offered\n" + Described(sheet);
  sheet.fieldCount = 1;
  Run([&](const OpenDialog& dialog) { told += Shown(dialog); });
  ExpectGolden("objects/property_dialog.txt", told);
}

TEST_F(PropertySheetTest, RowsThatTheScreenCannotHoldScroll) {
  std::int32_t values[kMaxPropertyFields] = {};
  for (std::int32_t& value : values) AddField(sheet, &value, 1, FieldType::Integers, "value");
  sheet.fields.back().label = "last";
  scripted::script.answers = {PromptAnswer::Ok};
  Run([](const OpenDialog& dialog) {
    EXPECT_LE(dialog.window.height(), dialog.window.screen()->availableGeometry().height());
    const QPushButton& ok = dialog.Widget<QPushButton>("okButton");
    const QRect okPlace(ok.mapTo(&dialog.window, QPoint()), ok.size());
    EXPECT_TRUE(dialog.window.rect().contains(okPlace));
    Box(dialog, "last").clear();
    dialog.Press("okButton");
    EXPECT_FALSE(Box(dialog, "last").visibleRegion().isEmpty());
  });
}

TEST_F(PropertySheetTest, TextsKeepTheirBounds) {
  FixedString<8> name, accents;
  FixedString<16> bytes("caf\xE9");
  AddField(sheet, TextOf(name), 7, FieldType::Text, "Name");
  AddField(sheet, TextOf(accents), 7, FieldType::Text, "Accents");
  AddField(sheet, TextOf(bytes), 15, FieldType::Text, "Bytes");
  EXPECT_TRUE(RunAndPressOk([](const OpenDialog& dialog) {
    QTest::keyClicks(&Box(dialog, "Name"), "a long name");
    Box(dialog, "Accents").setText("aéééé");
  }));
  EXPECT_EQ(name, "a long ");
  EXPECT_EQ(accents, "aééé");
  EXPECT_EQ(bytes, "caf\xE9") << "nobody edited it";
}

TEST_F(PropertySheetTest, AWrongOrMissingValueKeepsTheDialogOpenAndStoresNothing) {
  FixedString<48> name("Village"), icon("flag"), none;
  std::int32_t radius = 10;
  float height = 2;
  AddField(sheet, TextOf(name), 47, FieldType::Text, "Name");
  AddField(sheet, &radius, 1, FieldType::Integers, "radius");
  AddField(sheet, &height, 1, FieldType::Floats, "height");
  AddField(sheet, TextOf(icon), 47, FieldType::Text, "icon");
  AddField(sheet, TextOf(none), 47, FieldType::Text, "none");
  const std::string before = Described(sheet);
  EXPECT_FALSE(Run([](const OpenDialog& dialog) {
    Box(dialog, "Name").setText("Harbour");
    Box(dialog, "icon").setText("anchor");
    for (const auto& [field, text] :
         {std::pair{"radius", ""}, {"radius", "1.5"}, {"height", "1,5"}, {"icon", ""}}) {
      QLineEdit& box = Box(dialog, field);
      const QString right = box.text();
      box.setText(text);
      Answer({PromptAnswer::Ok});
      dialog.Press("okButton");
      ExpectPrompts(
          {"ERROR: Field '" + std::string(field) + "' must contain a value! (Exclamation)"});
      EXPECT_TRUE(dialog.window.isVisible()) << text;
      EXPECT_EQ(dialog.window.focusWidget(), &box);
      box.setText(right);
    }
    QTest::keyClick(&dialog.window, Qt::Key_Escape);
  }));
  EXPECT_EQ(Described(sheet), before);
  EXPECT_TRUE(RunAndPressOk([](const OpenDialog&) {})) << "a text that was empty may be so";
}

TEST_F(PropertySheetTest, WhatIsLeftEmptyStays) {
  float position[] = {1, kNoFloat, kNoFloat};
  std::int32_t radius = kNoInteger, side = kNoInteger;
  GameModeChoices modes = ChoicesOf(kModeConquest);
  modes[0].mixed = modes[1].mixed = true;
  AddField(sheet, position, 3, FieldType::Floats, "Pos")->mayBeEmpty = true;
  AddField(sheet, &radius, 1, FieldType::Integers, "radius")->mayBeEmpty = true;
  AddField(sheet, &side, 1, FieldType::Team, "team")->mayBeEmpty = true;
  AddField(sheet, modes.data(), kGameModeCount, FieldType::GameModes, "Game Modes");
  EXPECT_TRUE(RunAndPressOk([](const OpenDialog& dialog) {
    EXPECT_EQ(Box(dialog, "Pos 2").text() + Box(dialog, "radius").text(), "");
    Box(dialog, "Pos 1").setText("");
    Box(dialog, "Pos 3").setText("7");
    for (QCheckBox* const box : dialog.window.findChildren<QCheckBox*>()) {
      if (box->objectName().endsWith("CTF")) box->click();
    }
  }));
  EXPECT_EQ(position[0], 1);
  EXPECT_TRUE(std::isnan(position[1]));
  EXPECT_EQ(position[2], 7);
  EXPECT_EQ(radius, kNoInteger);
  EXPECT_EQ(side, kNoInteger);
  EXPECT_TRUE(modes[0].mixed && !modes[1].mixed && modes[1].checked);
}

TEST_F(PropertySheetTest, KeysGoFromTheFieldsToTheButtons) {
  float position[] = {1, 2};
  AddField(sheet, position, 2, FieldType::Floats, "Pos");
  Run([](const OpenDialog& dialog) {
    dialog.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog.window));
    for (const QWidget* control : std::initializer_list<QWidget*>{
             &Box(dialog, "Pos 1"), &Box(dialog, "Pos 2"), &dialog.Widget<QPushButton>("okButton"),
             &dialog.Widget<QPushButton>("cancelButton")}) {
      EXPECT_EQ(dialog.window.focusWidget(), control);
      QTest::keyClick(dialog.window.focusWidget(), Qt::Key_Tab);
    }
  });
}

}  // namespace
}  // namespace mw
