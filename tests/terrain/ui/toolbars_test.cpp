#include <QAbstractItemView>
#include <QComboBox>
#include <QSlider>

#include "terrain/terrain_tools.h"
#include "terrain/ui/terrain_ui_test.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

class TerrainToolbarTest : public TerrainUiTest {
 protected:
  std::vector<std::string> CheckedButtons() const {
    std::vector<std::string> toolTips;
    for (const QAction* action : terrainToolbar.actions()) {
      if (action->isChecked()) toolTips.push_back(action->toolTip().toStdString());
    }
    return toolTips;
  }
  void Click(const char* toolTip) const { Button(terrainToolbar, toolTip).trigger(); }

  QComboBox& range = Setting<QComboBox>(terrainToolbar, "smoothingRange");
  QComboBox& brush = Setting<QComboBox>(terrainToolbar, "brushSize");
  QSlider& power = Setting<QSlider>(terrainToolbar, "power");
};

TEST_F(TerrainToolbarTest, EachToolIsCheckedAloneAndAllowsTheSettingsItHeeds) {
  const struct {
    const char* toolTip;
    TerrainTool tool;
    bool brush, power;
  } rows[] = {
      {"Carving Tool", TerrainTool::Carving, true, true},
      {"Raising Tool", TerrainTool::Raising, true, true},
      {"Smoothing Tool", TerrainTool::Smoothing, true, false},
      {"Flatten Tool", TerrainTool::Flatten, true, false},
      {"Road Tool", TerrainTool::Road, true, false},
      {"Point Manipulation Tool", TerrainTool::PointManipulation, false, false},
  };
  Click("Toggle Point Auto Smoothing");
  EXPECT_FALSE(terrain.autoSmoothing || range.isEnabled());
  for (const auto& row : rows) {
    Click(row.toolTip);
    Click(row.toolTip);
    EXPECT_EQ(terrain.tool, row.tool);
    EXPECT_THAT(CheckedButtons(), ElementsAre(row.toolTip));
    EXPECT_EQ(brush.isEnabled(), row.brush) << row.toolTip;
    EXPECT_EQ(power.isEnabled(), row.power) << row.toolTip;
  }
  terrainToolbar.Press(TerrainControl::AutoSmoothing);
  EXPECT_TRUE(terrain.autoSmoothing && range.isEnabled());
  EXPECT_THAT(CheckedButtons(),
              ElementsAre("Point Manipulation Tool", "Toggle Point Auto Smoothing"));
}

TEST_F(TerrainToolbarTest, SettingsReachTheTerrainAndThoseFromKeysShow) {
  range.setCurrentIndex(8);
  brush.setCurrentIndex(4);
  power.setValue(10);
  EXPECT_EQ(terrain.smoothingRange, 9);
  EXPECT_EQ(terrain.brushSize, 5);
  EXPECT_EQ(terrain.power, 10);
  SetBrushSize(7);
  SetPower(1);
  terrainToolbar.Refresh();
  EXPECT_EQ(brush.currentText(), "7");
  EXPECT_EQ(brush.view()->currentIndex().row(), 6) << "what a screen reader takes for chosen";
  EXPECT_EQ(power.value(), 1);
  EXPECT_EQ(terrain.brushSize, 7);
  EXPECT_EQ(terrain.power, 1);
}

using MaterialToolbarTest = TerrainUiTest;

TEST_F(MaterialToolbarTest, ChoicesReachTheMaterialMapperAndThoseFromKeysShow) {
  auto& brush = Setting<QComboBox>(materialToolbar, "materialBrushSize");
  auto& material = Setting<QComboBox>(materialToolbar, "material");
  brush.setCurrentIndex(4);
  material.setCurrentIndex(8);
  EXPECT_EQ(materialMapper->brushSize, 5u);
  EXPECT_EQ(materialMapper->currentMaterial, 8u);
  Answer({PromptAnswer::Ok});
  Button(materialToolbar, "Fill With Material").trigger();
  EXPECT_EQ(materialMapper->grid[512][511], 8u);
  SetMaterialBrushSize(7);
  materialToolbar.Refresh();
  EXPECT_EQ(brush.currentText(), "7");
  EXPECT_EQ(material.currentText(), "Gravel");
  EXPECT_EQ(materialMapper->brushSize, 7u);
  QAction& surfaceView = Button(materialToolbar, "Toggle Surface View");
  ToggleSurfaceView();
  materialToolbar.Refresh();
  EXPECT_TRUE(surfaceView.isChecked());
  surfaceView.trigger();
  EXPECT_FALSE(materialMapper->SurfaceView || surfaceView.isChecked());
}

}  // namespace
}  // namespace mw
