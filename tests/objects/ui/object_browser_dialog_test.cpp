#include "objects/ui/object_browser_dialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "core/editor_state.h"
#include "objects/object_browser.h"
#include "objects/object_store.h"
#include "objects/ui/run_dialog.h"
#include "support/sandbox.h"

namespace mw {
namespace {

struct OpenBrowser : DialogUnderTest {
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
};

// A catalogue of a house and a tree, whose meshes are already cached.
class ObjectBrowserDialogTest : public SandboxTest {
 protected:
  ObjectBrowserDialogTest() {
    objectStore = ObjectStore{};
    objectStore.browserFilter = BrowserFilter{};
    levelTree = LevelTree{};
    BuildTree();
    Add("house", "STRUCTURES");
    Add("oak_tree", "VEGETATION");
  }
  ~ObjectBrowserDialogTest() override {
    objectStore = ObjectStore{};
    objectStore.browserFilter = BrowserFilter{};
    levelTree = LevelTree{};
  }

  static void Add(const char* name, const char* category) {
    ObjectCatalogue& catalogue = objectStore.catalogue;
    CatalogueEntry& entry = catalogue.entries[static_cast<std::size_t>(catalogue.entryCount++)];
    entry.name = name;
    entry.category = catalogue.categoryCount;
    catalogue.categories[static_cast<std::size_t>(catalogue.categoryCount++)] = category;
    CachedMesh mesh;
    mesh.name = name;
    mesh.treeItem = InsertItem(levelTree.fixed.cachedObjects, name);
    objectStore.meshes.push_back(mesh);
  }
  bool Run(std::function<void(const OpenBrowser&)> act) {
    WhenDialogOpens([act](const OpenDialog& dialog) { act(OpenBrowser{{dialog.window}}); });
    return ObjectBrowserDialog(nullptr, [this] { ++frames; });
  }

  int frames = 0;
};

TEST_F(ObjectBrowserDialogTest, SelectingARowEnablesOkAndOkChoosesTheMeshInTheTree) {
  TreeItem chosen = 0;
  levelTree.view.select = [&chosen](TreeItem item) { chosen = item; };
  EXPECT_TRUE(Run([](const OpenBrowser& browser) {
    EXPECT_EQ(browser.window.windowTitle(), "Object Browser - Add New Object");
    EXPECT_FALSE(browser.Ok().isEnabled());
    browser.ClickRow(1);
    EXPECT_TRUE(browser.Ok().isEnabled());
    QTest::mouseClick(&browser.Ok(), Qt::LeftButton);
  }));
  EXPECT_EQ(chosen, objectStore.meshes[1].treeItem);
}

TEST_F(ObjectBrowserDialogTest, CategoryAndFilterNarrowTheListAndAreThereTheNextTime) {
  EXPECT_FALSE(Run([](const OpenBrowser& browser) {
    EXPECT_EQ(browser.Listed(), QStringList({"house", "oak_tree"}));
    QTest::mouseClick(&browser.Widget<QRadioButton>("vegetationRadio"), Qt::LeftButton, {},
                      QPoint(8, 8));
    EXPECT_EQ(browser.Listed(), QStringList({"oak_tree"}));
    browser.ClickRow(0);
    QTest::keyClicks(&browser.Widget<QLineEdit>("filterEdit"), "Oak");
    EXPECT_TRUE(browser.Listed().isEmpty());
    EXPECT_FALSE(browser.Ok().isEnabled());
  }));
  Run([](const OpenBrowser& browser) {
    EXPECT_TRUE(browser.Widget<QRadioButton>("vegetationRadio").isChecked());
    EXPECT_FALSE(browser.Widget<QRadioButton>("allRadio").focusPolicy() & Qt::TabFocus);
    EXPECT_EQ(browser.Widget<QLineEdit>("filterEdit").text(), "Oak");
    EXPECT_TRUE(browser.Listed().isEmpty());
  });
}

TEST_F(ObjectBrowserDialogTest, AMeshThatCannotBeLoadedIsSaidInTheDialogAndAfterIt) {
  objectStore.meshes.clear();
  EXPECT_FALSE(Run([](const OpenBrowser& browser) {
    EXPECT_FALSE(browser.Widget<QLabel>("noteLabel").isVisible());
    browser.ClickRow(0);
    EXPECT_TRUE(browser.Widget<QLabel>("noteLabel").isVisible());
    browser.Ok().click();
  }));
  EXPECT_EQ(scripted::script.status[1].back(), "Could not load house.");
}

TEST_F(ObjectBrowserDialogTest, ViewIsRedrawnWhileItIsOpenAndOnceAfterwards) {
  Run([this](const OpenBrowser&) {
    EXPECT_TRUE(editor.browserPreviewActive);
    EXPECT_TRUE(QTest::qWaitFor([this] { return frames > 2; }));
    frames = 0;
  });
  EXPECT_GE(frames, 1);
  EXPECT_FALSE(editor.browserPreviewActive);
}

TEST_F(ObjectBrowserDialogTest, DoubleClickIsOk) {
  EXPECT_TRUE(Run([](const OpenBrowser& browser) {
    browser.ClickRow(0);
    QTest::mouseDClick(browser.List().viewport(), Qt::LeftButton, {},
                       browser.List().visualItemRect(browser.List().item(0)).center());
    EXPECT_FALSE(browser.window.isVisible());
  }));
}

}  // namespace
}  // namespace mw
