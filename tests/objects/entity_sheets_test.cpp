#include "objects/object_level_test.h"
#include "objects/sheet_text.h"
#include "objects/static_objects.h"
#include "support/golden.h"

namespace mw {
namespace {

class EntitySheetsTest : public ObjectLevelTest {
 protected:
  EntitySheetsTest() {
    DropControlPoint(100, 100);
    DropControlPoint(600, 100);
    DropSoldierSpawn(110, 100);
    AddVehicleTemplate();
    DropVehicle(120, 100);
    AddObject("hut", {1, 2, 3});
  }
  static bool EditVehicleTemplate() { return EditByTreeItem(ObjectTemplate(0).treeItem); }
  // The sheets that the action opens; the user cancels them.
  static std::string SheetsOf(const std::function<void()>& act) {
    std::string shown;
    hooks.runPropertySheet = [&](PropertySheet& sheet) {
      shown += Described(sheet);
      return false;
    };
    act();
    return shown;
  }
  // The user enters something into the sheet that the action opens, and presses OK.
  void Edit(std::string_view step, std::string_view entries, const std::function<void()>& act) {
    AcceptSheets(entries);
    story.Do(step, act);
  }
};

TEST_F(EntitySheetsTest, NewEntitiesShowTheGamesUsualValues) {
  Vehicle(0).modes = kModeConquest;
  ExpectGolden(
      "objects/property_sheets.txt", SheetsOf([] {
        EditVehicleTemplate();
        for (const TreeItem item : {Vehicle(0).treeItem, Soldier(0).treeItem, Point(0).treeItem})
          EditByTreeItem(item);
        EXPECT_FALSE(EditStaticObject(0) || EditStaticObject(1));
      }));
}

TEST_F(EntitySheetsTest, WhatIsEnteredIsStoredCleanedAndShown) {
  DropVehicle(130, 100);
  Edit("vehicle template, its name and team 1",
       "Name: Light tank (north)/1; Team 1 Object: Tank_A; Team 2 Object: B; spawnDelayAtStart: 1; "
       "timeToLive: 2; distance: 60; damageWhenLost: 3; maxNrOfObjectSpawned: 4",
       EditVehicleTemplate);
  Edit("its delays", "minSpawnDelay: -5; maxSpawnDelay: -7", EditVehicleTemplate);
  Edit("the longest delay", "minSpawnDelay: 2147483647", EditVehicleTemplate);
  SoldierTemplate(0).modes = kModeConquest;
  Edit("soldier spawn",
       "Name: north spawn; Spawn Group: 2; SpawnID: 12; spawnAsParaTrooper: 1; Pos: 1 2 3; Rot: 90 "
       "0 45; Game Modes: CTF",
       [] { Soldier(0).Edit(); });
  ObjectTemplate(0).modes = Vehicle(0).modes = kModeConquest;
  RefreshTreeItems();
  Edit("vehicle", "OsID: 0; Team: 2; Pos: 7 8 9; Rot: 1 2 3; Game Modes: TDM",
       [] { Vehicle(0).Edit(); });
  DropVehicle(140, 100);
  Edit("another one to the same mode", "Game Modes: TDM", [] { Vehicle(2).Edit(); });
  SetModeFilter(kModeConquest);
  DropControlPoint(800, 800);
  SetModeFilter(kAllModes);
  Edit(
      "control point",
      "Name: East Gate; controlPointName: East Gate!; geometry: flag-base; addTemplate: My Flag; "
      "teamGeometry 1: a.b; teamGeometry 2: c d; team: 2; radius: 25; areaValue: 3; "
      "timeToGetControl: 4; timeToLoseControl: 5; disableIfEnemyInsideRadius: 6; "
      "disableWhenLosingControl: 7; loseControlWhenEnemyClose: 8; loseControlWhenNotClose: 9; "
      "unableToChangeTeam: 10; hasCollisionPhysics: 11; relative position: 1 9 2; Pos: 5 6 7; Game "
      "Modes: CQ CTF",
      [] { Point(2).Edit(); });
  Edit("object", "Pos: 1 2 30; Rot: 45 0 0", [] { EditStaticObject(0); });
  story.Expect("edited_entities");
}

// Hand-written files have other characters and numbers than the editor would make.
TEST_F(EntitySheetsTest, OkStoresNothingThatTheUserDidNotChange) {
  ObjectTemplate(0).name = Vehicle(0).name = "tank-spawn";
  ObjectTemplate(0).minSpawnDelay = ObjectTemplate(0).maxSpawnDelay = 30;
  ObjectTemplate(0).team1Object = "Tank_A";
  PointTemplate(0).geometry = "flags/base_m1";
  Edit("nothing", "", [] {
    EXPECT_TRUE(Vehicle(0).Edit() && Point(0).Edit() && Soldier(0).Edit());
    EXPECT_TRUE(EditStaticObject(0) && EditVehicleTemplate());
  });
  Edit("places", "Pos: 1 2 3", [] { EXPECT_TRUE(Vehicle(0).Edit() && Point(0).Edit()); });
  Edit("distance", "distance: 1", EditVehicleTemplate);
  CancelSheets("Name: half; radius: 1; relative position: 1 1 1; Pos: 1 1 1; Game Modes: ");
  story.Do("cancelled", [] { EXPECT_FALSE(Point(0).Edit()); });
  story.Expect("kept_values");
}

TEST_F(EntitySheetsTest, ATeamGoesToTheGroupsOfThePointInItsModes) {
  entities.spawnGroups[0].team = 0;
  Point(0).modes = kModeConquest;
  Edit("radius", "radius: 60", [] { Point(0).Edit(); });
  Edit("team", "team: 2", [] { Point(0).Edit(); });
  while (entities.spawnGroups.size() < kMaxSpawnGroups) entities.spawnGroups.emplace_back();
  Edit("team without room for one more group", "team: 1", [] { Point(0).Edit(); });
  Edit("team of another", "team: 0", [] { Point(1).Edit(); });
  story.Expect("teams_of_groups");
}

TEST_F(EntitySheetsTest, AnEntityKeepsItsModesWhenNoneIsChosen) {
  for (SpawnInstance* instance : {&Soldier(0), &Point(0), &Placed(EntityKind::ObjectSpawn, 0)}) {
    instance->modes = kModeTeamDeathMatch;
    Edit("no modes", "Game Modes: ; Pos: 7 8 9", [instance] { instance->Edit(); });
  }
  story.Expect("no_modes_chosen");
}

// Files of different modes may have different templates of one name.
TEST_F(EntitySheetsTest, ANameThatIsTakenInASharedModeGetsANumber) {
  DropSoldierSpawn(610, 100);
  AddVehicleTemplate();
  PointTemplate(0).modes = Point(0).modes = kModeConquest;
  PointTemplate(1).modes = Point(1).modes = kModeCaptureTheFlag;
  constexpr std::string_view kName = "Name: north camp";
  Edit("soldier spawns", kName, [] { EXPECT_TRUE(Soldier(0).Edit() && Soldier(1).Edit()); });
  Edit("vehicle templates", kName, [] {
    for (const std::size_t i : {0, 1, 1}) EditByTreeItem(ObjectTemplate(i).treeItem);
  });
  Edit("control points", kName, [] { EXPECT_TRUE(Point(0).Edit() && Point(1).Edit()); });
  Edit("modes of one", "Game Modes: CQ CTF TDM", [] { Point(1).Edit(); });
  story.Expect("taken_names");
}

// An entity that leaves the shown modes goes out of the tree and comes back with them.
TEST_F(EntitySheetsTest, AnEntityCanBeEditedOutOfTheShownModes) {
  SetModeFilter(kModeConquest);
  Point(1).selected = true;
  Edit("to TDM", "Game Modes: TDM", [] { Point(1).Edit(); });
  story.Do("TDM is shown", [] { SetModeFilter(kModeTeamDeathMatch); });
  story.Expect("edited_out_of_sight");
}

}  // namespace
}  // namespace mw
