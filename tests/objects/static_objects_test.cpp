#include "objects/static_objects.h"

#include <gmock/gmock.h>

#include "data/load_report.h"
#include "objects/object_level_test.h"
#include "objects/static_object_records.h"
#include "objects/unknown_objects.h"

namespace mw {
namespace {

using StaticObjectsTest = ObjectLevelTest;

TEST_F(StaticObjectsTest, ObjectsArePlacedAndDeleted) {
  CachedMesh& mesh = objectStore.meshes.emplace_back();
  mesh.name = "oak";
  mesh.lists = {1, 2, 3, 4};
  PutCursorOver(200, 7, 300);
  objectStore.showTreeMeshes = false;
  story.Do("one of a cached mesh", [] { EXPECT_TRUE(AddStaticObjectFromCache(0)); });
  story.Do("one of no mesh", [] { EXPECT_FALSE(AddStaticObjectFromCache(1)); });
  story.Do("one by its name", [] { EXPECT_TRUE(PlaceStaticObject("Oak", 10, 20, {1, 2, 3})); });
  story.Do("a name that is none", [] { EXPECT_FALSE(PlaceStaticObject("elm", 1, 1, {})); });
  objectStore.hoveredObject = objectStore.lastHoveredObject = 1;
  levelTree.view.remove = [](TreeItem) {
    EXPECT_EQ(objectStore.objects.size(), 1u) << "the tree may choose the next object meanwhile";
  };
  story.Do("the selected one is deleted", [] { DeleteStaticObject(0); });
  levelTree.view.remove = [](TreeItem) {};
  story.Do("one that is not there", [] { DeleteStaticObject(7); });
  const TreeItem item = objectStore.objects[0].treeItem;
  EXPECT_EQ(FindObjectByTreeItem(item), 0);
  EXPECT_EQ(FindObjectByTreeItem(item + 1), -1);
  EXPECT_EQ(FindObjectByTreeItem(0), -1);
  objectStore.objects.resize(kMaxStaticObjects - 1, objectStore.objects[0]);
  EXPECT_TRUE(PlaceStaticObject("oak", 1, 1, {}));
  story.Do("more than there may be", [] {
    EXPECT_FALSE(AddStaticObjectFromCache(0));
    EXPECT_FALSE(PlaceStaticObject("oak", 1, 1, {}));
  });
  story.Expect("placed_objects");
}

TEST_F(StaticObjectsTest, ObjectsFollowTheCatalogueAndUnknownOnesAreReported) {
  for (const char* name : {"shed", "hut", "Shed", "mill"})
    AppendStaticObject(NewStaticObject(name));
  const auto report = [] {
    BeginLoadReport();
    NoteUnknownObjects();
    EndLoadReport();
  };
  story.Do("report", report);
  story.Do("a catalogue with sheds",
           [this] { LoadCatalogue("[X]\ndefault=StandardMesh(box)\nshed=TreeMesh(shed_m1)\n"); });
  for (int i = 0; i < 20; ++i) AppendStaticObject(NewStaticObject("hall" + std::to_string(i)));
  story.Do("report of many", report);
  story.Expect("unknown_objects");
}

TEST_F(StaticObjectsTest, EverythingIsSetOnTheGroundAndCleared) {
  MakeFlatGround();
  SetHeight(10, 20, 200);
  AddObject("hut", {kSide - 10 * terrain.cellSize - 1, 500, 20 * terrain.cellSize + 1});
  AddVehicleTemplate();
  DropVehicle(500, 500);
  story.Do("set on the ground", SnapAllToGround);
  objectStore.objects[0].selected = true;
  objectStore.lastHoveredObject = 0;
  objectStore.tool = ObjectTool::RotateX;
  objectStore.toolsEnabled = editor.somethingCopied = true;
  story.Do("cleared", ClearAllObjects);
  story.Expect("cleared_objects");
}

}  // namespace
}  // namespace mw
