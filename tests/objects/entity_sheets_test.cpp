#include <gmock/gmock.h>
#include <limits>
#include <sstream>

#include "objects/entity_test.h"
#include "objects/spawn_groups.h"
#include "support/golden.h"

namespace mw {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

// A line of a sheet: label, type, most values or characters, and what stands in it at first.
std::string Described(const PropertyField& field) {
  std::ostringstream line;
  line << field.label.c_str() << " | type " << static_cast<int>(field.type) << " x " << field.count
       << (field.editable ? "" : " read-only");
  if (field.filterModes != 0) line << " modes " << field.filterModes;
  line << " |";
  if (const auto* text = std::get_if<TextVariable>(&field.value)) line << ' ' << text->read();
  for (int i = 0; i < field.count; ++i) {
    if (auto* const* number = std::get_if<std::int32_t*>(&field.value)) line << ' ' << (*number)[i];
    if (auto* const* real = std::get_if<float*>(&field.value)) line << ' ' << (*real)[i];
    if (auto* const* mode = std::get_if<GameModeChoice*>(&field.value))
      line << ' ' << (*mode)[i].label << (*mode)[i].checked << ((*mode)[i].enabled ? "" : "(grey)");
  }
  return line.str() + '\n';
}

class EntitySheetsTest : public EntityTest {
 protected:
  EntitySheetsTest() {
    DropControlPoint(100, 100);
    DropControlPoint(600, 100);
    DropSoldierSpawn(110, 100);
    AddVehicleTemplate();
    DropVehicle(120, 100);
    editor.levelModified = false;
  }
  static SpawnInstance& Soldier() { return *SoldierSpawns().instances[0]; }
  static SpawnInstance& Point(std::size_t i) { return *ControlPoints().instances[i]; }
  // What the sheet of an item shows; the user cancels it.
  static std::string SheetOf(TreeItem item) {
    std::string shown;
    CancelSheets([&](PropertySheet& sheet) {
      shown = sheet.title + '\n';
      for (int i = 0; i < sheet.fieldCount; ++i)
        shown += "  " + Described(sheet.fields[static_cast<std::size_t>(i)]);
    });
    EXPECT_TRUE(EditByTreeItem(item));
    return shown;
  }
};

TEST_F(EntitySheetsTest, NewEntitiesShowTheGamesUsualValues) {
  Vehicle(0).modes = kModeConquest;
  ExpectGolden("objects/entity_sheets.txt",
               SheetOf(ObjectTemplate(0).treeItem) + SheetOf(Vehicle(0).treeItem) +
                   SheetOf(Soldier().treeItem) + SheetOf(Point(0).treeItem));
  EXPECT_FALSE(editor.levelModified);
}

TEST_F(EntitySheetsTest, AnEditedTemplateRenamesItsVehicles) {
  AcceptSheets([](PropertySheet& sheet) {
    Type(sheet, "Name", "Light tank (north)/1");
    Type(sheet, "Team 1 Object", "Tank_A");
    Enter(sheet, "minSpawnDelay", -5);
    Enter(sheet, "maxSpawnDelay", -7);
    Enter(sheet, "distance", 60);
  });
  EditByTreeItem(ObjectTemplate(0).treeItem);
  EXPECT_EQ(ObjectTemplate(0).name, "Light_tank__north__1");
  EXPECT_EQ(Vehicle(0).name, "Light_tank__north__1");
  EXPECT_EQ(ItemText(ObjectTemplate(0).treeItem), "Light_tank__north__1 (CQ,CTF,TDM)");
  EXPECT_EQ(ItemText(Vehicle(0).treeItem), "Light_tank__north__1 (CQ,CTF,TDM)");
  EXPECT_EQ(ObjectTemplate(0).team1Object, "tank_a");
  EXPECT_EQ(ObjectTemplate(0).minSpawnDelay, 0);
  EXPECT_EQ(ObjectTemplate(0).maxSpawnDelay, 1);
  EXPECT_EQ(ObjectTemplate(0).distance, 60);
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(EntitySheetsTest, TheLongestSpawnDelayLeavesRoomForALongerOne) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  AcceptSheets([](PropertySheet& sheet) { Enter(sheet, "minSpawnDelay", kMost); });
  EditByTreeItem(ObjectTemplate(0).treeItem);
  EXPECT_EQ(ObjectTemplate(0).minSpawnDelay, kMost - 1);
  EXPECT_EQ(ObjectTemplate(0).maxSpawnDelay, kMost);
}

TEST_F(EntitySheetsTest, AnEditedSoldierSpawn) {
  AcceptSheets([](PropertySheet& sheet) {
    Type(sheet, "Name", "north spawn");
    Enter(sheet, "Spawn Group", 2);
    Enter(sheet, "SpawnID", 12);
    Enter(sheet, "spawnAsParaTrooper", 1);
    Enter(sheet, "Pos", {1, 2, 3});
    Enter(sheet, "Rot", {90, 0, 45});
    ChooseModes(sheet, kModeCaptureTheFlag);
  });
  SoldierTemplate(0).modes = kModeConquest;
  EXPECT_TRUE(Soldier().Edit());
  EXPECT_EQ(SoldierTemplate(0).name, "north_spawn");
  EXPECT_EQ(SoldierTemplate(0).group, 2);
  EXPECT_EQ(SoldierTemplate(0).spawnId, 12);
  EXPECT_EQ(SoldierTemplate(0).spawnAsParaTrooper, 1);
  EXPECT_EQ(SoldierTemplate(0).modes, kModeConquest | kModeCaptureTheFlag);
  EXPECT_EQ(Soldier().position, (Vector3{1, 2, 3}));
  EXPECT_EQ(Soldier().rotation, (Vector3{90, 0, 45}));
  EXPECT_EQ(ItemText(Soldier().treeItem), "north_spawn (CTF)");
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(EntitySheetsTest, AnEditedVehicleWidensTheModesOfItsTemplate) {
  ObjectTemplate(0).modes = Vehicle(0).modes = kModeConquest;
  RefreshTreeItems();
  AcceptSheets([](PropertySheet& sheet) {
    Enter(sheet, "OsID", 0);
    Enter(sheet, "Team", 2);
    Enter(sheet, "Pos", {7, 8, 9});
    ChooseModes(sheet, kModeTeamDeathMatch);
  });
  EXPECT_TRUE(Vehicle(0).Edit());
  EXPECT_EQ(Vehicle(0).osId, 0);
  EXPECT_EQ(Vehicle(0).team, 2);
  EXPECT_EQ(Vehicle(0).position, (Vector3{7, 8, 9}));
  EXPECT_EQ(ItemText(Vehicle(0).treeItem), "New_Object_Spawn1 (TDM)");
  EXPECT_EQ(ItemText(ObjectTemplate(0).treeItem), "New_Object_Spawn1 (CQ,TDM)");
}

// Hand-written files have other characters and numbers than the editor would make.
TEST_F(EntitySheetsTest, OkStoresNothingThatTheUserDidNotChange) {
  ObjectTemplate(0).name = Vehicle(0).name = "tank-spawn";
  ObjectTemplate(0).minSpawnDelay = ObjectTemplate(0).maxSpawnDelay = 30;
  ObjectTemplate(0).team1Object = "Tank_A";
  PointTemplate(0).geometry = "flags/base_m1";
  const ControlPointTemplate point = PointTemplate(0);
  const ObjectSpawnTemplate vehicle = ObjectTemplate(0);
  AcceptSheets();
  EXPECT_TRUE(Vehicle(0).Edit() && Point(0).Edit() && Soldier().Edit());
  EXPECT_TRUE(ObjectTemplate(0).Edit(EntityKind::ObjectSpawn));
  EXPECT_FALSE(editor.levelModified);
  EXPECT_TRUE(PointTemplate(0) == point && ObjectTemplate(0) == vehicle);

  AcceptSheets([](PropertySheet& sheet) { Enter(sheet, "Pos", {1, 2, 3}); });
  EXPECT_TRUE(Vehicle(0).Edit() && Point(0).Edit());
  AcceptSheets([](PropertySheet& sheet) { Enter(sheet, "distance", 1); });
  EXPECT_TRUE(ObjectTemplate(0).Edit(EntityKind::ObjectSpawn));
  EXPECT_TRUE(editor.levelModified);
  EXPECT_EQ(PointTemplate(0).geometry, "flags/base_m1");
  EXPECT_EQ(ObjectTemplate(0).name, "tank-spawn");
  EXPECT_EQ(ObjectTemplate(0).maxSpawnDelay, 30);
  EXPECT_EQ(ObjectTemplate(0).team1Object, "Tank_A");
}

TEST_F(EntitySheetsTest, ATeamGoesToTheGroupsOfThePointInItsModes) {
  auto& groups = entities.spawnGroups;
  groups[0].team = 0;
  Point(0).modes = kModeConquest;
  AcceptSheets([](PropertySheet& sheet) { Enter(sheet, "radius", 60); });
  EXPECT_TRUE(Point(0).Edit());
  EXPECT_EQ(groups[0].team, 0) << "the user did not change it";
  AcceptSheets([](PropertySheet& sheet) { Enter(sheet, "team", 2); });
  EXPECT_TRUE(Point(0).Edit());
  const auto inConquest = SpawnGroupsOf(1, kModeConquest);
  const auto elsewhere = SpawnGroupsOf(1, kModeCaptureTheFlag | kModeTeamDeathMatch);
  ASSERT_TRUE(inConquest.size() == 1 && elsewhere.size() == 1) << "one number, one group in a mode";
  EXPECT_EQ(inConquest[0].team, 2);
  EXPECT_EQ(elsewhere[0].team, 0) << "the point is not there";
  EXPECT_EQ(groups[1].team, 1) << "another control point's";
}

TEST_F(EntitySheetsTest, AnEditedControlPointTellsItsSpawnGroup) {
  SetModeFilter(kModeConquest);
  DropControlPoint(800, 800);
  SetModeFilter(kAllModes);
  AcceptSheets([](PropertySheet& sheet) {
    Type(sheet, "Name", "East Gate");
    Type(sheet, "controlPointName", "East Gate!");
    Type(sheet, "geometry", "flag-base");
    Type(sheet, "addTemplate", "My Flag");
    Type(sheet, "teamGeometry 1", "a.b");
    Type(sheet, "teamGeometry 2", "c d");
    Enter(sheet, "team", 2);
    Enter(sheet, "radius", 25);
    Enter(sheet, "relative position", {1, 9, 2});
    Enter(sheet, "Pos", {5, 6, 7});
    ChooseModes(sheet, kModeConquest | kModeCaptureTheFlag);
  });
  EXPECT_TRUE(Point(2).Edit());
  const ControlPointTemplate& edited = PointTemplate(2);
  EXPECT_EQ(edited.name, "East_Gate");
  EXPECT_EQ(edited.controlPointName, "East_Gate_");
  EXPECT_EQ(edited.geometry, "flag_base");
  EXPECT_EQ(edited.addTemplate, "My_Flag");
  EXPECT_EQ(edited.teamGeometry1, "a_b");
  EXPECT_EQ(edited.teamGeometry2, "c_d");
  EXPECT_EQ(edited.radius, 25);
  EXPECT_EQ(edited.relativePosition, (Vector3{1, 9, 2}));
  EXPECT_EQ(Point(2).position, (Vector3{5, 6, 7}));
  EXPECT_EQ(ItemText(Point(2).treeItem), "East_Gate (CQ,CTF)");
  EXPECT_EQ(entities.spawnGroups[2].team, 2);
  EXPECT_EQ(entities.spawnGroups[2].modes, kModeConquest) << "a group's modes are its own";
  EXPECT_EQ(entities.spawnGroups[1].team, 1) << "another control point's";
}

TEST_F(EntitySheetsTest, CancelAfterAWrongFieldChangesNothing) {
  CancelSheets([](PropertySheet& sheet) {
    Type(sheet, "Name", "half");
    Enter(sheet, "radius", 1);
    Enter(sheet, "relative position", {1, 1, 1});
    Enter(sheet, "Pos", {1, 1, 1});
    ChooseModes(sheet, 0);
  });
  const ControlPointTemplate before = PointTemplate(0);
  EXPECT_FALSE(Point(0).Edit());
  EXPECT_TRUE(PointTemplate(0).name == before.name);
  EXPECT_EQ(PointTemplate(0).radius, before.radius);
  EXPECT_EQ(PointTemplate(0).relativePosition, before.relativePosition);
  EXPECT_EQ(Point(0).position, (Vector3{100, 20, 100}));
  EXPECT_EQ(Point(0).modes, kAllModes);
  EXPECT_FALSE(editor.levelModified);
}

TEST_F(EntitySheetsTest, AnEntityKeepsItsModesWhenNoneIsChosen) {
  AcceptSheets([](PropertySheet& sheet) {
    ChooseModes(sheet, 0);
    Enter(sheet, "Pos", {7, 8, 9});
  });
  for (SpawnInstance* instance :
       {&Soldier(), &Point(0), static_cast<SpawnInstance*>(&Vehicle(0))}) {
    ExpectMessages(1);
    instance->modes = kModeTeamDeathMatch;
    EXPECT_TRUE(instance->Edit());
    EXPECT_EQ(instance->modes, kModeTeamDeathMatch);
    EXPECT_EQ(instance->position, (Vector3{7, 8, 9})) << "what else was changed";
  }
  EXPECT_THAT(Messages(),
              Each("At least one game mode is needed. The game modes stay as they were."));
  EXPECT_EQ(Messages().size(), 3u);
}

TEST_F(EntitySheetsTest, ANameThatIsTakenGetsANumber) {
  DropSoldierSpawn(610, 100);
  AddVehicleTemplate();
  AcceptSheets([](PropertySheet& sheet) { Type(sheet, "Name", "north camp"); });
  EXPECT_TRUE(Point(0).Edit());
  EXPECT_TRUE(Point(1).Edit());
  EXPECT_TRUE(Soldier().Edit());
  EXPECT_TRUE(SoldierSpawns().instances[1]->Edit());
  EditByTreeItem(ObjectTemplate(0).treeItem);
  EditByTreeItem(ObjectTemplate(1).treeItem);
  EXPECT_TRUE(Point(1).Edit());
  for (const EntityKind kind : kEntityKinds) {
    EXPECT_EQ(Of(kind).templates[0]->name, "north_camp") << "of another kind is no matter";
    EXPECT_EQ(Of(kind).templates[1]->name, "north_camp1");
  }
  EXPECT_EQ(SoldierSpawns().instances[1]->name, "north_camp1");
  EXPECT_EQ(ItemText(Point(1).treeItem), "north_camp1 (CQ,CTF,TDM)");
}

// Files of different modes may have different templates of one name.
TEST_F(EntitySheetsTest, ANameIsTakenOnlyInAModeThatIsShared) {
  PointTemplate(0).modes = Point(0).modes = kModeConquest;
  PointTemplate(1).modes = Point(1).modes = kModeCaptureTheFlag;
  AcceptSheets([](PropertySheet& sheet) { Type(sheet, "Name", "Camp"); });
  EXPECT_TRUE(Point(0).Edit());
  EXPECT_TRUE(Point(1).Edit());
  EXPECT_EQ(Point(1).name, "Camp");
  AcceptSheets([](PropertySheet& sheet) { ChooseModes(sheet, kAllModes); });
  EXPECT_TRUE(Point(1).Edit());
  EXPECT_EQ(Point(0).name, "Camp");
  EXPECT_EQ(Point(1).name, "Camp1");
}

TEST_F(EntitySheetsTest, ASpawnIdThatWasTypedIsNotGivenAgain) {
  AcceptSheets([](PropertySheet& sheet) { Enter(sheet, "SpawnID", 12); });
  EXPECT_TRUE(Soldier().Edit());
  DropSoldierSpawn(130, 100);
  EXPECT_EQ(SoldierTemplate(1).spawnId, 13);
}

// An entity that leaves the shown modes goes out of the tree and comes back with them.
TEST_F(EntitySheetsTest, AnEntityCanBeEditedOutOfTheShownModes) {
  SetModeFilter(kModeConquest);
  AcceptSheets([](PropertySheet& sheet) { ChooseModes(sheet, kModeTeamDeathMatch); });
  EXPECT_TRUE(Point(1).Edit());
  EXPECT_THAT(TextsUnder(levelTree.fixed.controlPoints),
              ElementsAre("Drag New Control Point", "New_Control_Point1 (CQ,CTF,TDM)"));
  SetModeFilter(kModeTeamDeathMatch);
  EXPECT_THAT(TextsUnder(levelTree.fixed.controlPoints),
              ElementsAre("Drag New Control Point", "New_Control_Point1 (CQ,CTF,TDM)",
                          "New_Control_Point2 (TDM)"));
}

}  // namespace
}  // namespace mw
