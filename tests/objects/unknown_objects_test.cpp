#include "objects/unknown_objects.h"

#include "data/load_report.h"
#include "data/open_level.h"
#include "objects/object_level_test.h"
#include "objects/static_object_records.h"
#include "objects/static_objects.h"

namespace mw {
namespace {

using UnknownObjectsTest = ObjectLevelTest;

TEST_F(UnknownObjectsTest, AreListedOnceAndFollowTheCatalogue) {
  for (const char* name : {"shed", "hut", "Shed", "mill"})
    AppendStaticObject(NewStaticObject(name));
  BeginLoadReport();
  NoteUnknownObjects();
  ASSERT_EQ(openLevel.loadReport.lines.size(), 1u);
  EXPECT_EQ(openLevel.loadReport.lines[0],
            "Not in the mod's object list and drawn as plain boxes: mill, shed (2).");
  EXPECT_TRUE(openLevel.loadReport.readWhole) << "nothing of the level is damaged";

  LoadCatalogue("[TREES]\nshed=TreeMesh(shed_m1)\n");
  const auto& objects = objectStore.objects;
  EXPECT_TRUE(!objects[0].unknown && objects[1].unknown && !objects[2].unknown);
  EXPECT_EQ(ParentOf(objects[0].treeItem), levelTree.fixed.treeMeshes);
  BeginLoadReport();
  for (int i = 0; i < 20; ++i) AppendStaticObject(NewStaticObject("hall" + std::to_string(i)));
  NoteUnknownObjects();
  EXPECT_TRUE(openLevel.loadReport.lines[0].ends_with("hall19 and 10 more names."))
      << openLevel.loadReport.lines[0];
  ClearLoadReport();
}

}  // namespace
}  // namespace mw
