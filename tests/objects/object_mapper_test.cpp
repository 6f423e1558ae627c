#include "objects/object_mapper.h"

#include "data/load_report.h"
#include "objects/object_clipboard.h"
#include "objects/object_level_test.h"
#include "objects/object_selection.h"
#include "objects/static_object_records.h"
#include "objects/static_objects.h"
#include "objects/unknown_objects.h"

namespace mw {
namespace {

// A hut, an oak and a vehicle stand in a row.
class ObjectMapperTest : public ObjectLevelTest {
 protected:
  ObjectMapperTest()
      : hut(AddObject("hut", {100, 0, 100})),
        oak(AddObject("oak", {200, 0, 100})),
        vehicle((AddVehicleTemplate(), DropVehicle(300, 100))) {}
  static void HoverObject(int index) {
    objectStore.lastHoveredObject = index;
    entities.hovered = {};
  }
  static void HoverVehicle(int index) {
    objectStore.lastHoveredObject = -1;
    entities.hovered = {EntityKind::ObjectSpawn, index};
  }
  static void Click() { ToggleSelectAtCursor(0, 0); }
  static void ClickObject(int index) {
    HoverObject(index);
    Click();
  }
  static void SelectAll(std::initializer_list<Placement*> items) {
    for (Placement* item : items) item->selected = true;
    ComputePivot();
    UpdateToolButtons(true);
  }
  void Press(std::string_view step, ObjectControl control) {
    story.Do(step, [control] { PressObjectControl(control); });
  }
  void DragUp(std::string_view step, int pixels) {
    story.Do(step, [pixels] { DragObjects(50, 80 - pixels, 50, 80); });
  }
  // Over the ground of a place in level coordinates.
  void DragTo(std::string_view step, float levelX, float z) {
    LookDownOn(levelX, z);
    story.Do(step, [] { DragObjects(50, 50, 0, 0); });
  }

  StaticObject &hut, &oak;
  ObjectSpawn& vehicle;
};

TEST_F(ObjectMapperTest, AClickSelectsOneThingAndCtrlAddsToIt) {
  story.Do("the hut", [] { ClickObject(0); });
  story.Do("the oak", [] { ClickObject(1); });
  editor.ctrlHeld = true;
  HoverVehicle(0);
  story.Do("Ctrl, the vehicle", Click);
  story.Do("Ctrl, the vehicle again", Click);
  editor.ctrlHeld = false;
  story.Do("nothing", [] { ClickObject(-1); });
  for (const int index : {-1, 2, 5000}) {
    story.Do("what is not there", [index] {
      ClickObject(index);
      HoverVehicle(index < 0 ? index : index - 1);
      Click();
      PressTranslate(0, 0);
      EXPECT_FALSE(EditHovered());
    });
  }
  ClickObject(0);
  AcceptSheets("Pos: 1 2 3");
  story.Do("edit of the hut", [] { EXPECT_TRUE(EditHovered()); });
  HoverVehicle(0);
  story.Do("of the vehicle, which is not selected", [] { EXPECT_FALSE(EditHovered()); });
  Click();
  story.Do("of the vehicle", [] { EXPECT_TRUE(EditHovered()); });
  editor.ctrlHeld = true;
  EXPECT_FALSE(EditHovered());
  story.Expect("clicks");
}

TEST_F(ObjectMapperTest, OnlyToolsThatAreEnabledCanBeChosenAndWhatIsHiddenIsNotSelected) {
  using enum ObjectControl;
  Press("nothing is selected", RotateY);
  ClickObject(0);
  for (const ObjectControl tool :
       {Translate, RaiseLower, RotateX, RotateY, RotateZ, ScaleWidth, ScaleHeight})
    Press("tool", tool);
  story.Do("the selection changes", [] { ClickObject(0); });
  SelectAll({&hut, &oak, &vehicle});
  PressObjectControl(RotateX);
  Press("no control points", ShowControlPoints);
  Press("no soldier spawns", ShowSoldierSpawns);
  Press("no trees", ShowTreeMeshes);
  Press("no vehicles", ShowObjectSpawns);
  Press("no houses", ShowStandardMeshes);
  Press("trees", ShowTreeMeshes);
  Press("no snapping", SnapToGround);
  for (const ObjectControl view :
       {ViewCollisionMesh, ViewDetailMesh, ViewTexturedMesh, ViewBoundingBox})
    Press("view", view);
  story.Expect("object_controls");
}

TEST_F(ObjectMapperTest, ADraggedGroupFollowsTheCursorOverTheGround) {
  MakeFlatGround();
  hut.position = {100, 0, 100};
  vehicle.position = {140, 5, 160};
  SelectAll({&hut, &vehicle});
  PressObjectControl(ObjectControl::Translate);
  DragTo("to 500, 600", 500, 600);
  PressObjectControl(ObjectControl::SnapToGround);
  hut.position.y = 300;
  DragTo("to 400, 600 without snapping", 400, 600);
  camera.pitch = 30;
  camera.UpdateDirection();
  story.Do("to the sky", [] { DragObjects(50, 50, 0, 0); });
  story.Expect("dragged_group");
}

TEST_F(ObjectMapperTest, PixelsUpRaiseAndTurn) {
  MakeFlatGround();
  SelectAll({&hut, &vehicle});
  PressObjectControl(ObjectControl::RaiseLower);
  hut.position.y = vehicle.position.y = 100;
  DragUp("raised", 20);
  DragUp("lowered into the ground", -2000);
  PressObjectControl(ObjectControl::SnapToGround);
  DragUp("lowered without snapping", -100);
  PressObjectControl(ObjectControl::RotateX);
  DragUp("about X", 10);
  PressObjectControl(ObjectControl::RotateY);
  DragUp("about Y", -4);
  PressObjectControl(ObjectControl::RotateZ);
  DragUp("about Z", 1);
  story.Do("released", ReleaseObjects);
  PressObjectControl(ObjectControl::Select);
  DragUp("with no tool", 10);
  // Nothing enables them yet.
  objectStore.tool = ObjectTool::ScaleWidth;
  DragUp("wider", 10);
  objectStore.tool = ObjectTool::ScaleHeight;
  DragUp("higher", 20);
  story.Expect("raised_and_turned");
}

TEST_F(ObjectMapperTest, TheTranslateToolSelectsWhatItIsPressedOnAndMovesItAtOnce) {
  MakeFlatGround();
  ClickObject(0);
  PressObjectControl(ObjectControl::Translate);
  const auto press = [] { PressTranslate(50, 50); };
  story.Do("pressed on the selected hut", press);
  HoverObject(1);
  story.Do("on the oak", press);
  LookDownOn(250, 100);
  editor.pressX = 48, editor.pressY = 49;
  DragTo("moved by 3 pixels", 250, 100);
  editor.pressY = 48;
  DragTo("by 4 pixels", 250, 100);
  editor.pressX = editor.pressY = 50;
  DragTo("and back", 260, 100);
  story.Do("released", ReleaseObjects);
  PressObjectControl(ObjectControl::Translate);
  HoverObject(-1);
  LookDownOn(700, 800);
  story.Do("pressed on the ground", press);
  story.Do("released", ReleaseObjects);
  HoverVehicle(0);
  editor.ctrlHeld = true;
  story.Do("Ctrl, on the vehicle", press);
  story.Expect("translate_tool");
}

TEST_F(ObjectMapperTest, DeletingTakesObjectsAndEntitiesWithTheirItems) {
  DropVehicle(310, 100);
  SelectAll({&hut, &vehicle});
  levelTree.view.remove = [](TreeItem) { EXPECT_TRUE(levelTree.suppressObjectSelection); };
  story.Do("the selected ones", DeleteSelected);
  levelTree.view.remove = [](TreeItem) {};
  EXPECT_FALSE(levelTree.suppressObjectSelection);
  story.Do("none", DeleteSelected);
  AddObject("hut", {1, 2, 3}).selected = true;
  RefreshTreeItems();
  const TreeItem from = ObjectTemplate(0).treeItem, oakItem = objectStore.objects[0].treeItem;
  const std::vector<TreeItem> items{from, oakItem, Vehicle(0).treeItem};
  story.Do("chosen in the tree", [&] { EXPECT_TRUE(SelectByTreeItems(items)); });
  story.Do("deleted in the tree", [&] { DeleteByTreeItems(items); });
  story.Do("chosen when they are gone", [&] { EXPECT_FALSE(SelectByTreeItems(items)); });
  story.Expect("deleted_selection");
}

TEST_F(ObjectMapperTest, PastedCopiesKeepTheirArrangementAtWholeUnits) {
  hut.position = {100.25f, 0, 100};
  hut.rotation = {90, 1, 2};
  hut.scale = hut.colour = {1, 2, 3};
  hut.scaleGiven = hut.colorGiven = true;
  oak.position = {110.75f, 0, 104.5f};
  vehicle.position = {106, 0, 102};
  DropVehicle(1, 3);
  SelectAll({&hut, &oak, &vehicle});
  CopySelected();
  hut.scale = hut.rotation = {};
  hut.selected = false;
  ComputePivot();
  DeleteSelected();
  objectStore.CursorPoint = {3, 20, 500};  // the centre; the hut lies 5.25 to the right in the view
  story.Do("paste", [] { PasteCopied(0, 0); });
  EXPECT_EQ(objectStore.CursorPoint, (Vector3{3, 20, 500}));
  DeselectAll();
  story.Do("copy of nothing", CopySelected);
  story.Do("paste of it", [] { PasteCopied(0, 0); });
  story.Expect("pasted_objects");
}

TEST_F(ObjectMapperTest, APasteIntoAFullTableSaysSoOnce) {
  while (objectStore.objects.size() < 2046) AddObject("hut", {});
  for (std::size_t i = 0; i < 5; ++i) objectStore.objects[i].selected = true;
  CopySelected();
  Answer({PromptAnswer::Ok});
  PasteCopied(0, 0);
  EXPECT_EQ(objectStore.objects.size(), 2048u);
  ExpectPrompts({"Maximum number of objects exceeded"});
}

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
