#include "terrain/ui/terrain_toolbar.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QSlider>
#include <gmock/gmock.h>
#include <memory>

#include "bench/plain/terrain_scene.h"
#include "core/editor_state.h"
#include "support/sandbox.h"
#include "terrain/terrain.h"
#include "terrain/terrain_tools.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

class TerrainToolbarTest : public SandboxTest {
 protected:
  TerrainToolbarTest() {
    MakeLandscape(256);
    toolbar = std::make_unique<TerrainToolbar>(nullptr);
  }
  ~TerrainToolbarTest() override { RemoveLandscape(); }

  std::vector<std::string> CheckedButtons() const {
    std::vector<std::string> toolTips;
    for (const QAction* action : toolbar->actions()) {
      if (action->isChecked()) toolTips.push_back(action->toolTip().toStdString());
    }
    return toolTips;
  }
  void Click(const char* toolTip) {
    for (QAction* action : toolbar->actions()) {
      if (action->toolTip() == QString(toolTip)) return action->trigger();
    }
    ADD_FAILURE() << "no button " << toolTip;
  }
  template <typename Widget>
  Widget* Setting(const char* toolTip) const {
    for (auto* widget : toolbar->findChildren<Widget*>()) {
      if (widget->toolTip() == QString(toolTip)) return widget;
    }
    return nullptr;
  }
  QComboBox* Range() const { return Setting<QComboBox>("Smoothing Range"); }
  QComboBox* Brush() const { return Setting<QComboBox>("Brush Size"); }
  QSlider* Power() const { return Setting<QSlider>("Tool Power Setting"); }

  std::unique_ptr<TerrainToolbar> toolbar;
};

TEST_F(TerrainToolbarTest, StartsWithPointManipulationAndAutoSmoothing) {
  std::vector<std::string> order;
  for (const QAction* action : toolbar->actions()) {
    if (action->isCheckable()) order.push_back(action->toolTip().toStdString());
  }
  EXPECT_THAT(order,
              ElementsAre("Point Manipulation Tool", "Toggle Point Auto Smoothing", "Carving Tool",
                          "Raising Tool", "Smoothing Tool", "Flatten Tool", "Road Tool"));
  EXPECT_THAT(CheckedButtons(),
              ElementsAre("Point Manipulation Tool", "Toggle Point Auto Smoothing"));
  EXPECT_EQ(Range()->currentText(), "6");
  EXPECT_TRUE(Range()->isEnabled());
  EXPECT_EQ(Brush()->currentText(), "1");
  EXPECT_EQ(Power()->value(), 3);
  EXPECT_EQ(Power()->maximum(), 10);
}

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
  for (const auto& row : rows) {
    Click(row.toolTip);
    Click(row.toolTip);
    EXPECT_EQ(terrain.tool, row.tool);
    EXPECT_THAT(CheckedButtons(), ElementsAre(row.toolTip));
    EXPECT_EQ(Brush()->isEnabled(), row.brush) << row.toolTip;
    EXPECT_EQ(Power()->isEnabled(), row.power) << row.toolTip;
  }
}

TEST_F(TerrainToolbarTest, AutoSmoothingEnablesItsRange) {
  Click("Toggle Point Auto Smoothing");
  EXPECT_FALSE(terrain.autoSmoothing);
  EXPECT_FALSE(Range()->isEnabled());
  toolbar->Press(TerrainControl::AutoSmoothing);
  EXPECT_TRUE(terrain.autoSmoothing);
  EXPECT_TRUE(Range()->isEnabled());
  EXPECT_THAT(CheckedButtons(),
              ElementsAre("Point Manipulation Tool", "Toggle Point Auto Smoothing"));
}

TEST_F(TerrainToolbarTest, SettingsReachTheTerrain) {
  Range()->setCurrentIndex(8);
  Brush()->setCurrentIndex(4);
  Power()->setValue(10);
  EXPECT_EQ(terrain.smoothingRange, 9);
  EXPECT_EQ(terrain.brushSize, 5);
  EXPECT_EQ(terrain.power, 10);
}

TEST_F(TerrainToolbarTest, SettingsFromKeysShow) {
  SetBrushSize(7);
  SetPower(1);
  toolbar->Refresh();
  EXPECT_EQ(Brush()->currentText(), "7");
  EXPECT_EQ(Brush()->view()->currentIndex().row(), 6) << "what a screen reader takes for chosen";
  EXPECT_EQ(Power()->value(), 1);
  EXPECT_EQ(terrain.brushSize, 7);
  EXPECT_EQ(terrain.power, 1);
}

}  // namespace
}  // namespace mw
