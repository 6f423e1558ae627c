#include <QComboBox>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QSplitterHandle>
#include <QTest>

#include "app/level_tree_actions.h"
#include "app/ui/level_tree_drag.h"
#include "app/ui/level_tree_panel.h"
#include "app/ui/level_tree_widget.h"
#include "app/ui/mini_map_window.h"
#include "app/ui/view_widget.h"
#include "app/ui/window_fixture.h"
#include "objects/entities.h"
#include "objects/entity_editing.h"
#include "objects/object_mapper.h"
#include "objects/object_store.h"

namespace mw {
namespace {

// The panel over a freshly built tree. The operations record what the tree opens.
class LevelTreeTest : public WindowTest {
 protected:
  LevelTreeTest() {
    BuildTree();
    operations.lightSettings = [this] { calls.push_back("light"); };
    operations.objectBrowser = [this] { calls.push_back("browser"); };
    window.show();
    QApplication::processEvents();
  }

  LevelTreeWidget& tree() { return *window.treePanel()->tree(); }
  QTreeWidgetItem* Entry(const char* text) {
    const auto found = tree().findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return found.size() == 1 ? found[0] : nullptr;
  }
  QPoint PlaceOf(const char* text) {
    tree().scrollToItem(Entry(text));
    QApplication::processEvents();
    return tree().visualItemRect(Entry(text)).center();
  }
  void Click(const char* text) {
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, PlaceOf(text));
  }
  // An object that stands in the level and in the tree.
  void Place(const char* name, Vector3 position) {
    StaticObject object;
    object.name = name;
    object.position = position;
    object.treeItem = InsertItem(levelTree.fixed.standardMeshes, name);
    objectStore.objects.push_back(object);
  }
};

TEST_F(LevelTreeTest, ShowsTheFixedItemsInTheirOrder) {
  QStringList texts;
  for (QTreeWidgetItemIterator entry(&tree()); *entry; ++entry) texts << (*entry)->text(0);
  EXPECT_EQ(texts, QStringList({"World", "Lighting", "Shadows", "Fog Settings", "Water Settings",
                                "Teams", "Control Points", "Drag New Control Point",
                                "Soldier Spawns", "Drag New Soldier Spawn", "Object Spawns",
                                "Add Template", "Static Objects", "Standard Meshes", "Tree Meshes",
                                "Cached Objects", "Add New Object"}));
}

TEST_F(LevelTreeTest, FollowsRenamingAndDeleting) {
  Place("Bunker", {});
  SetItemText(objectStore.objects[0].treeItem, "Watchtower");
  EXPECT_TRUE(Entry("Watchtower"));
  DeleteItem(objectStore.objects[0].treeItem);
  EXPECT_FALSE(Entry("Watchtower"));
}

TEST_F(LevelTreeTest, SelectingFromTheEditorUnfoldsAndShowsTheItemWithoutActingOnIt) {
  Place("Bunker", {});
  SelectItem(objectStore.objects[0].treeItem);
  EXPECT_EQ(tree().currentItem(), Entry("Bunker"));
  EXPECT_TRUE(Entry("Standard Meshes")->isExpanded());
  EXPECT_TRUE(IsEditMode(EditMode::TerrainMapper));
  SelectItem(0);
  EXPECT_EQ(tree().currentItem(), nullptr);
}

TEST_F(LevelTreeTest, DoubleClickAndEnterOpenWhatTheItemStandsForOrUnfoldIt) {
  Click("World");
  QTest::keyClick(&tree(), Qt::Key_Return);
  EXPECT_TRUE(Entry("World")->isExpanded());
  QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, PlaceOf("Lighting"));
  QTest::mouseDClick(tree().viewport(), Qt::LeftButton, {}, PlaceOf("Lighting"));
  Click("Add New Object");
  QTest::keyClick(&tree(), Qt::Key_Enter);
  EXPECT_EQ(calls, (std::vector<std::string>{"light", "browser"}));
}

TEST_F(LevelTreeTest, FilterListSetsTheModesAndANewTreeShowsAll) {
  auto* filter = window.findChild<QComboBox*>("modeFilter");
  QTest::keyClick(filter, Qt::Key_End);
  EXPECT_EQ(entities.ModeFilter, kModeTeamDeathMatch);
  BuildTree();
  EXPECT_EQ(filter->currentText(), "Show All");
  EXPECT_EQ(entities.ModeFilter, kAllModes);
}

TEST_F(LevelTreeTest, DeleteKeyDeletesTheObjectAndTakesTheUserToTheNextOne) {
  Place("Bunker", {100, 0, 100});
  Place("Barracks", {200, 0, 200});
  Click("Bunker");
  QTest::keyClick(&tree(), Qt::Key_Delete);
  ASSERT_EQ(objectStore.objects.size(), 1u);
  EXPECT_EQ(tree().currentItem(), Entry("Barracks"));
  EXPECT_TRUE(objectStore.objects[0].selected);
  EXPECT_EQ(camera.position.x, 1024 - 200);

  camera.position.Set(7, 7, 7);
  Click("Barracks");
  EXPECT_EQ(camera.position.x, 1024 - 200) << "a click on it leads back to it";
}

TEST_F(LevelTreeTest, SeveralRowsAreChosenWithCtrlAndShiftAndFollowWhatTheViewSelects) {
  for (const char* name : {"Bunker", "Barracks", "Watchtower"}) Place(name, {100, 0, 100});
  const auto clickWith = [this](const char* text, Qt::KeyboardModifier key) {
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, key, PlaceOf(text));
  };
  const auto selected = [](int index) {
    return objectStore.objects[static_cast<std::size_t>(index)].selected;
  };
  Click("Bunker");
  camera.position.Set(7, 7, 7);
  clickWith("Watchtower", Qt::ControlModifier);
  EXPECT_TRUE(selected(0) && !selected(1) && selected(2));
  clickWith("Bunker", Qt::ControlModifier);
  EXPECT_TRUE(!selected(0) && !selected(1) && selected(2));
  clickWith("Watchtower", Qt::ControlModifier);
  EXPECT_FALSE(objectStore.toolsEnabled) << "none is left";
  Click("Bunker");
  clickWith("Watchtower", Qt::ShiftModifier);
  EXPECT_TRUE(selected(0) && selected(1) && selected(2));
  Click("Barracks");
  EXPECT_TRUE(!selected(0) && selected(1) && !selected(2));

  objectStore.objects[0].selected = true;
  UpdateToolButtons(true);
  EXPECT_EQ(tree().selectedItems().size(), 2);
  QTest::keyClick(&tree(), Qt::Key_Delete);
  EXPECT_FALSE(Entry("Bunker") || Entry("Barracks"));
  EXPECT_TRUE(Entry("Watchtower"));
}

TEST_F(LevelTreeTest, RowsStayUnfoldedAndInTheirOrderOverAFilterChange) {
  auto& tables = entities.Of(EntityKind::ObjectSpawn);
  for (const GameModeMask modes : {kModeConquest, kModeCaptureTheFlag, kModeConquest}) {
    auto made = std::make_unique<ObjectSpawnTemplate>();
    made->name = "tank" + std::to_string(tables.templates.size());
    made->modes = modes;
    tables.templates.push_back(std::move(made));
    tables.templates.back()->UpdateTreeItem(EntityKind::ObjectSpawn);
    tables.instances.push_back(
        tables.templates.back()->CreateInstance(static_cast<int>(tables.templates.size()) - 1));
  }
  RefreshTreeItems();
  const auto rows = [this] {
    QStringList texts;
    const QTreeWidgetItem* const root = Entry("Object Spawns");
    for (int i = 1; i < root->childCount(); ++i)
      texts << root->child(i)->text(0) + (root->child(i)->isExpanded() ? " open" : "");
    return texts.join(", ").toStdString();
  };
  Entry("Object Spawns")->setExpanded(true);
  for (const int row : {1, 3}) Entry("Object Spawns")->child(row)->setExpanded(true);
  const std::string before = "tank0 (CQ) open, tank1 (CTF), tank2 (CQ) open";
  EXPECT_EQ(rows(), before);
  ChooseModeFilter(2);
  EXPECT_EQ(rows(), "tank1 (CTF)");
  ChooseModeFilter(0);
  EXPECT_EQ(rows(), before);
  EXPECT_TRUE(Entry("Object Spawns")->isExpanded());
}

TEST_F(LevelTreeTest, NamesOfOlderToolsAreShownInLetters) {
  Place("M\xFChle", {});
  EXPECT_TRUE(Entry("Mühle"));
}

TEST_F(LevelTreeTest, ItsStripWidensTheTree) {
  auto* const strip = window.findChild<QSplitterHandle*>("splitterStrip");
  ASSERT_TRUE(strip);
  LevelTreePanel& panel = *window.treePanel();
  EXPECT_EQ(panel.width(), 185);
  const auto drag = [strip](int by) {
    const QPoint from = strip->rect().center();
    QTest::mousePress(strip, Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, from + QPoint(by, 0),
                     strip->mapToGlobal(from + QPoint(by, 0)), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(strip, &move);
    QTest::mouseRelease(strip, Qt::LeftButton, {}, strip->rect().center());
  };
  drag(90);
  EXPECT_EQ(panel.width(), 275);
  drag(-2000);
  EXPECT_EQ(panel.width(), LevelTreePanel::kLeastWidth);
  window.resize(window.size() + QSize(100, 0));
  QApplication::processEvents();
  EXPECT_EQ(panel.width(), LevelTreePanel::kLeastWidth) << "the view takes what is new";
}

TEST_F(LevelTreeTest, ClipboardKeysWorkOnWhatIsSelectedInTheLevel) {
  operations.copy = [this] { calls.push_back("copy"); };
  QTest::keyClick(&tree(), Qt::Key_C, Qt::ControlModifier);
  QTest::keyClick(&tree(), Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(calls, (std::vector<std::string>{"copy", "copy"}));
  QTest::keyClick(&tree(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_TRUE(editor.pastePending);
}

TEST_F(LevelTreeTest, DeletingTheCurrentItemChoosesNoOtherByItself) {
  Place("Bunker", {1, 0, 1});
  Place("Barracks", {2, 0, 2});
  SelectItem(objectStore.objects[0].treeItem);
  camera.position.Set(7, 7, 7);
  DeleteItem(objectStore.objects[0].treeItem);
  EXPECT_EQ(tree().currentItem(), nullptr);
  EXPECT_EQ(camera.position, (Vector3{7, 7, 7}));
}

// The drag's event loop runs inside the mouse move; what is dropped where happens in it.
class LevelTreeDragTest : public LevelTreeTest {
 protected:
  void Drag(const char* text, std::function<void()> meanwhile) {
    const QPoint from = PlaceOf(text), to = from + QPoint(40, 0);
    QTest::mousePress(tree().viewport(), Qt::LeftButton, {}, from);
    bool looked = false;
    QTimer::singleShot(0, qApp, [&] {
      looked = true;
      meanwhile();
      QDrag::cancel();
    });
    QMouseEvent move(QEvent::MouseMove, to, tree().viewport()->mapToGlobal(to), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(tree().viewport(), &move);
    if (!looked) QApplication::processEvents();
    QTest::mouseRelease(tree().viewport(), Qt::LeftButton, {}, to);
  }
  // Whether the view takes the drop at this place, when the mouse came in over the Mini-Map.
  bool DropOnView(QPoint place) {
    QMimeData data;
    data.setData("application/x-mapwright-level-tree-item", "1");
    const QPoint entry = window.miniMap()->geometry().center();
    QDragEnterEvent enter(entry, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(window.view(), &enter);
    if (!enter.isAccepted()) return false;
    QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(window.view(), &move);
    QDragLeaveEvent leave;
    QApplication::sendEvent(window.view(), &leave);
    return move.isAccepted();
  }
};

TEST_F(LevelTreeDragTest, ViewTakesDropsOfTheTreeButNotOnTheMiniMap) {
  Entry("Control Points")->setExpanded(true);
  bool onView = false, onMiniMap = true;
  Drag("Drag New Control Point", [&] {
    EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper));
    const QRect miniMap = window.miniMap()->geometry();
    onView = DropOnView(miniMap.bottomRight() + QPoint(20, 20));
    onMiniMap = DropOnView(miniMap.center());
  });
  EXPECT_TRUE(onView);
  EXPECT_FALSE(onMiniMap);
  EXPECT_FALSE(DropOnView(window.view()->rect().center())) << "nothing is dragged any more";
}

TEST_F(LevelTreeDragTest, MovingWithTheButtonHeldOverOtherItemsDoesNothing) {
  Entry("Object Spawns")->setExpanded(true);
  Click("Add Template");
  bool taken = false;
  Drag("Add Template", [&] { taken = DropOnView(window.view()->rect().center()); });
  EXPECT_FALSE(taken);
  EXPECT_EQ(tree().currentItem(), Entry("Add Template"));
  EXPECT_TRUE(IsEditMode(EditMode::TerrainMapper));
}

}  // namespace
}  // namespace mw
