#include <gmock/gmock.h>
#include <limits>

#include "objects/entity_test.h"
#include "objects/spawn_groups.h"

namespace mw {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

struct ShownField {
  std::string label;
  FieldType type;
  std::int32_t count;
  bool editable = true;
  GameModeMask filterModes = 0;
  bool operator==(const ShownField&) const = default;
};

void PrintTo(const ShownField& field, std::ostream* out) {
  *out << field.label << " (type " << static_cast<int>(field.type) << ", " << field.count
       << (field.editable ? "" : ", read-only") << ", modes " << field.filterModes << ")";
}

constexpr auto kText = FieldType::Text;
constexpr auto kVehicle = FieldType::Vehicle;
constexpr auto kInteger = FieldType::Integers;
constexpr auto kFloats = FieldType::Floats;
constexpr auto kModes = FieldType::GameModes;

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
  std::vector<ShownField> FieldsOf(TreeItem item) {
    std::vector<ShownField> fields;
    CancelSheets([&](PropertySheet& sheet) {
      title = sheet.title;
      for (int i = 0; i < sheet.fieldCount; ++i) {
        const PropertyField& field = sheet.fields[static_cast<std::size_t>(i)];
        fields.push_back(
            {field.label.String(), field.type, field.count, field.editable, field.filterModes});
      }
    });
    EXPECT_TRUE(EditByTreeItem(item));
    EXPECT_FALSE(editor.levelModified);
    return fields;
  }
  std::string title;
};

TEST_F(EntitySheetsTest, ObjectSpawnTemplate) {
  EXPECT_THAT(
      FieldsOf(ObjectTemplate(0).treeItem),
      ElementsAre(
          ShownField{"Name", kText, 47}, ShownField{"Team 1 Object", kVehicle, 47},
          ShownField{"Team 2 Object", kVehicle, 47}, ShownField{"minSpawnDelay", kInteger, 1},
          ShownField{"maxSpawnDelay", kInteger, 1}, ShownField{"spawnDelayAtStart", kInteger, 1},
          ShownField{"timeToLive", kInteger, 1}, ShownField{"distance", kInteger, 1},
          ShownField{"damageWhenLost", kInteger, 1},
          ShownField{"maxNrOfObjectSpawned", kInteger, 1}));
  EXPECT_EQ(title, "Edit Object Spawn Template");
}

TEST_F(EntitySheetsTest, SoldierSpawn) {
  EXPECT_THAT(
      FieldsOf(Soldier().treeItem),
      ElementsAre(ShownField{"Name", kText, 47},
                  ShownField{"Spawn Group", FieldType::ControlPoint, 1, true, kAllModes},
                  ShownField{"SpawnID", kInteger, 1}, ShownField{"spawnAsParaTrooper", kInteger, 1},
                  ShownField{"Pos", kFloats, 3}, ShownField{"Rot", kFloats, 3},
                  ShownField{"Game Modes", kModes, 4}));
  EXPECT_EQ(title, "Edit Soldier Spawn");
}

TEST_F(EntitySheetsTest, ObjectSpawn) {
  Vehicle(0).modes = kModeConquest;
  EXPECT_THAT(
      FieldsOf(Vehicle(0).treeItem),
      ElementsAre(ShownField{"Name", kText, 47, false}, ShownField{"Pos", kFloats, 3},
                  ShownField{"Rot", kFloats, 3},
                  ShownField{"OsID", FieldType::ControlPointOrNone, 1, true, kModeConquest},
                  ShownField{"Team", FieldType::Team, 1}, ShownField{"Game Modes", kModes, 4}));
  EXPECT_EQ(title, "Edit Object Spawn");
}

TEST_F(EntitySheetsTest, ControlPoint) {
  EXPECT_THAT(
      FieldsOf(Point(0).treeItem),
      ElementsAre(ShownField{"Name", kText, 47}, ShownField{"controlPointName", kText, 47},
                  ShownField{"radius", kInteger, 1}, ShownField{"team", FieldType::Team, 1},
                  ShownField{"areaValue", kInteger, 1}, ShownField{"timeToGetControl", kInteger, 1},
                  ShownField{"timeToLoseControl", kInteger, 1},
                  ShownField{"disableIfEnemyInsideRadius", kInteger, 1},
                  ShownField{"disableWhenLosingControl", kInteger, 1},
                  ShownField{"loseControlWhenEnemyClose", kInteger, 1},
                  ShownField{"loseControlWhenNotClose", kInteger, 1},
                  ShownField{"unableToChangeTeam", kInteger, 1}, ShownField{"geometry", kText, 47},
                  ShownField{"hasCollisionPhysics", kInteger, 1},
                  ShownField{"addTemplate", kText, 47}, ShownField{"teamGeometry 1", kText, 47},
                  ShownField{"teamGeometry 2", kText, 47},
                  ShownField{"relative position", kFloats, 3}, ShownField{"Pos", kFloats, 3},
                  ShownField{"Game Modes", kModes, 4}));
  EXPECT_EQ(title, "Edit Control Point");
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
