#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QSplitterHandle>

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

// The panel over a freshly built tree. The dialogs are told.
class LevelTreeTest : public WindowTest {
 protected:
  LevelTreeTest() {
    BuildTree();
    shell.lightSettingsDialog = [this] { Tell("the light settings"); };
    shell.objectBrowserDialog = [this] { Tell("the object browser"); };
    window.show();
    QApplication::processEvents();
    camera.position = kElsewhere;
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
  void Click(const char* text, Qt::KeyboardModifier key = Qt::NoModifier) {
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, key, PlaceOf(text));
    TellRows(text, "click");
  }
  void Press(Qt::Key key) {
    QTest::keyClick(&tree(), key);
    TellRows(QKeySequence(key).toString().toStdString(), "press");
  }
  // An object that stands in the level and in the tree.
  static void Place(const char* name, float x) {
    StaticObject object;
    object.name = name;
    object.position = {x, 0, 100};
    object.treeItem = InsertItem(levelTree.fixed.standardMeshes, name);
    objectStore.objects.push_back(object);
  }
  static TreeItem ItemOf(std::size_t object) { return objectStore.objects[object].treeItem; }

  // The rows that can be scrolled to, what is selected in the level, and what the camera shows.
  void TellRows(const std::string& what, const std::string& act = "after") {
    Tell("---- " + act + " " + what);
    for (QTreeWidgetItemIterator row(&tree()); *row; ++row) {
      std::string indent;
      bool isFolded = false;
      for (const QTreeWidgetItem* up = (*row)->parent(); up; up = up->parent()) {
        isFolded |= !up->isExpanded();
        indent += "  ";
      }
      if (isFolded) continue;
      Tell(indent + (*row)->text(0).toStdString() +
           ((*row)->isExpanded() && (*row)->childCount() > 0 ? ", open" : "") +
           ((*row)->isSelected() ? ", selected" : "") +
           (*row == tree().currentItem() ? ", current" : ""));
    }
    std::string level = "in the level:";
    for (const StaticObject& object : objectStore.objects) {
      if (object.selected) level += ' ' + object.name.String();
    }
    Tell(level + (IsEditMode(EditMode::ObjectMapper) ? " (Object Mapper)" : "") +
         (camera.position == kElsewhere ? "" : ", which the camera shows"));
    camera.position = kElsewhere;
  }

  static constexpr Vector3 kElsewhere{7, 7, 7};
};

TEST_F(LevelTreeTest, ShowsTheFixedItemsAndFollowsWhatTheEditorDoesWithoutActingOnIt) {
  tree().expandAll();
  TellRows("building");
  tree().collapseAll();
  Place("M\xFChle", 1);  // a name of older tools
  Place("Barracks", 2);
  SelectItem(ItemOf(0));
  TellRows("selecting");
  SetItemText(ItemOf(1), "Watchtower");
  DeleteItem(ItemOf(0));
  TellRows("renaming and deleting");
  SelectItem(0);
  TellRows("selecting nothing");
}

TEST_F(LevelTreeTest, DoubleClickAndEnterOpenWhatTheItemStandsForOrUnfoldIt) {
  Click("World");
  Press(Qt::Key_Return);
  Click("Lighting");
  QTest::mouseDClick(tree().viewport(), Qt::LeftButton, {}, PlaceOf("Lighting"));
  Click("Add New Object");
  Press(Qt::Key_Enter);
}

TEST_F(LevelTreeTest, DeleteKeyDeletesTheObjectAndTakesTheUserToTheNextOne) {
  Place("Bunker", 100);
  Place("Barracks", 200);
  Click("Bunker");
  Press(Qt::Key_Delete);
  Click("Barracks");  // leads back to it
}

TEST_F(LevelTreeTest, SeveralRowsAreChosenWithCtrlAndShiftAndFollowWhatTheViewSelects) {
  for (const char* name : {"Bunker", "Barracks", "Watchtower"}) Place(name, 100);
  Click("Bunker");
  Click("Watchtower", Qt::ControlModifier);
  Click("Bunker", Qt::ControlModifier);
  Click("Watchtower", Qt::ControlModifier);
  EXPECT_FALSE(objectStore.toolsEnabled) << "none is left";
  Click("Bunker");
  Click("Watchtower", Qt::ShiftModifier);
  Click("Barracks");
  objectStore.objects[0].selected = true;
  UpdateToolButtons(true);
  TellRows("selecting in the view");
  for (const Qt::Key key : {Qt::Key_C, Qt::Key_X}) {
    editor.somethingCopied = false;
    QTest::keyClick(&tree(), key, Qt::ControlModifier);
    EXPECT_TRUE(editor.somethingCopied);
  }
  QTest::keyClick(&tree(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_TRUE(editor.pastePending);
  Press(Qt::Key_Delete);
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
  Entry("Object Spawns")->setExpanded(true);
  for (const int row : {1, 3}) Entry("Object Spawns")->child(row)->setExpanded(true);
  auto* const filter = window.findChild<QComboBox*>("modeFilter");
  TellRows("building");
  for (const char* choice : {"Show CTF", "Show All", "Show CQ", "Show TDM"}) {
    filter->setCurrentText(choice);
    TellRows(choice, "choose");
  }
  BuildTree();
  EXPECT_EQ(filter->currentText(), "Show All") << "in a new tree";
  EXPECT_EQ(entities.ModeFilter, kAllModes);
}

TEST_F(LevelTreeTest, ItsStripWidensTheTree) {
  auto* const strip = window.findChild<QSplitterHandle*>("splitterStrip");
  ASSERT_TRUE(strip);
  LevelTreePanel& panel = *window.treePanel();
  EXPECT_EQ(panel.width(), 185);
  const QPoint middle = strip->rect().center();
  DragFrom(strip, middle, middle + QPoint(90, 0));
  EXPECT_EQ(panel.width(), 275);
  DragFrom(strip, middle, middle - QPoint(2000, 0));
  EXPECT_EQ(panel.width(), LevelTreePanel::kLeastWidth);
  window.resize(window.size() + QSize(100, 0));
  QApplication::processEvents();
  EXPECT_EQ(panel.width(), LevelTreePanel::kLeastWidth) << "the view takes what is new";
}

// The drag's event loop runs inside the mouse move; what is dropped where happens in it.
class LevelTreeDragTest : public LevelTreeTest {
 protected:
  void Drag(const char* text, const std::function<void()>& meanwhile) {
    const QPoint from = PlaceOf(text);
    bool looked = false;
    QTimer::singleShot(0, qApp, [&] {
      looked = true;
      meanwhile();
      QDrag::cancel();
    });
    DragFrom(tree().viewport(), from, from + QPoint(40, 0), [&] {
      if (!looked) QApplication::processEvents();
    });
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
  TellRows("dragging");
}

}  // namespace
}  // namespace mw
