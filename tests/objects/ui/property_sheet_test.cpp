#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

#include "data/mod_config.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "objects/ui/property_sheet_dialog.h"
#include "objects/ui/run_dialog.h"
#include "support/sandbox.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

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
std::vector<std::string> Entries(const QComboBox& list) {
  std::vector<std::string> texts;
  for (int i = 0; i < list.count(); ++i) texts.push_back(list.itemText(i).toStdString());
  return texts;
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

  // In a category of its own.
  static void AddObject(const char* name, const char* category) {
    ObjectCatalogue& catalogue = objectStore.catalogue;
    CatalogueEntry& entry = catalogue.entries[static_cast<std::size_t>(catalogue.entryCount++)];
    entry.name = name;
    entry.category = catalogue.categoryCount++;
    catalogue.categories[static_cast<std::size_t>(entry.category)] = category;
  }

  PropertySheet sheet;
  const QFont fontBefore;
};

TEST_F(PropertySheetTest, LaysItsRowsOut) {
  float position[] = {1.5f, -2.0f, 1024.12345f};
  std::int32_t radius = 10;
  AddField(sheet, position, 3, FieldType::Floats, "Pos");
  AddField(sheet, &radius, 1, FieldType::Integers, "radius");
  AddField(sheet, {}, 0, FieldType::Heading, "Rest");
  Run([](const OpenDialog& dialog) {
    EXPECT_EQ(dialog.window.windowTitle(), "Edit Control Point");
    EXPECT_EQ(dialog.window.height(), 142);
    EXPECT_EQ(Box(dialog, "Pos 1").geometry(), QRect(144, 20, 62, 24));
    EXPECT_EQ(Box(dialog, "Pos 2").geometry(), QRect(210, 20, 62, 24));
    EXPECT_EQ(Box(dialog, "Pos 3").geometry(), QRect(276, 20, 62, 24));
    EXPECT_EQ(Box(dialog, "radius").geometry(), QRect(144, 44, 196, 24));
    EXPECT_EQ(Box(dialog, "Pos 2").text(), "-2.0000");
    EXPECT_EQ(Box(dialog, "Pos 3").text(), "1024.1234");
    EXPECT_EQ(Named<QLabel>(dialog, "Pos").geometry().left(), 10);
    EXPECT_EQ(Named<QLabel>(dialog, "---- Rest ----").geometry(), QRect(10, 68, 326, 24));
  });
}

TEST_F(PropertySheetTest, HasALowestHeight) {
  std::int32_t radius = 10;
  AddField(sheet, &radius, 1, FieldType::Integers, "radius");
  Run([](const OpenDialog& dialog) { EXPECT_EQ(dialog.window.height(), 120); });
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

TEST_F(PropertySheetTest, OkStoresWhatWasTyped) {
  FixedString<48> name("Village"), shown("Fixed");
  std::int32_t pair[] = {1, 2};
  float position[] = {0, 4e-5f, 0};
  AddField(sheet, TextOf(name), 47, FieldType::Text, "Name");
  AddField(sheet, TextOf(shown), 47, FieldType::Text, "Shown")->editable = false;
  AddField(sheet, pair, 2, FieldType::Integers, "Pair");
  AddField(sheet, position, 3, FieldType::Floats, "Pos");
  EXPECT_TRUE(RunAndPressOk([](const OpenDialog& dialog) {
    EXPECT_EQ(Box(dialog, "Name").text(), "Village");
    EXPECT_EQ(Named<QLabel>(dialog, "Fixed").text(), "Fixed");
    Box(dialog, "Name").setText("Harbour");
    Box(dialog, "Pair 2").setText(" -7 ");
    Box(dialog, "Pos 1").setText("+1.25");
  }));
  EXPECT_EQ(name, "Harbour");
  EXPECT_EQ(shown, "Fixed");
  EXPECT_THAT(pair, ElementsAre(1, -7));
  EXPECT_THAT(position, ElementsAre(1.25f, 4e-5f, 0.0f)) << "a box shows four digits";
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

TEST_F(PropertySheetTest, AFieldWithoutAValueKeepsTheDialogOpen) {
  FixedString<48> name("Village"), icon("flag");
  std::int32_t radius = 10;
  AddField(sheet, TextOf(name), 47, FieldType::Text, "Name");
  AddField(sheet, &radius, 1, FieldType::Integers, "radius");
  AddField(sheet, TextOf(icon), 47, FieldType::Text, "icon");
  scripted::script.answers = {PromptAnswer::Ok};
  EXPECT_FALSE(Run([&](const OpenDialog& dialog) {
    Box(dialog, "Name").setText("Harbour");
    Box(dialog, "radius").clear();
    Box(dialog, "icon").setText("anchor");
    dialog.Press("okButton");
    EXPECT_TRUE(dialog.window.isVisible());
    EXPECT_EQ(dialog.window.focusWidget(), &Box(dialog, "radius"));
  }));
  ASSERT_EQ(scripted::script.prompts.size(), 1u);
  EXPECT_EQ(scripted::script.prompts[0].text, "Field 'radius' must contain a value!");
  EXPECT_EQ(scripted::script.prompts[0].caption, "ERROR");
  EXPECT_EQ(scripted::script.prompts[0].icon, PromptIcon::Exclamation);
  EXPECT_EQ(name, "Village") << "what was typed above it is not stored either";
  EXPECT_EQ(radius, 10);
  EXPECT_EQ(icon, "flag");
}

TEST_F(PropertySheetTest, ATextThatIsNoNumberIsRefused) {
  std::int32_t radius = 10;
  float height = 2;
  FixedString<48> none;
  AddField(sheet, &radius, 1, FieldType::Integers, "radius");
  AddField(sheet, &height, 1, FieldType::Floats, "height");
  AddField(sheet, TextOf(none), 47, FieldType::Text, "none");
  const std::vector<std::pair<const char*, const char*>> wrong{
      {"radius", "abc"},   {"radius", "1.5"},  {"radius", "10 m"}, {"radius", "99999999999"},
      {"height", "1,5"},   {"height", "1.5x"}, {"height", " "},    {"height", "nan"},
      {"height", "1e300"}, {"height", "+-1.5"}};
  scripted::script.answers.assign(wrong.size(), PromptAnswer::Ok);
  EXPECT_TRUE(RunAndPressOk([&wrong](const OpenDialog& dialog) {
    for (const auto& [field, text] : wrong) {
      const QString before = Box(dialog, field).text();
      Box(dialog, field).setText(text);
      dialog.Press("okButton");
      EXPECT_TRUE(dialog.window.isVisible()) << text;
      Box(dialog, field).setText(before);
    }
  })) << "an empty text that nobody edited is none that is lacking";
  EXPECT_EQ(scripted::script.prompts.size(), wrong.size());
  EXPECT_EQ(radius, 10);
}

TEST_F(PropertySheetTest, CancelReadsNothing) {
  std::int32_t radius = 10;
  AddField(sheet, &radius, 1, FieldType::Integers, "radius");
  EXPECT_FALSE(Run([](const OpenDialog& dialog) {
    Box(dialog, "radius").setText("20");
    QTest::keyClick(&dialog.window, Qt::Key_Escape);
  }));
  EXPECT_EQ(radius, 10);
}

TEST_F(PropertySheetTest, KeysGoFromTheFieldsToTheButtons) {
  float position[] = {1, 2};
  AddField(sheet, position, 2, FieldType::Floats, "Pos");
  Run([](const OpenDialog& dialog) {
    dialog.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog.window));
    EXPECT_EQ(dialog.window.focusWidget(), &Box(dialog, "Pos 1"));
    QTest::keyClick(dialog.window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(dialog.window.focusWidget(), &Box(dialog, "Pos 2"));
    QTest::keyClick(dialog.window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(dialog.window.focusWidget(), &dialog.Widget<QPushButton>("okButton"));
    QTest::keyClick(dialog.window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(dialog.window.focusWidget(), &dialog.Widget<QPushButton>("cancelButton"));
  });
}

TEST_F(PropertySheetTest, VehiclesAreSortedAndAnUnknownOneHasAnEntryOfItsOwn) {
  AddObject("willy", "VEHICLES_LAND");
  AddObject("oak", "TREES");
  AddObject("bofors", "STATIONARY_WEAPONS");
  AddObject("spitfire", "VEHICLES_AIR");
  AddObject("barge", "VEHICLES_SEA");
  AddObject("cart", "vehicles_land");
  FixedString<48> known("Spitfire"), unknown("tiger"), none;
  AddField(sheet, TextOf(known), 47, FieldType::Vehicle, "Team 1 Object");
  AddField(sheet, TextOf(unknown), 47, FieldType::Vehicle, "Team 2 Object");
  AddField(sheet, TextOf(none), 47, FieldType::Vehicle, "Team 3 Object");
  EXPECT_TRUE(RunAndPressOk([](const OpenDialog& dialog) {
    EXPECT_THAT(Entries(List(dialog, "Team 1 Object")),
                ElementsAre("barge", "bofors", "spitfire", "willy"));
    EXPECT_EQ(List(dialog, "Team 1 Object").currentText(), "spitfire");
    EXPECT_THAT(Entries(List(dialog, "Team 2 Object")),
                ElementsAre("(not in the list: tiger)", "barge", "bofors", "spitfire", "willy"));
    EXPECT_EQ(List(dialog, "Team 2 Object").currentIndex(), 0);
    EXPECT_EQ(List(dialog, "Team 3 Object").currentText(), "(none)");
  }));
  EXPECT_EQ(known, "Spitfire");
  EXPECT_EQ(unknown, "tiger");
  EXPECT_EQ(none, "");
  EXPECT_TRUE(RunAndPressOk(
      [](const OpenDialog& dialog) { List(dialog, "Team 3 Object").setCurrentText("willy"); }));
  EXPECT_EQ(none, "willy");
}

TEST_F(PropertySheetTest, ControlPointsOfASharedModeAreOffered) {
  AddControlPoint("Village", 1, kModeConquest);
  AddControlPoint("Base", 2, kModeCaptureTheFlag);
  AddControlPoint("Harbour", 3, kModeConquest | kModeCaptureTheFlag);
  AddControlPoint("Village", 1, kModeConquest);
  std::int32_t group = 3, osId = 9;
  AddField(sheet, &group, 1, FieldType::ControlPoint, "Spawn Group")->filterModes = kModeConquest;
  AddField(sheet, &osId, 1, FieldType::ControlPointOrNone, "OsID")->filterModes = kModeConquest;
  EXPECT_TRUE(RunAndPressOk([](const OpenDialog& dialog) {
    EXPECT_THAT(Entries(List(dialog, "Spawn Group")), ElementsAre("Village", "Harbour"));
    EXPECT_EQ(List(dialog, "Spawn Group").currentText(), "Harbour");
    EXPECT_THAT(Entries(List(dialog, "OsID")),
                ElementsAre("(not in the list: 9)", "(none)", "Village", "Harbour"));
    EXPECT_EQ(List(dialog, "OsID").currentIndex(), 0);
    List(dialog, "Spawn Group").setCurrentText("Village");
  }));
  EXPECT_EQ(group, 1);
  EXPECT_EQ(osId, 9);
}

TEST_F(PropertySheetTest, TeamsAreThoseOfTheLevel) {
  modConfig.teams.front().name = "Britain";
  modConfig.teams.back().name = "Japan";
  modConfig.chosenTeam = {kMaxTeams - 1, 0};
  std::int32_t team = 2;
  AddField(sheet, &team, 1, FieldType::Team, "team");
  EXPECT_TRUE(RunAndPressOk([](const OpenDialog& dialog) {
    EXPECT_THAT(Entries(List(dialog, "team")), ElementsAre("Neutral", "Japan", "Britain"));
    EXPECT_EQ(List(dialog, "team").currentText(), "Britain");
    List(dialog, "team").setCurrentText("Japan");
  }));
  EXPECT_EQ(team, 1);
}

TEST_F(PropertySheetTest, GameModesAreChecked) {
  GameModeChoices choices = ChoicesOf(kModeConquest | kModeTeamDeathMatch);
  AddField(sheet, choices.data(), kGameModeCount, FieldType::GameModes, "Game Modes");
  EXPECT_TRUE(RunAndPressOk([](const OpenDialog& dialog) {
    const auto boxes = dialog.window.findChildren<QCheckBox*>();
    ASSERT_EQ(boxes.size(), kGameModeCount);
    EXPECT_EQ(boxes[1]->text(), "C&TF") << "C is the Cancel button's";
    EXPECT_EQ(dialog.window.findChild<QLabel*>()->text(), "&Game Modes");
    EXPECT_EQ(boxes[1]->x(), 194);
    EXPECT_TRUE(boxes[0]->isChecked());
    EXPECT_FALSE(boxes[2]->isEnabled()) << "single player";
    boxes[0]->click();
    boxes[1]->click();
  }));
  EXPECT_EQ(ModesOf(choices), kModeCaptureTheFlag | kModeTeamDeathMatch);
}

TEST_F(PropertySheetTest, ListsWithoutEntriesLeaveTheirValues) {
  std::int32_t group = 4;
  FixedString<48> vehicle("tiger");
  AddField(sheet, &group, 1, FieldType::ControlPoint, "Spawn Group")->filterModes = kAllModes;
  AddField(sheet, TextOf(vehicle), 47, FieldType::Vehicle, "Team 1 Object");
  EXPECT_TRUE(RunAndPressOk([](const OpenDialog&) {}));
  EXPECT_EQ(group, 4);
  EXPECT_EQ(vehicle, "tiger");
}

}  // namespace
}  // namespace mw
