#include "objects/ui/object_toolbar.h"

#include <QAction>
#include <gmock/gmock.h>

#include "objects/object_store.h"
#include "support/sandbox.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

class ObjectToolbarTest : public SandboxTest {
 protected:
  ObjectToolbarTest() { objectStore = ObjectStore{}; }
  ~ObjectToolbarTest() override { objectStore = ObjectStore{}; }

  std::vector<std::string> ToolTipsOf(bool (QAction::*has)() const) {
    std::vector<std::string> toolTips;
    for (const QAction* action : toolbar.actions()) {
      if (!action->isSeparator() && (action->*has)()) {
        toolTips.push_back(action->toolTip().toStdString());
      }
    }
    return toolTips;
  }

  ObjectToolbar toolbar{nullptr};
};

TEST_F(ObjectToolbarTest, ButtonsStandInTheirGroupsWithTheirCommands) {
  std::vector<int> commands;
  for (const QAction* action : toolbar.actions()) {
    commands.push_back(action->isSeparator() ? 0 : action->data().toInt());
  }
  EXPECT_THAT(commands, ElementsAre(4000, 4001, 4002, 4003, 4004, 0, 4005, 4006, 4007, 32796, 0,
                                    4008, 4009, 4010, 4011, 4012, 4013, 4015, 4016, 0, 4014));
}

TEST_F(ObjectToolbarTest, AtFirstEverythingIsShownAsBoxesAndOnlySelectCanBeUsed) {
  EXPECT_THAT(ToolTipsOf(&QAction::isChecked),
              ElementsAre("Show Standard Meshes", "Show Tree Meshes", "Show Object Spawns",
                          "Show Soldier Spawns", "Show Control Points", "View As Bounding Box",
                          "Select Objects", "Snap Objects to Ground"));
  EXPECT_THAT(ToolTipsOf(&QAction::isEnabled),
              ElementsAre("Show Standard Meshes", "Show Tree Meshes", "Show Object Spawns",
                          "Show Soldier Spawns", "Show Control Points", "View As Bounding Box",
                          "View As Collision Mesh", "View As Detail Mesh", "View As Textured Mesh",
                          "Select Objects", "Snap Objects to Ground"));
}

TEST_F(ObjectToolbarTest, RefreshShowsWhatKeysAndSelectionChanged) {
  objectStore.toolsEnabled = true;
  objectStore.tool = ObjectTool::RotateY;
  objectStore.viewMode = ViewMode::TexturedMesh;
  objectStore.snapToGround = false;
  toolbar.Refresh();
  EXPECT_THAT(ToolTipsOf(&QAction::isChecked),
              ElementsAre("Show Standard Meshes", "Show Tree Meshes", "Show Object Spawns",
                          "Show Soldier Spawns", "Show Control Points", "View As Textured Mesh",
                          "Rotate Objects on Y Axis"));
  EXPECT_THAT(ToolTipsOf(&QAction::isEnabled), ::testing::Contains("Rotate Objects on Z Axis"));
  EXPECT_THAT(ToolTipsOf(&QAction::isEnabled),
              ::testing::Not(::testing::Contains("Scale Objects Width")));
}

TEST_F(ObjectToolbarTest, ClickGoesThroughTheMapperAndTheButtonsShowItsState) {
  for (QAction* action : toolbar.actions()) {
    if (action->data().toInt() == static_cast<int>(ObjectControl::ShowTreeMeshes)) {
      action->trigger();
      EXPECT_EQ(action->isChecked(), objectStore.showTreeMeshes);
      EXPECT_FALSE(objectStore.showTreeMeshes);
    }
  }
}

}  // namespace
}  // namespace mw
