#include "objects/object_catalogue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "data/mod_config.h"
#include "objects/object_store.h"
#include "platform/disk.h"
#include "support/sandbox.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

std::string Name(const ObjectCatalogue& catalogue, int entry) {
  return catalogue.entries.at(static_cast<std::size_t>(entry)).name.String();
}

TEST(ObjectList, NamesObjectsUnderCategories) {
  const ObjectCatalogue catalogue = ParseObjectList(
      "early=StandardMesh(early_m1)\r\n[STRUCTURES]\r\nBunker01=StandardMesh(Bunker01_M1)\n"
      "Big Oak=TreeMesh(oak_m1)\n[PROPS]\ncrate=treemesh(crate_m1)");
  ASSERT_EQ(catalogue.entryCount, 4);
  EXPECT_EQ(catalogue.categoryCount, 2);
  EXPECT_EQ(catalogue.CategoryOf(0), "");
  EXPECT_EQ(catalogue.CategoryOf(1), "STRUCTURES");
  EXPECT_EQ(catalogue.CategoryOf(3), "PROPS");
  EXPECT_EQ(Name(catalogue, 1), "bunker01") << "in lower case";
  EXPECT_EQ(catalogue.entries[1].meshName, "Bunker01_M1") << "as written";
  EXPECT_EQ(Name(catalogue, 2), "big oak");
  EXPECT_EQ(catalogue.entries[2].meshKind, MeshKind::TreeMesh);
  EXPECT_EQ(catalogue.entries[3].meshKind, MeshKind::StandardMesh) << "kinds have their case";
}

TEST(ObjectList, CommentsAndShortLinesArePassedOver) {
  const std::string zeroFirst("\0abc=StandardMesh(a)\n", 21);
  const ObjectCatalogue catalogue =
      ParseObjectList("/ a=StandardMesh(a)\n\nab\n" + zeroFirst + "]](=\nabc\n");
  ASSERT_EQ(catalogue.entryCount, 1);
  EXPECT_EQ(Name(catalogue, 0), "abc");
}

TEST(ObjectList, ReadingStopsWhenATableIsFull) {
  std::string objects, categories;
  for (int k = 0; k < 600; ++k) objects += "o" + std::to_string(k) + "=StandardMesh(m)\n";
  for (int k = 0; k < 33; ++k) categories += "[C" + std::to_string(k) + "]\n";
  const ObjectCatalogue full = ParseObjectList(objects + "[LATE]\n");
  EXPECT_EQ(full.entryCount, 512);
  EXPECT_EQ(Name(full, 511), "o511");
  EXPECT_EQ(full.categoryCount, 0);
  const ObjectCatalogue manyCategories = ParseObjectList(categories + "late=StandardMesh(m)\n");
  EXPECT_EQ(manyCategories.categoryCount, 32);
  EXPECT_EQ(manyCategories.entryCount, 0);
}

TEST(ObjectList, NamesKeep31Bytes) {
  const ObjectCatalogue catalogue =
      ParseObjectList(std::string(40, 'n') + "=TreeMesh(" + std::string(40, 'm') + ")\n");
  EXPECT_EQ(Name(catalogue, 0), std::string(31, 'n'));
  EXPECT_EQ(catalogue.entries[0].meshName, std::string(31, 'm'));
}

class ObjectCatalogueTest : public SandboxTest {
 protected:
  ObjectCatalogueTest() {
    objectStore = ObjectStore{};
    modConfig = ModConfig{};
    modConfig.ObjectsList = "objects.lst";
  }
  ~ObjectCatalogueTest() override { objectStore = ObjectStore{}; }

  static void Load(std::string_view list) {
    ASSERT_TRUE(WriteWholeFile("objects.lst", list));
    LoadObjectCatalogue();
  }
};

TEST_F(ObjectCatalogueTest, FindsByNameOrMeshWhateverTheCase) {
  Load("[A]\nbunker01=StandardMesh(b_m1)\nold=StandardMesh(BUNKER02)\nb_m1=StandardMesh(x)\n");
  EXPECT_EQ(FindCatalogueEntry("Bunker01"), 0);
  EXPECT_EQ(FindCatalogueEntry("bunker02"), 1);
  EXPECT_EQ(FindCatalogueEntry("B_M1"), 0) << "the first entry that has it as name or mesh";
  EXPECT_EQ(FindCatalogueEntry("bunker"), -1);
  EXPECT_EQ(FindCatalogueEntry(""), -1);
}

TEST_F(ObjectCatalogueTest, WithoutAListNothingChanges) {
  Load("crate=StandardMesh(crate_m1)\n");
  modConfig.ObjectsList.clear();
  LoadObjectCatalogue();
  EXPECT_EQ(FindCatalogueEntry("crate"), 0);
}

TEST_F(ObjectCatalogueTest, AListThatCannotBeOpenedLeavesNothing) {
  Load("crate=StandardMesh(crate_m1)\n");
  modConfig.ObjectsList = "Other.lst";
  LoadObjectCatalogue();
  EXPECT_EQ(objectStore.catalogue.entryCount, 0);
  EXPECT_THAT(scripted::script.status[1], ElementsAre("Could not open object list Other.lst"));
}

TEST_F(ObjectCatalogueTest, AListThatIsReadAgainReplacesEveryEntry) {
  Load("[A]\noak=TreeMesh(oak_m1)\n");
  objectStore.catalogue.entries[0].boxB = {1, 2, 3};
  Load("oak=Something(oak_m2)\n");
  const CatalogueEntry& entry = objectStore.catalogue.entries[0];
  EXPECT_EQ(entry.meshKind, MeshKind::StandardMesh);
  EXPECT_EQ(entry.category, -1);
  EXPECT_EQ(entry.boxB, Vector3{});
}

TEST_F(ObjectCatalogueTest, MeshesInMemoryGiveTheirEntriesTheirBoxesBack) {
  CachedMesh& mesh = objectStore.meshes.emplace_back();
  mesh.name = "oak";
  mesh.boxB = {1, 2, 3};
  Load("[A]\ncrate=StandardMesh(c)\noak=TreeMesh(oak_m1)\n");
  EXPECT_EQ(objectStore.catalogue.entries[1].boxB, (Vector3{1, 2, 3}));
}

}  // namespace
}  // namespace mw
