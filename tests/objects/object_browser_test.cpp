#include "objects/object_browser.h"

#include <gmock/gmock.h>
#include <string>

#include "core/camera.h"
#include "core/editor_state.h"
#include "objects/object_store.h"
#include "support/sandbox.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ObjectBrowserTest : public SandboxTest {
 protected:
  ObjectBrowserTest() {
    objectStore = ObjectStore{};
    levelTree = LevelTree{};
    BuildTree();
    Add("loose", -1);
    Add("bunker", Category("STRUCTURES"));
    Add("crate", Category("PROPS"));
    Add("oak_tree", Category("VEGETATION"));
    Add("Oak_Tree_big", 2);
    Add("tank", Category("VEHICLES"));
    Add("palm", Category("vegetation"));
  }
  ~ObjectBrowserTest() override {
    objectStore = ObjectStore{};
    levelTree = LevelTree{};
  }

  static int Category(const char* name) {
    ObjectCatalogue& catalogue = objectStore.catalogue;
    catalogue.categories[static_cast<std::size_t>(catalogue.categoryCount)] = name;
    return catalogue.categoryCount++;
  }
  static void Add(const char* name, int category) {
    ObjectCatalogue& catalogue = objectStore.catalogue;
    CatalogueEntry& entry = catalogue.entries[static_cast<std::size_t>(catalogue.entryCount++)];
    entry.name = name;
    entry.meshName = name;
    entry.category = category;
  }
  static std::vector<std::string> Listed(BrowserCategory category, const char* text = "") {
    std::vector<std::string> names;
    for (const int entry : BrowserEntries({category, text})) {
      names.push_back(objectStore.catalogue.entries[static_cast<std::size_t>(entry)].name.String());
    }
    return names;
  }
};

TEST_F(ObjectBrowserTest, ListsTheEntriesOfItsCategoriesAndOfNoOther) {
  EXPECT_THAT(Listed(BrowserCategory::All),
              ElementsAre("bunker", "crate", "oak_tree", "Oak_Tree_big"));
  EXPECT_THAT(Listed(BrowserCategory::Structures), ElementsAre("bunker"));
  EXPECT_THAT(Listed(BrowserCategory::Props), ElementsAre("crate"));
  EXPECT_THAT(Listed(BrowserCategory::Vegetation), ElementsAre("oak_tree", "Oak_Tree_big"));
}

TEST_F(ObjectBrowserTest, FilterIsAPartOfTheNameInTheSameCase) {
  EXPECT_THAT(Listed(BrowserCategory::All, "tree"), ElementsAre("oak_tree"));
  EXPECT_THAT(Listed(BrowserCategory::Props, "tree"), IsEmpty());
}

TEST_F(ObjectBrowserTest, CameraIsLevelDuringThePreviewAndComesBack) {
  camera.pitch = -20;
  camera.yaw = 90;
  camera.position.Set(1, 2, 3);
  BeginPreview();
  EXPECT_TRUE(editor.browserPreviewActive);
  EXPECT_EQ(camera.pitch, 0);
  EXPECT_EQ(camera.yaw, 0);
  EXPECT_FALSE(PreviewEntry(1)) << "there is no such mesh file";
  EXPECT_FALSE(objectStore.preview.loaded);
  EndPreview();
  EXPECT_FALSE(editor.browserPreviewActive);
  EXPECT_EQ(camera.pitch, -20);
  EXPECT_EQ(camera.yaw, 90);
  EXPECT_EQ(camera.position, (Vector3{1, 2, 3}));
}

TEST_F(ObjectBrowserTest, MeshInTheCacheIsNotCachedAgainButItsItemChosen) {
  CachedMesh bunker;
  bunker.name = "bunker";
  bunker.treeItem = InsertItem(levelTree.fixed.cachedObjects, "bunker");
  objectStore.meshes.push_back(bunker);
  TreeItem chosen = 0;
  levelTree.view.select = [&chosen](TreeItem item) { chosen = item; };
  EXPECT_TRUE(OfferEntry(1));
  EXPECT_EQ(objectStore.meshes.size(), 1u);
  EXPECT_EQ(chosen, bunker.treeItem);
  EXPECT_FALSE(OfferEntry(2)) << "its mesh file is missing";
  EXPECT_EQ(objectStore.meshes.size(), 1u);
}

}  // namespace
}  // namespace mw
