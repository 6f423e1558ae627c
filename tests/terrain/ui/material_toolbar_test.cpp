#include "terrain/ui/material_toolbar.h"

#include <QAction>
#include <QComboBox>
#include <gmock/gmock.h>
#include <memory>

#include "bench/plain/terrain_scene.h"
#include "support/sandbox.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"

namespace mw {
namespace {

class MaterialToolbarTest : public SandboxTest {
 protected:
  MaterialToolbarTest() {
    MakeLandscape(256);
    CreateMaterialMapper();
    toolbar = std::make_unique<MaterialToolbar>(nullptr);
  }
  ~MaterialToolbarTest() override {
    DestroyMaterialMapper();
    RemoveLandscape();
  }

  QAction* Button(const char* toolTip) const {
    for (QAction* action : toolbar->actions()) {
      if (action->toolTip() == QString(toolTip)) return action;
    }
    return nullptr;
  }
  QComboBox* List(const char* toolTip) const {
    for (auto* list : toolbar->findChildren<QComboBox*>()) {
      if (list->toolTip() == QString(toolTip)) return list;
    }
    return nullptr;
  }

  std::unique_ptr<MaterialToolbar> toolbar;
};

TEST_F(MaterialToolbarTest, ListsOfferSizesAndMaterialsAndStartAtTheFirst) {
  ASSERT_EQ(List("Brush Size")->count(), 9);
  EXPECT_EQ(List("Brush Size")->currentText(), "1");
  EXPECT_EQ(List("Brush Size")->itemText(8), "9");
  ASSERT_EQ(List("Material")->count(), 16);
  EXPECT_EQ(List("Material")->currentText(), "Default");
  EXPECT_EQ(List("Material")->itemText(12), "Rock Surface");
  EXPECT_FALSE(Button("Toggle Surface View")->isChecked());
}

TEST_F(MaterialToolbarTest, ChoicesReachTheMaterialMapper) {
  List("Brush Size")->setCurrentIndex(4);
  List("Material")->setCurrentIndex(15);
  EXPECT_EQ(materialMapper->brushSize, 5u);
  EXPECT_EQ(materialMapper->currentMaterial, 15u);
}

TEST_F(MaterialToolbarTest, FillTakesTheChosenMaterial) {
  List("Material")->setCurrentIndex(8);
  scripted::script.answers = {PromptAnswer::Ok};
  Button("Fill With Material")->trigger();
  EXPECT_EQ(materialMapper->grid[1][0], 8u);
  EXPECT_EQ(materialMapper->grid[256][255], 8u);
}

TEST_F(MaterialToolbarTest, SurfaceViewIsSwitchedAndShownAsChecked) {
  Button("Toggle Surface View")->trigger();
  EXPECT_TRUE(materialMapper->SurfaceView);
  EXPECT_TRUE(Button("Toggle Surface View")->isChecked());
  Button("Toggle Surface View")->trigger();
  EXPECT_FALSE(materialMapper->SurfaceView);
  EXPECT_FALSE(Button("Toggle Surface View")->isChecked());
}

TEST_F(MaterialToolbarTest, ABrushSizeFromAKeyShows) {
  SetMaterialBrushSize(7);
  toolbar->Refresh();
  EXPECT_EQ(List("Brush Size")->currentText(), "7");
  EXPECT_EQ(materialMapper->brushSize, 7u);
}

TEST_F(MaterialToolbarTest, ItTakesNoKeysFromTheView) {
  for (const QComboBox* list : toolbar->findChildren<QComboBox*>())
    EXPECT_EQ(list->focusPolicy(), Qt::NoFocus);
}

}  // namespace
}  // namespace mw
