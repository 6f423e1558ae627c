#include "objects/static_objects.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "core/hooks.h"
#include "data/load_report.h"
#include "data/open_level.h"
#include "objects/object_level_test.h"
#include "objects/property_sheet.h"
#include "support/archive_bytes.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kScript = "StaticObjects.con";
constexpr const char *kSpawnScript = "conquest/ObjectSpawns.con",
                     *kSpawns = "Object.create tank\r\n";

class StaticObjectsTest : public ObjectLevelTest {
 protected:
  // Loads a script with these lines and returns what is then saved, without the first line.
  std::string SavedAfterLoading(const std::string& lines) {
    Put(kScript, lines);
    LoadStaticObjects();
    EXPECT_TRUE(SaveStaticObjects());
    const std::string saved = Get(kScript);
    const std::string head = "rem StaticObjects created by Mapwright\r\n";
    EXPECT_TRUE(saved.starts_with(head)) << saved;
    return saved.substr(head.size());
  }
  static std::string Lines(int objects) {
    std::string lines;
    for (int i = 0; i < objects; ++i) {
      lines += "Object.create hut\r\nObject.absolutePosition " + std::to_string(i) + "/0/0\r\n";
    }
    return lines;
  }
  // Of a level with kSpawns as its vehicles.
  void ExpectLossSaidAndNothingSaved(const std::string& line) {
    const std::string before = Get(kScript);
    BeginLoadReport();
    LoadStaticObjects();
    EndLoadReport();
    // Nothing is written into an archive that was damaged behind the editor's back.
    EXPECT_EQ(SaveStaticObjects(), level->OnDisk() == ArchiveOnDisk::AsLeft);
    EXPECT_THAT(openLevel.loadReport.lines, testing::Contains(testing::StartsWith(line)));
    EXPECT_EQ(Get(kScript), before);
    EXPECT_EQ(Get(kSpawnScript), kSpawns);
  }
};

TEST_F(StaticObjectsTest, ObjectsAreSavedInTheGamesFormatWhateverTheyWereReadFrom) {
  EXPECT_EQ(SavedAfterLoading("rem by hand\r\n"
                              "OBJECT.CREATE  Bunker01\r\n"
                              "object.absoluteposition 512.5/31.25/640\r\n"
                              "OBJECT.Rotation -90 / 0.5\r\n"
                              "object.unknown 1\r\n"
                              "\r\n"
                              "Object.create oak\n"
                              "Object.absolutePosition 1 2 3"),
            "rem\r\nrem ***  ***\r\nrem\r\n"
            "Object.create bunker01\r\n"
            "Object.absolutePosition 512.5000/31.2500/640.0000\r\n"
            "Object.rotation -90.0000/0.5000/0.0000\r\n"
            "rem\r\nrem ***  ***\r\nrem\r\n"
            "Object.create oak\r\n"
            "Object.absolutePosition 1.0000/2.0000/3.0000\r\n"
            "Object.rotation 0.0000/0.0000/0.0000\r\n");
}

TEST_F(StaticObjectsTest, ScaleAndColourAreSavedWhereTheyWereGiven) {
  const std::string saved = SavedAfterLoading(
      "Object.create hut\nObject.geometry.scale 2/1.5\n"
      "Object.create hut\nObject.geometry.color 0.25/0.5/0.75\n");
  EXPECT_THAT(saved, testing::HasSubstr("Object.geometry.scale 2.0000/1.5000/1.0000\r\n"))
      << "the missing component keeps its 1";
  EXPECT_THAT(saved, testing::EndsWith("Object.rotation 0.0000/0.0000/0.0000\r\n"
                                       "Object.geometry.color 0.2500/0.5000/0.7500\r\n"));
}

TEST_F(StaticObjectsTest, SavingWhatWasSavedChangesNothing) {
  const std::string once = SavedAfterLoading(Lines(3) + "Object.geometry.scale 1/2/3\r\n");
  ClearAllObjects();
  LoadStaticObjects();
  EXPECT_TRUE(SaveStaticObjects());
  EXPECT_TRUE(Get(kScript).ends_with(once));
}

TEST_F(StaticObjectsTest, LinesWithoutAnObjectHaveNoEffect) {
  EXPECT_EQ(SavedAfterLoading("Object.absolutePosition 1/2/3\nObject.create\n"
                              "Object.rotation 4/5/6\n"),
            "")
      << "a create line without a name takes the lines that follow";
  EXPECT_THAT(objectStore.objects, IsEmpty());
}

TEST_F(StaticObjectsTest, AnUnknownNameIsKeptAndShownAsTheDefaultEntry) {
  const std::string saved = SavedAfterLoading("Object.create Lighthouse\n");
  EXPECT_THAT(saved, testing::HasSubstr("Object.create lighthouse\r\n"));
  EXPECT_EQ(objectStore.objects[0].catalogueIndex, -1);
  EXPECT_EQ(objectStore.objects[0].meshIndex, -1);
  EXPECT_EQ(ParentOf(objectStore.objects[0].treeItem), levelTree.fixed.standardMeshes);

  LoadCatalogue("[X]\nhut=StandardMesh(hut_m1)\ndefault=TreeMesh(box)\n");
  EXPECT_EQ(objectStore.objects[0].catalogueIndex, 1) << "looked up again in the new catalogue";
}

TEST_F(StaticObjectsTest, TheTreeListsObjectsByTheKindOfTheirMesh) {
  Put(kScript, "Object.create OAK\nObject.create hut\n");
  LoadStaticObjects();
  const TreeItem oak = objectStore.objects[0].treeItem, hut = objectStore.objects[1].treeItem;
  EXPECT_THAT(ChildrenOf(levelTree.fixed.treeMeshes), ElementsAre(oak));
  EXPECT_THAT(ChildrenOf(levelTree.fixed.standardMeshes), ElementsAre(hut));
  EXPECT_EQ(ItemText(oak), "oak");
  EXPECT_EQ(FindObjectByTreeItem(hut), 1);
  DeleteStaticObject(1);
  EXPECT_EQ(FindObjectByTreeItem(hut), -1);
  EXPECT_EQ(FindObjectByTreeItem(0), -1);
}

TEST_F(StaticObjectsTest, ALevelWithoutObjectsStillHasItsEntities) {
  Put("conquest/ObjectSpawnTemplates.con", "ObjectTemplate.create ObjectSpawner tank\r\n");
  Put("conquest/ObjectSpawns.con", "Object.create tank\r\nObject.absolutePosition 1/2/3\r\n");
  LoadStaticObjects();
  EXPECT_THAT(objectStore.objects, IsEmpty());
  EXPECT_EQ(entities.Of(EntityKind::ObjectSpawn).instances.size(), 1u);
}

TEST_F(StaticObjectsTest, TheLargestLevelLoadsWhole) {
  Put(kScript, Lines(2048));
  LoadStaticObjects();
  EXPECT_EQ(objectStore.objects.size(), 2048u);
  EXPECT_EQ(objectStore.objects.back().position.x, 2047);
}

TEST_F(StaticObjectsTest, ATooLargeLevelIsNotOverwritten) {
  Put(kScript, Lines(2049));
  Put(kSpawnScript, kSpawns);
  ExpectLossSaidAndNothingSaved(
      "Could not load all objects - Maximum number of objects exceeded! (2048 were loaded.)");
  EXPECT_EQ(openLevel.loadReport.lines.back(), "The level's entities were not loaded.");
  EXPECT_EQ(objectStore.objects.size(), 2048u);
  EXPECT_EQ(ChildrenOf(levelTree.fixed.standardMeshes).size(), 2048u);

  ClearAllObjects();
  ClearLoadReport();
  Put(kScript, "Object.create hut\n");
  LoadStaticObjects();
  EXPECT_TRUE(SaveStaticObjects());
  EXPECT_THAT(Get(kScript), testing::HasSubstr("Object.create hut\r\n"))
      << "the next level is saved";
}

TEST_F(StaticObjectsTest, ADamagedFileIsNotOverwritten) {
  Put(kScript, Lines(2000));
  Put(kSpawnScript, kSpawns);
  const RawArchive archive = ReadRawArchive(folder / "Island.vra");
  const RawEntry* const entry = archive.Find("varnhold/levels/Island/StaticObjects.con");
  ASSERT_TRUE(entry);
  mw::Bytes file = archive.file;
  std::fill_n(file.begin() + entry->offset + entry->storedSize / 2, 64, std::uint8_t{0xEE});
  WriteBytes(folder / "Island.vra", file);
  ExpectLossSaidAndNothingSaved("Could not load all objects - StaticObjects.con is damaged!");
  EXPECT_GT(objectStore.objects.size(), 1000u);
  for (int behind = 0; behind < 400; ++behind) {
    const StaticObject& object = *(objectStore.objects.rbegin() + behind);
    EXPECT_EQ(object.position.x, static_cast<float>(1999 - behind)) << "behind the damage";
  }
}

TEST_F(StaticObjectsTest, ANameThatIsTooLongIsCutAndItsFileNotOverwritten) {
  Put(kScript, "Object.create " + std::string(64, 'n') + "\r\n");
  Put(kSpawnScript, kSpawns);
  ExpectLossSaidAndNothingSaved(
      "Some names in StaticObjects.con are longer than 63 characters and were cut.");
}

TEST_F(StaticObjectsTest, ADeletedObjectIsNotSavedAndFreesItsPlaceAtOnce) {
  AddObject("hut", {1, 2, 3}).selected = true;
  AddObject("oak", {4, 5, 6});
  objectStore.toolsEnabled = true;
  objectStore.hoveredObject = objectStore.lastHoveredObject = 1;
  levelTree.view.remove = [](TreeItem) {
    EXPECT_EQ(objectStore.objects.size(), 1u) << "the tree may choose the next object meanwhile";
  };
  DeleteStaticObject(0);
  DeleteStaticObject(7);
  levelTree.view.remove = [](TreeItem) {};
  EXPECT_TRUE(SaveStaticObjects());
  EXPECT_THAT(Get(kScript), testing::Not(testing::HasSubstr("hut")));
  EXPECT_FALSE(objectStore.toolsEnabled) << "it was what was selected";
  EXPECT_EQ(objectStore.lastHoveredObject, -1) << "the index would be of another object";
  EXPECT_TRUE(editor.levelModified);
  objectStore.objects.resize(kMaxStaticObjects - 1, objectStore.objects[0]);
  EXPECT_TRUE(PlaceStaticObject("oak", 1, 1, {}));
}

TEST_F(StaticObjectsTest, AnObjectOfACachedMeshStandsAtTheCursorAndIsSelected) {
  objectStore.meshes.emplace_back().name = "oak";
  PutCursorOver(200, 7, 300);
  objectStore.showTreeMeshes = false;
  EXPECT_TRUE(AddStaticObjectFromCache(0));
  EXPECT_TRUE(objectStore.showTreeMeshes) << "what is selected is not hidden";
  const StaticObject& oak = objectStore.objects.at(0);
  EXPECT_EQ(oak.position, (Vector3{200, 7, 300}));
  EXPECT_TRUE(oak.selected && objectStore.toolsEnabled && editor.levelModified);
  EXPECT_EQ(objectStore.SelectionPivot.x, kSide - 200);
  EXPECT_EQ(ParentOf(oak.treeItem), levelTree.fixed.treeMeshes);
  EXPECT_FALSE(AddStaticObjectFromCache(1)) << "there is no such mesh";
}

TEST_F(StaticObjectsTest, AFullTableRefusesMore) {
  objectStore.objects.resize(kMaxStaticObjects);
  objectStore.meshes.emplace_back().name = "oak";
  scripted::script.answers = {PromptAnswer::Ok, PromptAnswer::Ok};
  EXPECT_FALSE(AddStaticObjectFromCache(0));
  EXPECT_FALSE(PlaceStaticObject("oak", 1, 1, {}));
  EXPECT_EQ(objectStore.objects.size(), 2048u);
  ASSERT_EQ(scripted::script.prompts.size(), 2u);
  EXPECT_EQ(scripted::script.prompts[0].text,
            "Could not add the object - Maximum number of objects exceeded!");
  EXPECT_EQ(scripted::script.prompts[0].caption, "ERROR");
}

TEST_F(StaticObjectsTest, TheEditSheetShowsTheNameAndChangesPlaceAndTurn) {
  AddObject("hut", {1, 2, 3});
  std::vector<std::string> shown;
  hooks.runPropertySheet = [&shown](PropertySheet& sheet) {
    shown = {sheet.title, sheet.fields[0].label.String(), sheet.fields[1].label.String(),
             sheet.fields[2].label.String()};
    EXPECT_FALSE(sheet.fields[0].editable);
    std::get<float*>(sheet.fields[1].value)[2] = 30;
    std::get<float*>(sheet.fields[2].value)[0] = 45;
    return true;
  };
  EXPECT_TRUE(EditStaticObject(0));
  EXPECT_TRUE(std::exchange(editor.levelModified, false));
  EXPECT_TRUE(EditStaticObject(0));
  EXPECT_FALSE(editor.levelModified) << "it stood there already";
  EXPECT_THAT(shown, ElementsAre("Edit Object", "Name", "Pos", "Rot"));
  EXPECT_EQ(objectStore.objects[0].position, (Vector3{1, 2, 30}));
  EXPECT_EQ(objectStore.objects[0].rotation, (Vector3{45, 0, 0}));
  EXPECT_FALSE(EditStaticObject(1));
}

TEST_F(StaticObjectsTest, EverythingIsSetOnTheGround) {
  SetHeight(10, 20, 200);
  AddObject("hut", {kSide - 10 * terrain.cellSize - 1, 500, 20 * terrain.cellSize + 1});
  const ObjectSpawn& spawn = AddObjectSpawn({500, -3, 500});
  SnapAllToGround();
  EXPECT_FLOAT_EQ(objectStore.objects[0].position.y, 100);
  EXPECT_FLOAT_EQ(spawn.position.y, kGround);
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(StaticObjectsTest, ClearingLeavesNothingBehind) {
  AddObject("hut", {1, 2, 3}).selected = true;
  AddObjectSpawn({});
  objectStore.lastHoveredObject = 0;
  objectStore.tool = ObjectTool::RotateX;
  objectStore.toolsEnabled = editor.somethingCopied = true;
  ClearAllObjects();
  EXPECT_THAT(objectStore.objects, IsEmpty());
  EXPECT_THAT(entities.Of(EntityKind::ObjectSpawn).instances, IsEmpty());
  EXPECT_THAT(ChildrenOf(levelTree.fixed.standardMeshes), IsEmpty());
  EXPECT_EQ(objectStore.lastHoveredObject, -1);
  EXPECT_EQ(objectStore.tool, ObjectTool::Select);
  EXPECT_FALSE(objectStore.toolsEnabled);
  EXPECT_FALSE(editor.somethingCopied) << "what Paste would place is gone";
}

}  // namespace
}  // namespace mw
