#include "objects/object_catalogue.h"

#include <gmock/gmock.h>
#include <string>

#include "data/mod_config.h"
#include "objects/object_store.h"
#include "objects/objects_state.h"
#include "platform/disk.h"
#include "support/golden.h"
#include "support/sandbox.h"

namespace mw {
namespace {

using namespace std::string_view_literals;

// A line for each entry that a list gives.
std::string ToldList(std::string_view list) {
  const ObjectCatalogue catalogue = ParseObjectList(list);
  std::string told = std::to_string(catalogue.categoryCount) + " categories\n";
  for (int k = 0; k < catalogue.entryCount; ++k) {
    const CatalogueEntry& entry = catalogue.entries[static_cast<std::size_t>(k)];
    told += "  " + entry.name.String() +
            (entry.meshKind == MeshKind::TreeMesh ? " is tree " : " is mesh ") +
            entry.meshName.String() + " of category '" + std::string(catalogue.CategoryOf(k)) +
            "'\n";
  }
  return told;
}

TEST(ObjectList, NamesObjectsUnderCategories) {
  ExpectGolden(
      "objects/object_lists.txt",
      ToldList(
          "early=StandardMesh(early_m1)\r\n[STRUCTURES]\r\nBunker01=StandardMesh(Bunker01_M1)\n"
          "Big Oak=TreeMesh(oak_m1)\n[PROPS]\ncrate=treemesh(crate_m1)") +
          ToldList("/ a=StandardMesh(a)\n\nab\n\0abc=StandardMesh(a)\n]](=\nabc\n"sv) +
          ToldList(std::string(40, 'n') + "=TreeMesh(" + std::string(40, 'm') + ")\n"));
}

TEST(ObjectList, ReadingStopsWhenATableIsFull) {
  std::string objects, categories;
  for (int k = 0; k < 600; ++k) objects += "o" + std::to_string(k) + "=StandardMesh(m)\n";
  for (int k = 0; k < 33; ++k) categories += "[C" + std::to_string(k) + "]\n";
  const ObjectCatalogue full = ParseObjectList(objects + "[LATE]\n");
  EXPECT_EQ(full.entryCount, 512);
  EXPECT_EQ(full.entries[511].name, "o511");
  EXPECT_EQ(full.categoryCount, 0);
  EXPECT_EQ(ToldList(categories + "late=StandardMesh(m)\n"), "32 categories\n");
}

using ObjectCatalogueTest = SandboxTest;

void Load(std::string_view list) {
  modConfig.ObjectsList = "objects.lst";
  ASSERT_TRUE(WriteWholeFile("objects.lst", list));
  LoadObjectCatalogue();
}

TEST_F(ObjectCatalogueTest, FindsTheFirstByNameOrMeshWhateverTheCase) {
  Load("[A]\nbunker01=StandardMesh(b_m1)\nold=StandardMesh(BUNKER02)\nb_m1=StandardMesh(x)\n");
  const std::pair<const char*, int> rows[] = {
      {"Bunker01", 0}, {"bunker02", 1}, {"B_M1", 0}, {"bunker", -1}, {"", -1}};
  for (const auto& [name, entry] : rows) EXPECT_EQ(FindCatalogueEntry(name), entry) << name;
}

TEST_F(ObjectCatalogueTest, AListThatIsReadAgainReplacesEveryEntry) {
  ResetObjectsState();
  Load("[A]\nelm=TreeMesh(elm_m1)\noak=TreeMesh(oak_m1)\n");
  objectStore.catalogue.entries[1].boxB = {1, 2, 3};
  CachedMesh& mesh = objectStore.meshes.emplace_back();
  mesh.name = "oak";
  mesh.boxA = {1, 1, 1};
  mesh.boxB = {4, 5, 6};
  Load("oak=Something(oak_m1)\ncrate=TreeMesh(crate_m1)\n");
  const auto& entries = objectStore.catalogue.entries;
  EXPECT_EQ(entries[0].meshKind, MeshKind::StandardMesh);
  EXPECT_EQ(entries[0].category, -1);
  EXPECT_EQ(entries[0].boxA, (Vector3{1, 1, 1})) << "of the mesh that is in memory";
  EXPECT_EQ(entries[0].boxB, (Vector3{4, 5, 6}));
  EXPECT_EQ(entries[1].boxB, Vector3{});
  modConfig.ObjectsList.clear();
  LoadObjectCatalogue();
  EXPECT_EQ(FindCatalogueEntry("crate"), 1) << "without a list nothing changes";
  modConfig.ObjectsList = "Other.lst";
  LoadObjectCatalogue();
  EXPECT_EQ(objectStore.catalogue.entryCount, 0);
  EXPECT_THAT(scripted::script.status[1],
              testing::ElementsAre("Could not open object list Other.lst"));
  ResetObjectsState();
}

}  // namespace
}  // namespace mw
