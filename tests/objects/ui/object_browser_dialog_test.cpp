#include "objects/ui/object_browser_dialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "core/editor_state.h"
#include "objects/object_store.h"
#include "objects/objects_state.h"
#include "support/open_dialog.h"
#include "support/sandbox.h"

namespace mw {
namespace {

struct OpenBrowser : OpenDialog {
  QStringList Listed() const {
    QStringList names;
    for (int row = 0; row < List().count(); ++row) names << List().item(row)->text();
    return names;
  }
  QListWidget& List() const { return Widget<QListWidget>("objectList"); }
  QPushButton& Ok() const { return Widget<QPushButton>("okButton"); }
  void ClickRow(int row) const {
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {},
                      List().visualItemRect(List().item(row)).center());
  }
  void Choose(const char* radio) const {
    QTest::mouseClick(&Widget<QRadioButton>(radio), Qt::LeftButton, {}, QPoint(8, 8));
  }
};

// A catalogue of which the bunker's and the oak's meshes are cached; no mesh has a file.
class ObjectBrowserDialogTest : public SandboxTest {
 protected:
  ObjectBrowserDialogTest() {
    ResetObjectsState();
    BuildTree();
    objectStore.catalogue = ParseObjectList(
        "loose=TreeMesh(m)\n[STRUCTURES]\nbunker=TreeMesh(m)\n[PROPS]\ncrate=StandardMesh(m)\n"
        "[VEGETATION]\noak_tree=TreeMesh(m)\nelm=TreeMesh(m)\n[VEHICLES]\ntank=TreeMesh(m)\n"
        "[vegetation]\npalm=TreeMesh(m)\n");
    for (const char* name : {"oak_tree", "bunker"}) {
      CachedMesh& mesh = objectStore.meshes.emplace_back();
      mesh.name = name;
      mesh.treeItem = InsertItem(levelTree.fixed.cachedObjects, name);
    }
    levelTree.view.select = [this](TreeItem item) { chosen = levelTree.items.at(item).text; };
  }
  ~ObjectBrowserDialogTest() override { ResetObjectsState(); }

  bool Run(const std::function<void(const OpenBrowser&)>& act) {
    WhenDialogOpens([act](const OpenDialog& dialog) { act(OpenBrowser{{dialog.window}}); });
    return ObjectBrowserDialog(nullptr, [this] { ++frames; });
  }

  int frames = 0;
  std::string chosen;  // in the tree
};

TEST_F(ObjectBrowserDialogTest, SelectingARowEnablesOkAndOkOrADoubleClickChoosesTheMeshInTheTree) {
  EXPECT_TRUE(Run([](const OpenBrowser& browser) {
    EXPECT_EQ(browser.window.windowTitle(), "Object Browser - Add New Object");
    EXPECT_FALSE(browser.Ok().isEnabled());
    browser.ClickRow(2);
    EXPECT_TRUE(browser.Ok().isEnabled());
    QTest::mouseClick(&browser.Ok(), Qt::LeftButton);
  }));
  EXPECT_EQ(chosen, "oak_tree");
  EXPECT_TRUE(Run([](const OpenBrowser& browser) {
    browser.ClickRow(0);
    QTest::mouseDClick(browser.List().viewport(), Qt::LeftButton, {},
                       browser.List().visualItemRect(browser.List().item(0)).center());
    EXPECT_FALSE(browser.window.isVisible());
  }));
  EXPECT_EQ(chosen, "bunker");
  EXPECT_EQ(objectStore.meshes.size(), 2u) << "none is cached again";
}

TEST_F(ObjectBrowserDialogTest, CategoryAndFilterNarrowTheListAndAreThereTheNextTime) {
  EXPECT_FALSE(Run([](const OpenBrowser& browser) {
    EXPECT_EQ(browser.Listed(), QStringList({"bunker", "crate", "oak_tree", "elm"}));
    browser.Choose("structuresRadio");
    EXPECT_EQ(browser.Listed(), QStringList({"bunker"}));
    browser.Choose("propsRadio");
    EXPECT_EQ(browser.Listed(), QStringList({"crate"}));
    browser.Choose("vegetationRadio");
    EXPECT_EQ(browser.Listed(), QStringList({"oak_tree", "elm"}));
    browser.ClickRow(0);
    QTest::keyClicks(&browser.Widget<QLineEdit>("filterEdit"), "Oak");
    EXPECT_TRUE(browser.Listed().isEmpty()) << "letters count in their case";
    EXPECT_FALSE(browser.Ok().isEnabled());
    browser.Widget<QLineEdit>("filterEdit").setText("tree");
  }));
  Run([](const OpenBrowser& browser) {
    EXPECT_TRUE(browser.Widget<QRadioButton>("vegetationRadio").isChecked());
    EXPECT_FALSE(browser.Widget<QRadioButton>("allRadio").focusPolicy() & Qt::TabFocus);
    EXPECT_EQ(browser.Widget<QLineEdit>("filterEdit").text(), "tree");
    EXPECT_EQ(browser.Listed(), QStringList({"oak_tree"}));
  });
}

TEST_F(ObjectBrowserDialogTest, AMeshThatCannotBeLoadedIsSaidInTheDialogAndAfterIt) {
  EXPECT_FALSE(Run([](const OpenBrowser& browser) {
    EXPECT_FALSE(browser.Widget<QLabel>("noteLabel").isVisible());
    browser.ClickRow(1);
    EXPECT_TRUE(browser.Widget<QLabel>("noteLabel").isVisible());
    browser.Ok().click();
  }));
  EXPECT_EQ(scripted::script.status[1].back(), "Could not load crate.");
  EXPECT_EQ(chosen, "");
}

TEST_F(ObjectBrowserDialogTest, ViewIsRedrawnWithALevelCameraUntilItCloses) {
  camera.pitch = -20, camera.yaw = 90;
  camera.position.Set(1, 2, 3);
  Run([this](const OpenBrowser&) {
    EXPECT_TRUE(editor.browserPreviewActive);
    EXPECT_TRUE(camera.pitch == 0 && camera.yaw == 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return frames > 2; }));
    camera.position.Set(7, 7, 7);
    frames = 0;
  });
  EXPECT_GE(frames, 1) << "once without it";
  EXPECT_FALSE(editor.browserPreviewActive || objectStore.preview.loaded);
  EXPECT_TRUE(camera.pitch == -20 && camera.yaw == 90);
  EXPECT_EQ(camera.position, (Vector3{1, 2, 3}));
}

}  // namespace
}  // namespace mw
