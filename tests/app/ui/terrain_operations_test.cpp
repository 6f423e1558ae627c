#include <QAction>
#include <QComboBox>
#include <QTest>

#include "app/modes.h"
#include "app/ui/mode_toolbars.h"
#include "app/ui/view_widget.h"
#include "app/ui/window_fixture.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

class TerrainKeysTest : public WindowTest {
 protected:
  TerrainKeysTest() { SetEditMode(EditMode::TerrainMapper); }
  // Of a button of the mode toolbars; their actions hold their commands.
  bool IsChecked(CommandId id) {
    for (const QAction* action : window.modeToolbars()->findChildren<QAction*>()) {
      if (action->data().toInt() == id) return action->isChecked();
    }
    return false;
  }
};

TEST_F(TerrainKeysTest, ToolKeysPressTheirButtons) {
  QTest::keyClick(window.view(), Qt::Key_V);
  EXPECT_EQ(terrain.tool, TerrainTool::Flatten);
  EXPECT_TRUE(IsChecked(kCommandFlatten));
  EXPECT_FALSE(IsChecked(kCommandPointManipulation));
  QTest::keyClick(window.view(), Qt::Key_M);
  EXPECT_FALSE(terrain.autoSmoothing);
  EXPECT_FALSE(IsChecked(kCommandAutoSmoothing));
}

TEST_F(TerrainKeysTest, KeypadAndSpaceActOnTheSelectedPoints) {
  terrain.autoSmoothing = 0;
  terrain.grid[100][50].selected = 1;
  terrain.selectionBox = {100, 100, 50, 50};
  QTest::keyClick(window.view(), Qt::Key_Plus, Qt::KeypadModifier);
  EXPECT_FLOAT_EQ(terrain.grid[100][50].h, 127.1f);
  QTest::keyClick(window.view(), Qt::Key_Space);
  EXPECT_EQ(terrain.grid[100][50].selected, 0);
}

class MaterialKeysTest : public WindowTest {
 protected:
  MaterialKeysTest() {
    CreateMaterialMapper();
    SetEditMode(EditMode::MaterialMapper);
  }
  ~MaterialKeysTest() override { DestroyMaterialMapper(); }
};

TEST_F(MaterialKeysTest, DigitsSetTheBrushSizeAndItsListFollows) {
  const auto* list = window.modeToolbars()->findChild<QComboBox*>("materialBrushSize");
  QTest::keyClick(window.view(), Qt::Key_4);
  EXPECT_EQ(materialMapper->brushSize, 4u);
  EXPECT_EQ(list->currentText(), "4");
  QTest::keyClick(window.view(), Qt::Key_0);
  EXPECT_EQ(materialMapper->brushSize, 9u);
  EXPECT_EQ(list->currentText(), "9");
}

}  // namespace
}  // namespace mw
