#include "objects/entity_editing.h"

#include <gmock/gmock.h>

#include "objects/entity_creation.h"
#include "objects/entity_test.h"
#include "objects/object_clipboard.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EntityCreationTest : public EntityTest {
 protected:
  static const ControlPointTemplate* Nearest(const Vector3& position) {
    return NearestControlPoint(position, kAllModes);
  }
  static void AddGroupOfTeam2(std::int32_t id) {
    SpawnGroup& group = entities.spawnGroups.emplace_back();
    group.id = id;
    group.team = 2;
  }
};
class EntityDeletionTest : public EntityTest {};
class EntityTreeTest : public EntityTest {};
class EntityPasteTest : public EntityTest {};

TEST_F(EntityCreationTest, ThreeControlPointsOnAnEmptyLevel) {
  for (const float x : {100.0f, 200.0f, 300.0f}) DropControlPoint(x, 50);
  ASSERT_EQ(ControlPoints().templates.size(), 3U);
  ASSERT_EQ(entities.spawnGroups.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    const int number = static_cast<int>(i) + 1;
    const std::string name = "New_Control_Point" + std::to_string(number);
    EXPECT_EQ(PointTemplate(i).name, name);
    EXPECT_EQ(PointTemplate(i).controlPointName, name);
    EXPECT_EQ(PointTemplate(i).group, number);
    EXPECT_EQ(PointTemplate(i).spawnGroupId, number);
    EXPECT_EQ(entities.spawnGroups[i].id, number);
    EXPECT_EQ(ControlPoints().instances[i]->name, name);
  }
  EXPECT_EQ(ControlPoints().instances[1]->position, (Vector3{200, 20, 50}));
  EXPECT_THAT(TextsUnder(levelTree.fixed.controlPoints),
              ElementsAre("Drag New Control Point", "New_Control_Point1 (CQ,CTF,TDM)",
                          "New_Control_Point2 (CQ,CTF,TDM)", "New_Control_Point3 (CQ,CTF,TDM)"));
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(EntityCreationTest, ControlPointsStartWithValuesThatNoSheetShows) {
  DropControlPoint(100, 100);
  EXPECT_EQ(PointTemplate(0).objectSpawnerId, 1);
  EXPECT_EQ(entities.spawnGroups[0].icon, "test1.tga");
  EXPECT_EQ(entities.spawnGroups[0].status, -1);
}

TEST_F(EntityCreationTest, ARefusedNinthControlPointLeavesNothingBehind) {
  for (int i = 0; i < 8; ++i) DropControlPoint(100.0f * static_cast<float>(i), 50);
  ExpectMessages(1);
  DropControlPoint(900, 50);
  EXPECT_THAT(Messages(), ElementsAre("Too many control point templates."));
  EXPECT_EQ(ControlPoints().templates.size(), 8U);
  EXPECT_EQ(entities.spawnGroups.size(), 8U);
  EXPECT_EQ(ControlPoints().instances.size(), 8U);
  EXPECT_EQ(ChildrenOf(levelTree.fixed.controlPoints).size(), 9U) << "with the item to drag";
}

TEST_F(EntityCreationTest, ANewGroupTakesTheSmallestFreeNumberAndTheShownModes) {
  for (const int id : {1, 2, 4}) AddGroupOfTeam2(id);
  SetModeFilter(kModeCaptureTheFlag);
  DropControlPoint(10, 10);
  EXPECT_EQ(entities.spawnGroups.back().id, 3);
  EXPECT_EQ(entities.spawnGroups.back().modes, kModeCaptureTheFlag);
  EXPECT_EQ(PointTemplate(0).modes, kModeCaptureTheFlag);
  EXPECT_EQ(ControlPoints().instances[0]->modes, kModeCaptureTheFlag);
}

TEST_F(EntityCreationTest, WithoutRoomForAGroupAControlPointTakesTheLastOne) {
  for (int id = 1; id <= 48; ++id) AddGroupOfTeam2(id);
  ExpectMessages(1);
  DropControlPoint(10, 10);
  EXPECT_THAT(Messages(), ElementsAre("Too many spawn groups."));
  EXPECT_EQ(PointTemplate(0).spawnGroupId, 48);
  EXPECT_EQ(PointTemplate(0).team, 2);
}

TEST_F(EntityCreationTest, ASoldierSpawnBelongsToTheNearestControlPoint) {
  DropControlPoint(100, 100);
  DropControlPoint(600, 100);
  SpawnInstance& spawn = DropSoldierSpawn(605, 110);
  EXPECT_EQ(SoldierTemplate(0).group, 2);
  EXPECT_EQ(SoldierTemplate(0).spawnId, 1);
  EXPECT_EQ(spawn.name, "New_Control_Point2_Spawn1");
  EXPECT_EQ(DropSoldierSpawn(605, 90).name, "New_Control_Point2_Spawn2");
  EXPECT_EQ(SoldierTemplate(1).spawnId, 2);
  EXPECT_THAT(TextsUnder(levelTree.fixed.soldierSpawns),
              ElementsAre("Drag New Soldier Spawn", "New_Control_Point2_Spawn1 (CQ,CTF,TDM)",
                          "New_Control_Point2_Spawn2 (CQ,CTF,TDM)"));
}

// Its number in the list is another one after a deletion.
TEST_F(EntityCreationTest, NewSpawnsBelongToTheNearestControlPointItself) {
  for (const float x : {100.0f, 300.0f, 600.0f}) DropControlPoint(x, 100);
  PointTemplate(2).team = 2;
  DeleteInstance(EntityKind::ControlPoint, 0);
  DropSoldierSpawn(605, 100);
  EXPECT_EQ(SoldierTemplate(0).group, 3);
  EXPECT_EQ(SoldierTemplate(0).name, "New_Control_Point3_Spawn1");
  AddVehicleTemplate();
  const ObjectSpawn& vehicle = DropVehicle(605, 100);
  EXPECT_EQ(vehicle.osId, 3);
  EXPECT_EQ(vehicle.team, 2);
  ControlPoints().instances[1]->modes = kModeConquest;
  SetModeFilter(kModeCaptureTheFlag);
  DropSoldierSpawn(605, 100);
  EXPECT_EQ(SoldierTemplate(1).group, 2) << "the nearest in its own modes";
}

TEST_F(EntityCreationTest, ASoldierSpawnWithoutControlPointsIsInGroup1) {
  DropSoldierSpawn(100, 100);
  EXPECT_EQ(SoldierTemplate(0).name, "_Spawn1");
  EXPECT_EQ(SoldierTemplate(0).group, 1);
}

TEST_F(EntityCreationTest, ANameWithoutRoomForItsNumberIsCut) {
  DropControlPoint(100, 100);
  PointTemplate(0).name = std::string(47, 'p');
  for (int i = 0; i < 11; ++i) DropSoldierSpawn(100, 100);
  EXPECT_EQ(SoldierTemplate(0).name, std::string(46, 'p') + "1");
  EXPECT_EQ(SoldierTemplate(10).name, std::string(45, 'p') + "11");
}

TEST_F(EntityCreationTest, TheLaterOfTwoEquallyNearControlPointsWins) {
  DropControlPoint(100, 100);
  DropControlPoint(300, 100);
  EXPECT_EQ(Nearest({200, 20, 100}), &PointTemplate(1));
  EXPECT_EQ(Nearest({199.5f, 20, 100}), &PointTemplate(0));
  EXPECT_EQ(Nearest({199.9f, 20, 100.5f}), &PointTemplate(0));
  ControlPoints().instances[1]->position = {100.9f, 20, 100};
  EXPECT_EQ(Nearest({100, 20, 100}), &PointTemplate(1)) << "fractions of a unit do not count";
}

TEST_F(EntityCreationTest, AControlPointCountsWithin4000Units) {
  DropControlPoint(0, 0);
  DropControlPoint(0, 0);
  ControlPoints().instances[0]->position = {0, 0, 9000};
  EXPECT_EQ(Nearest({0, 20, 4000.9f}), &PointTemplate(1));
  EXPECT_EQ(Nearest({0, 20, 4001}), nullptr) << "neither is near";
}

TEST_F(EntityCreationTest, AVehicleTakesNumberAndTeamOfTheNearestControlPoint) {
  AddVehicleTemplate();
  EXPECT_EQ(DropVehicle(10, 10).team, 1);
  EXPECT_EQ(Vehicle(0).osId, 1);
  DropControlPoint(100, 100);
  DropControlPoint(600, 100);
  PointTemplate(1).team = 2;
  const ObjectSpawn& second = DropVehicle(620, 100);
  EXPECT_EQ(second.osId, 2);
  EXPECT_EQ(second.team, 2);
  EXPECT_EQ(second.position, (Vector3{620, 20, 100}));
  EXPECT_THAT(TextsUnder(ObjectSpawns().templates[0]->treeItem),
              ElementsAre("New_Object_Spawn1 (CQ,CTF,TDM)", "New_Object_Spawn1 (CQ,CTF,TDM)"));
  EXPECT_FALSE(DropTemplate(second.treeItem)) << "an instance is no template";
}

TEST_F(EntityCreationTest, AnObjectSpawnTemplateIsMadeOnlyOnOk) {
  std::string title;
  CancelSheets([&](PropertySheet& sheet) { title = sheet.title; });
  AddObjectSpawnTemplate();
  EXPECT_EQ(title, "Edit Object Spawn Template");
  EXPECT_THAT(ObjectSpawns().templates, IsEmpty());
  EXPECT_THAT(TextsUnder(levelTree.fixed.objectSpawns), ElementsAre("Add Template"));
  EXPECT_FALSE(editor.levelModified);

  AddVehicleTemplate();
  EXPECT_TRUE(editor.levelModified);
  AddVehicleTemplate();
  EXPECT_THAT(TextsUnder(levelTree.fixed.objectSpawns),
              ElementsAre("Add Template", "New_Object_Spawn1 (CQ,CTF,TDM)",
                          "New_Object_Spawn2 (CQ,CTF,TDM)"));
}

TEST_F(EntityCreationTest, FullTablesRefuseDropsWithTheirMessage) {
  AddVehicleTemplate();
  ExpectMessages(5);
  for (const EntityKind kind : kEntityKinds) {
    while (Of(kind).instances.size() < kMaxInstances) {
      Of(kind).instances.push_back(std::make_unique<SoldierSpawn>());
    }
  }
  DropNewEntity(EntityKind::SoldierSpawn);
  DropNewEntity(EntityKind::ControlPoint);
  EXPECT_FALSE(DropTemplateAt(0));
  EXPECT_THAT(SoldierSpawns().templates, IsEmpty());
  EXPECT_THAT(ControlPoints().templates, IsEmpty());
  EXPECT_THAT(entities.spawnGroups, IsEmpty());
  for (const EntityKind kind : kEntityKinds) {
    EXPECT_EQ(Of(kind).instances.size(), kMaxInstances);
    while (Of(kind).templates.size() < kMaxTemplates) {
      Of(kind).templates.push_back(std::make_unique<ObjectSpawnTemplate>());
    }
  }
  AddObjectSpawnTemplate();
  EXPECT_EQ(ObjectSpawns().templates.size(), kMaxTemplates);
  SoldierSpawns().instances.clear();
  DropNewEntity(EntityKind::SoldierSpawn);
  EXPECT_EQ(SoldierSpawns().templates.size(), kMaxTemplates);
  EXPECT_THAT(SoldierSpawns().instances, IsEmpty());
  EXPECT_THAT(Messages(),
              ElementsAre("Too many soldier spawn templates.", "Too many control point templates.",
                          "Too many object spawn templates.", "Too many object spawn templates.",
                          "Too many soldier spawn templates."));
}

TEST_F(EntityDeletionTest, AControlPointTakesItsGroupAndTemplateAlong) {
  for (const float x : {100.0f, 200.0f, 300.0f}) DropControlPoint(x, 50);
  editor.levelModified = false;
  DeleteInstance(EntityKind::ControlPoint, 1);
  EXPECT_TRUE(editor.levelModified);
  ASSERT_EQ(entities.spawnGroups.size(), 2U);
  EXPECT_EQ(entities.spawnGroups[1].id, 3);
  ASSERT_EQ(ControlPoints().templates.size(), 2U);
  EXPECT_EQ(PointTemplate(1).name, "New_Control_Point3");
  EXPECT_EQ(TemplateOf(*ControlPoints().instances[1]), &PointTemplate(1));
  EXPECT_THAT(TextsUnder(levelTree.fixed.controlPoints),
              ElementsAre("Drag New Control Point", "New_Control_Point1 (CQ,CTF,TDM)",
                          "New_Control_Point3 (CQ,CTF,TDM)"));
}

TEST_F(EntityDeletionTest, AGroupThatAnotherControlPointUsesStays) {
  DropControlPoint(100, 50);
  DropControlPoint(200, 50);
  PointTemplate(1).spawnGroupId = 1;
  ControlPoints().instances[0]->modes = kModeConquest;
  ControlPoints().instances[1]->modes = kModeConquest | kModeCaptureTheFlag;
  DeleteLast(EntityKind::ControlPoint);
  ASSERT_EQ(entities.spawnGroups.size(), 2U);
  EXPECT_EQ(entities.spawnGroups[0].modes, kModeConquest | kModeTeamDeathMatch)
      << "only where the point was and the other one is not";
  entities.spawnGroups[0].modes = kModeConquest;
  DeleteLast(EntityKind::ControlPoint);
  ASSERT_EQ(entities.spawnGroups.size(), 1U);
  EXPECT_EQ(entities.spawnGroups[0].id, 2);
}

TEST_F(EntityDeletionTest, TheLastSoldierSpawnTakesItsTemplateAlongButAVehicleDoesNot) {
  DropSoldierSpawn(100, 100);
  DeleteLast(EntityKind::SoldierSpawn);
  EXPECT_THAT(SoldierSpawns().templates, IsEmpty());
  AddVehicleTemplate();
  DropVehicle(100, 100);
  DeleteLast(EntityKind::ObjectSpawn);
  EXPECT_THAT(ObjectSpawns().instances, IsEmpty());
  EXPECT_EQ(ObjectSpawns().templates.size(), 1U);
}

TEST_F(EntityDeletionTest, ATemplateWithVehiclesIsKept) {
  AddVehicleTemplate();
  const TreeItem templateItem = ObjectTemplate(0).treeItem;
  DropVehicle(100, 100);
  ExpectMessages(1);
  DeleteByTreeItem(templateItem);
  EXPECT_THAT(Messages(), ElementsAre("Can't delete a template with spawns under it."));
  EXPECT_EQ(ObjectSpawns().templates.size(), 1U);
  EXPECT_EQ(ItemText(templateItem), "New_Object_Spawn1 (CQ,CTF,TDM)");

  DeleteByTreeItem(Vehicle(0).treeItem);
  DeleteByTreeItem(templateItem);
  EXPECT_THAT(ObjectSpawns().templates, IsEmpty());
  EXPECT_THAT(TextsUnder(levelTree.fixed.objectSpawns), ElementsAre("Add Template"));
}

TEST_F(EntityDeletionTest, UnusedTemplatesAreRemovedAndTheOthersKeepTheirInstances) {
  for (int i = 0; i < 4; ++i) DropSoldierSpawn(100, 100);
  AddVehicleTemplate();
  auto& spawns = SoldierSpawns().instances;
  spawns.erase(spawns.begin());
  spawns.erase(spawns.begin() + 1);
  const SpawnTemplate* first = TemplateOf(*spawns[0]);
  const SpawnTemplate* second = TemplateOf(*spawns[1]);
  editor.levelModified = false;
  RemoveUnusedTemplates();
  EXPECT_EQ(SoldierSpawns().templates.size(), 2U);
  EXPECT_EQ(TemplateOf(*spawns[0]), first);
  EXPECT_EQ(TemplateOf(*spawns[1]), second);
  EXPECT_EQ(ObjectSpawns().templates.size(), 1U) << "waits for its first spawn";
  EXPECT_TRUE(editor.levelModified);
  editor.levelModified = false;
  RemoveUnusedTemplates();
  EXPECT_FALSE(editor.levelModified) << "nothing was unused";
}

TEST_F(EntityDeletionTest, ClearingLeavesTheFixedItemsAndTheNextSpawnId) {
  DropControlPoint(100, 100);
  DropSoldierSpawn(100, 100);
  AddVehicleTemplate();
  DropVehicle(100, 100);
  editor.levelModified = false;
  ClearAllEntities();
  for (const EntityKind kind : kEntityKinds) {
    EXPECT_THAT(Of(kind).instances, IsEmpty());
    EXPECT_THAT(Of(kind).templates, IsEmpty());
  }
  EXPECT_THAT(entities.spawnGroups, IsEmpty());
  EXPECT_EQ(levelTree.items.size(), 17U) << "the fixed items";
  EXPECT_EQ(entities.nextSpawnId, 2);
  EXPECT_FALSE(editor.levelModified);
}

TEST_F(EntityPasteTest, ACopiedBaseGetsAPointWithANameAndAGroupOfItsOwn) {
  SpawnInstance& point = DropControlPoint(100, 100);
  SpawnInstance& soldier = DropSoldierSpawn(100, 110);
  AddVehicleTemplate();
  ObjectSpawn& vehicle = DropVehicle(100, 90);
  DropControlPoint(500, 505);  // near where it will be pasted
  DropSoldierSpawn(900, 900);
  SoldierTemplate(1).group = 3;  // as one of a point that was deleted
  PointTemplate(0).radius = 33;
  PointTemplate(0).team = entities.spawnGroups[0].team = 2;
  point.modes = kModeConquest;
  soldier.rotation = {90, 0, 0};
  point.selected = soldier.selected = vehicle.selected = true;
  CopySelected();
  // What happens then does not matter.
  PointTemplate(0).radius = 1;
  SelectFromTree(ControlPoints().instances[1]->treeItem);
  DeleteByTreeItem(vehicle.treeItem);
  DeleteByTreeItem(ObjectTemplate(0).treeItem);

  PointAt(500, 500);
  PasteCopied(0, 0);
  const ControlPointTemplate& made = PointTemplate(2);
  EXPECT_EQ(made.name, "New_Control_Point3");
  EXPECT_EQ(made.radius, 33);
  EXPECT_EQ(made.team, 2);
  EXPECT_EQ(made.spawnGroupId, 4) << "no spawn belongs to it yet";
  EXPECT_EQ(ControlPoints().instances[2]->position, (Vector3{500, 20, 500}));
  ASSERT_EQ(entities.spawnGroups.size(), 3U);
  EXPECT_EQ(entities.spawnGroups[2].id, 4);
  EXPECT_EQ(entities.spawnGroups[2].team, 2);
  EXPECT_EQ(entities.spawnGroups[2].modes, kModeConquest);
  EXPECT_EQ(SoldierTemplate(2).group, 4);
  EXPECT_EQ(SoldierTemplate(2).name, "New_Control_Point3_Spawn1");
  EXPECT_EQ(SoldierTemplate(2).spawnId, 3);
  EXPECT_NEAR(SoldierSpawns().instances[2]->position.z, 510, 1e-3);
  EXPECT_EQ(SoldierSpawns().instances[2]->rotation.x, 90);
  EXPECT_EQ(ObjectTemplate(0).name, "New_Object_Spawn1") << "made again";
  EXPECT_EQ(Vehicle(0).osId, 4);
  EXPECT_EQ(Vehicle(0).team, 2);
}

TEST_F(EntityPasteTest, WhatDoesNotFitIsSaidOnceAndLeavesNothingBehind) {
  for (int i = 0; i < 8; ++i) DropControlPoint(100, 50).selected = true;
  CopySelected();
  ExpectMessages(1);
  PasteCopied(0, 0);
  EXPECT_THAT(Messages(), ElementsAre("Too many control point templates."));
  EXPECT_EQ(ControlPoints().instances.size(), 8U);
  EXPECT_EQ(entities.spawnGroups.size(), 8U);
}

TEST_F(EntityTreeTest, AFilterHidesWhatIsInOtherModes) {
  SetModeFilter(kModeConquest);
  DropControlPoint(100, 100);
  AddVehicleTemplate();
  DropVehicle(100, 100);
  const std::vector<std::string> both{"Add Template", "New_Object_Spawn1 (CQ)"};
  EXPECT_EQ(TextsUnder(levelTree.fixed.objectSpawns), both);

  ControlPoints().instances[0]->selected = objectStore.toolsEnabled = true;
  SetModeFilter(kModeCaptureTheFlag);
  EXPECT_FALSE(ControlPoints().instances[0]->selected || objectStore.toolsEnabled);
  EXPECT_THAT(TextsUnder(levelTree.fixed.controlPoints), ElementsAre("Drag New Control Point"));
  EXPECT_THAT(TextsUnder(levelTree.fixed.objectSpawns), ElementsAre("Add Template"));

  SetModeFilter(kAllModes);
  EXPECT_THAT(TextsUnder(levelTree.fixed.controlPoints),
              ElementsAre("Drag New Control Point", "New_Control_Point1 (CQ)"));
  EXPECT_EQ(TextsUnder(levelTree.fixed.objectSpawns), both);
  EXPECT_THAT(TextsUnder(ObjectTemplate(0).treeItem), ElementsAre("New_Object_Spawn1 (CQ)"));
  EXPECT_EQ(ItemText(Vehicle(0).treeItem), "New_Object_Spawn1 (CQ)");
}

TEST_F(EntityTreeTest, WhatAFilterHidComesBackInItsPlace) {
  DropControlPoint(100, 100);
  DropControlPoint(200, 100);
  AddVehicleTemplate();
  AddVehicleTemplate();
  ControlPoints().instances[0]->modes = ObjectTemplate(0).modes = kModeConquest;
  SetModeFilter(kModeCaptureTheFlag);
  SetModeFilter(kAllModes);
  EXPECT_THAT(TextsUnder(levelTree.fixed.controlPoints),
              ElementsAre("Drag New Control Point", "New_Control_Point1 (CQ)",
                          "New_Control_Point2 (CQ,CTF,TDM)"));
  EXPECT_THAT(
      TextsUnder(levelTree.fixed.objectSpawns),
      ElementsAre("Add Template", "New_Object_Spawn1 (CQ)", "New_Object_Spawn2 (CQ,CTF,TDM)"));
}

TEST_F(EntityTreeTest, AVehicleWhoseTemplateIsHiddenShowsUnderTheRootMeanwhile) {
  AddVehicleTemplate();
  DropVehicle(100, 100);
  ObjectTemplate(0).modes = kModeConquest;
  SetModeFilter(kModeCaptureTheFlag);
  EXPECT_EQ(ParentOf(Vehicle(0).treeItem), levelTree.fixed.objectSpawns);
  SetModeFilter(kAllModes);
  EXPECT_EQ(ParentOf(Vehicle(0).treeItem), ObjectTemplate(0).treeItem);
  EXPECT_THAT(TextsUnder(levelTree.fixed.objectSpawns),
              ElementsAre("Add Template", "New_Object_Spawn1 (CQ)"));
}

TEST_F(EntityTreeTest, SelectingAnItemSelectsAndShowsItsEntityAlone) {
  DropControlPoint(100, 100);
  SpawnInstance& spawn = DropSoldierSpawn(200, 300);
  ControlPoints().instances[0]->selected = true;
  objectStore.objects.emplace_back();
  objectStore.objects[0].selected = true;
  objectStore.showSoldierSpawns = false;
  EXPECT_TRUE(SelectFromTree(spawn.treeItem));
  EXPECT_TRUE(spawn.selected && objectStore.showSoldierSpawns);
  EXPECT_FALSE(ControlPoints().instances[0]->selected);
  EXPECT_FALSE(objectStore.objects[0].selected);
  EXPECT_TRUE(objectStore.toolsEnabled);
  EXPECT_EQ(camera.position, (Vector3{824, 55, 350}));
  EXPECT_FLOAT_EQ(camera.pitch, -35);
  ASSERT_FALSE(scripted::script.status[1].empty());
  EXPECT_EQ(scripted::script.status[1].back(),
            "Soldier Spawn: New_Control_Point1_Spawn1 ( CQ CTF TDM )");
}

TEST_F(EntityTreeTest, TheToolsGoWithTheLastSelectedEntity) {
  SpawnInstance& spawn = DropSoldierSpawn(200, 300);
  SelectFromTree(DropControlPoint(100, 100).treeItem);
  DeleteByTreeItem(spawn.treeItem);
  EXPECT_TRUE(objectStore.toolsEnabled);
  DeleteByTreeItem(ControlPoints().instances[0]->treeItem);
  EXPECT_FALSE(objectStore.toolsEnabled);
}

TEST_F(EntityTreeTest, OtherItemsSelectNothing) {
  AddVehicleTemplate();
  EXPECT_FALSE(SelectFromTree(ObjectTemplate(0).treeItem));
  EXPECT_FALSE(SelectFromTree(levelTree.fixed.newControlPoint));
  EXPECT_FALSE(SelectFromTree(0));
  EXPECT_FALSE(EditByTreeItem(levelTree.fixed.addTemplate));
}

}  // namespace
}  // namespace mw
