#include "objects/entity_editing.h"

#include <gmock/gmock.h>

#include "objects/entity_creation.h"
#include "objects/object_clipboard.h"
#include "objects/object_level_test.h"

namespace mw {
namespace {

using EntityEditingTest = ObjectLevelTest;

void AddSpawnGroup(std::int32_t id) {
  SpawnGroup& group = entities.spawnGroups.emplace_back();
  group.id = id;
  group.team = 2;
  group.modes = kAllModes;
}

TEST_F(EntityEditingTest, NewSpawnsBelongToTheNearestControlPoint) {
  story.Do("soldier spawn without a control point", [] { DropSoldierSpawn(100, 100); });
  story.Do("vehicle template, given up", [] { CancelSheets(), AddObjectSpawnTemplate(); });
  story.Do("vehicle template", AddVehicleTemplate);
  story.Do("vehicle without a control point", [] { DropVehicle(10, 10); });
  story.Do("control point at 300", [] { DropControlPoint(300, 100); });
  story.Do("control point at 600", [] { DropControlPoint(600, 100); });
  PointTemplate(1).team = 2;
  story.Do("soldier spawn near it", [] { DropSoldierSpawn(605, 110); });
  story.Do("another one", [] { DropSoldierSpawn(605, 90); });
  story.Do("vehicle near it", [] { DropVehicle(620, 100); });
  story.Do("what is no template", [] { EXPECT_FALSE(DropTemplate(Vehicle(0).treeItem)); });
  // Its number in the list is another one after that.
  story.Do("the first control point is deleted",
           [] { DeleteInstance(EntityKind::ControlPoint, 0); });
  story.Do("vehicle near the other", [] { DropVehicle(600, 100); });
  DropControlPoint(100, 100);
  Point(0).modes = kModeConquest;
  SetModeFilter(kModeCaptureTheFlag);
  story.Do("soldier spawn in other modes", [] { DropSoldierSpawn(605, 100); });
  story.Expect("new_spawns");
}

TEST_F(EntityEditingTest, ANewControlPointTakesAFreeNumberAndTheShownModes) {
  for (const int id : {1, 2, 4}) AddSpawnGroup(id);
  SetModeFilter(kModeCaptureTheFlag);
  story.Do("control point", [] { DropControlPoint(10, 10); });
  for (int id = 5; id <= 48; ++id) AddSpawnGroup(id);
  story.Do("without room for a group", [] { DropControlPoint(20, 10); });
  entities.spawnGroups.resize(1);
  for (int i = 3; i <= 8; ++i) DropControlPoint(100, 50);
  story.Do("a ninth control point", [] { DropControlPoint(20, 10); });
  story.Expect("new_control_points");
}

TEST_F(EntityEditingTest, ANameWithoutRoomForItsNumberIsCut) {
  DropControlPoint(100, 100);
  PointTemplate(0).name = std::string(47, 'p');
  for (int i = 0; i < 11; ++i) DropSoldierSpawn(100, 100);
  EXPECT_EQ(SoldierTemplate(0).name, std::string(46, 'p') + "1");
  EXPECT_EQ(SoldierTemplate(10).name, std::string(45, 'p') + "11");
}

TEST_F(EntityEditingTest, TheNearestControlPointIsFoundWithin4000WholeUnits) {
  DropControlPoint(100, 100);
  DropControlPoint(300, 100);
  const struct {
    float secondX;
    Vector3 place;
    int nearest;
  } rows[] = {{300, {200, 20, 100}, 1},  // the later one of two
              {300, {199.5f, 20, 100}, 0}, {300, {199.9f, 20, 100.5f}, 0},
              {100.9f, {100, 20, 100}, 1}, {9000, {100, 20, 4100.9f}, 0},
              {9000, {100, 20, 4101}, -1}};
  for (const auto& [secondX, place, nearest] : rows) {
    Point(1).position.x = secondX;
    EXPECT_EQ(NearestControlPoint(place, kAllModes),
              nearest < 0 ? nullptr : &PointTemplate(static_cast<std::size_t>(nearest)))
        << place.x << ' ' << place.z;
  }
}

TEST_F(EntityEditingTest, FullTablesRefuseDropsWithTheirMessage) {
  for (const bool templatesAreFull : {false, true}) {
    AddVehicleTemplate();
    for (EntityTables& table : entities.tables) {
      while (!templatesAreFull && table.instances.size() < kMaxInstances)
        table.instances.push_back(std::make_unique<SoldierSpawn>());
      while (templatesAreFull && table.templates.size() < kMaxTemplates)
        table.templates.push_back(std::make_unique<ObjectSpawnTemplate>());
    }
    Answer({PromptAnswer::Ok, PromptAnswer::Ok, PromptAnswer::Ok});
    DropNewEntity(EntityKind::SoldierSpawn);
    DropNewEntity(EntityKind::ControlPoint);
    EXPECT_FALSE(templatesAreFull ? (AddObjectSpawnTemplate(), false) : DropTemplateAt(0));
    ExpectPrompts({"Error: Too many soldier spawn templates. (Stop)",
                   "Error: Too many control point templates. (Stop)",
                   "Error: Too many object spawn templates. (Stop)"});
    EXPECT_THAT(entities.spawnGroups, ::testing::IsEmpty());
    for (EntityTables& table : entities.tables) {
      EXPECT_LE(table.templates.size(), templatesAreFull ? kMaxTemplates : 1);
      EXPECT_EQ(table.instances.size(), templatesAreFull ? 0 : kMaxInstances);
      table.instances.clear();
    }
  }
}

TEST_F(EntityEditingTest, DeletingTakesAlongWhatNothingElseUses) {
  for (const float x : {100.0f, 200.0f, 300.0f}) DropControlPoint(x, 50);
  for (int i = 0; i < 4; ++i) DropSoldierSpawn(100, 100);
  AddVehicleTemplate();
  DropVehicle(100, 100);
  PointTemplate(2).spawnGroupId = 1;
  Point(0).modes = kModeConquest;
  Point(2).modes = kModeConquest | kModeCaptureTheFlag;
  entities.hovered = {EntityKind::ControlPoint, 1};
  story.Do("a control point", [] { DeleteInstance(EntityKind::ControlPoint, 1); });
  story.Do("one whose group another has", [] { DeleteInstance(EntityKind::ControlPoint, 1); });
  entities.spawnGroups[0].modes = kModeConquest;
  story.Do("the last one", [] { DeleteInstance(EntityKind::ControlPoint, 0); });
  story.Do("one that is not there", [] { DeleteInstance(EntityKind::ControlPoint, 0); });
  story.Do("a soldier spawn", [] { DeleteInstance(EntityKind::SoldierSpawn, 3); });
  story.Do("a template with a vehicle", [] { DeleteByTreeItem(ObjectTemplate(0).treeItem); });
  story.Do("its vehicle", [] { DeleteByTreeItem(Vehicle(0).treeItem); });
  story.Do("the template", [] { DeleteByTreeItem(ObjectTemplate(0).treeItem); });
  AddVehicleTemplate();
  auto& soldiers = entities.Of(EntityKind::SoldierSpawn).instances;
  for (const std::ptrdiff_t i : {0, 1}) {
    DeleteItem(soldiers[static_cast<std::size_t>(i)]->treeItem);
    soldiers.erase(soldiers.begin() + i);
  }
  story.Do("unused templates", RemoveUnusedTemplates);
  story.Do("none is left", RemoveUnusedTemplates);
  entities.hovered = {EntityKind::SoldierSpawn, 0};
  story.Do("everything", ClearAllEntities);
  EXPECT_EQ(levelTree.items.size(), 17u) << "the fixed items";
  story.Expect("deleted_entities");
}

TEST_F(EntityEditingTest, ACopiedBaseGetsAPointWithANameAndAGroupOfItsOwn) {
  SpawnInstance& point = DropControlPoint(100, 100);
  SpawnInstance& soldier = DropSoldierSpawn(100, 110);
  AddVehicleTemplate();
  ObjectSpawn& vehicle = DropVehicle(100, 90);
  DropControlPoint(500, 505);  // near where it will be pasted
  DropSoldierSpawn(900, 900);
  SoldierTemplate(1).group = 3;  // as one of a point that was deleted
  DropVehicle(900, 900).osId = 4;
  PointTemplate(0).radius = 33;
  PointTemplate(0).team = entities.spawnGroups[0].team = 2;
  point.modes = vehicle.modes = kModeConquest;
  soldier.rotation = vehicle.rotation = {90, 0, 0};
  point.selected = soldier.selected = vehicle.selected = true;
  story.Do("copy", CopySelected);
  // What happens then does not matter.
  PointTemplate(0).radius = 1;
  SelectFromTree(Point(1).treeItem);
  DeleteByTreeItem(vehicle.treeItem);
  PutCursorOver(500, 20, 500);
  story.Do("paste", [] { PasteCopied(0, 0); });
  entities.Of(EntityKind::ObjectSpawn).instances.clear();
  DeleteByTreeItem(ObjectTemplate(0).treeItem);
  for (int i = 4; i <= 8; ++i) DropControlPoint(100, 50);
  story.Do("paste without room for the control point and without the template",
           [] { PasteCopied(0, 0); });
  DeleteByTreeItem(Point(0).treeItem);
  entities.spawnGroups.resize(kMaxSpawnGroups);
  story.Do("paste without room for its group", [] { PasteCopied(0, 0); });
  story.Expect("pasted_base");
}

TEST_F(EntityEditingTest, AFilterHidesWhatIsInOtherModesAndBringsItBackInItsPlace) {
  SetModeFilter(kModeConquest);
  DropControlPoint(100, 100);
  AddVehicleTemplate();
  DropVehicle(100, 100);
  SetModeFilter(kAllModes);
  DropControlPoint(200, 100);
  AddVehicleTemplate();
  DropVehicle(200, 100);
  Point(0).selected = objectStore.toolsEnabled = true;
  story.Do("CTF", [] { SetModeFilter(kModeCaptureTheFlag); });
  story.Do("all", [] { SetModeFilter(kAllModes); });
  ObjectTemplate(1).modes = kModeConquest;
  story.Do("CTF, where the vehicle is without its template",
           [] { SetModeFilter(kModeCaptureTheFlag); });
  story.Do("all again", [] { SetModeFilter(kAllModes); });
  story.Expect("mode_filter");
}

TEST_F(EntityEditingTest, ATemplateThatWasHiddenIsUnfoldedAsBefore) {
  AddVehicleTemplate();
  std::vector<TreeItem> unfolded;
  levelTree.view.isUnfolded = [](TreeItem) { return true; };
  levelTree.view.unfold = [&unfolded](TreeItem item) { unfolded.push_back(item); };
  ObjectTemplate(0).modes = kModeConquest;
  SetModeFilter(kModeCaptureTheFlag);
  SetModeFilter(kAllModes);
  EXPECT_THAT(unfolded, ::testing::ElementsAre(ObjectTemplate(0).treeItem));
}

TEST_F(EntityEditingTest, SelectingAnItemSelectsAndShowsItsEntityAlone) {
  DropControlPoint(100, 100);
  const SpawnInstance& spawn = DropSoldierSpawn(200, 300);
  AddVehicleTemplate();
  AddObject("hut", {1, 2, 3}).selected = Point(0).selected = true;
  objectStore.showSoldierSpawns = false;
  story.Do("soldier spawn", [&] { EXPECT_TRUE(SelectFromTree(spawn.treeItem)); });
  Point(0).selected = true;
  story.Do("it is deleted", [&] { DeleteByTreeItem(spawn.treeItem); });
  story.Do("the other, too", [&] { DeleteByTreeItem(Point(0).treeItem); });
  story.Do("other items", [] {
    for (const TreeItem item : {ObjectTemplate(0).treeItem, levelTree.fixed.newControlPoint, 0u}) {
      EXPECT_FALSE(SelectFromTree(item));
      DeleteByTreeItem(item == ObjectTemplate(0).treeItem ? 0 : item);
    }
    EXPECT_FALSE(EditByTreeItem(levelTree.fixed.addTemplate));
  });
  story.Expect("entities_from_the_tree");
}

}  // namespace
}  // namespace mw
