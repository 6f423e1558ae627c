// What the dialogs and toolbars of the terrain show when they open: captions, tips, names for
// screen readers, ranges, first values and the order of the Tab key.
#include <QAbstractItemView>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QSlider>
#include <QToolBar>
#include <stdexcept>

#include "objects/ui/run_dialog.h"
#include "support/golden.h"
#include "terrain/terrain_tools.h"
#include "terrain/ui/material_toolbar.h"
#include "terrain/ui/random_terrain_dialog.h"
#include "terrain/ui/road_dialog.h"
#include "terrain/ui/sample_bits_dialog.h"
#include "terrain/ui/shadow_dialog.h"
#include "terrain/ui/surface_assignments_dialog.h"
#include "terrain/ui/terrain_toolbar.h"
#include "terrain/ui/terrain_ui_test.h"

namespace mw {
namespace {

// The kind's own part of a widget's line.
QString Content(const QWidget& widget) {
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
    const QString of = label->buddy() ? " for " + label->buddy()->objectName() : "";
    return '"' + label->text() + '"' + of;
  }
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
    return '"' + button->text() + '"' + (button->isChecked() ? " checked" : "");
  if (const auto* slider = qobject_cast<const QAbstractSlider*>(&widget)) {
    const QString range("%1 ... %2, at %3");
    return range.arg(slider->minimum()).arg(slider->maximum()).arg(slider->value());
  }
  if (const auto* list = qobject_cast<const QComboBox*>(&widget)) {
    QStringList entries;
    for (int i = 0; i < list->count(); ++i) entries << list->itemText(i);
    return entries.join('|') + ", at \"" + list->currentText() + '"';
  }
  return QString("%1 x %2").arg(widget.width()).arg(widget.height());
}

QString LineOf(const QWidget& widget) {
  QString line = "  " + widget.objectName() + ": " + Content(widget);
  if (!widget.isEnabled()) line += ", grey";
  if (!widget.toolTip().isEmpty()) line += "\n    tip: " + widget.toolTip();
  if (!widget.accessibleName().isEmpty()) line += "\n    name: " + widget.accessibleName();
  if (!widget.accessibleDescription().isEmpty())
    line += "\n    description: " + widget.accessibleDescription();
  const QVariant id = widget.property("controlId");
  if (id.isValid()) line += "\n    control " + id.toString();
  return line + '\n';
}

QString ListingOf(const QDialog& dialog) {
  QString listing = "==== " + dialog.windowTitle() + '\n';
  for (const QWidget* widget : dialog.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (!widget->objectName().isEmpty()) listing += LineOf(*widget);
    for (const QWidget* inner : widget->findChildren<QAbstractButton*>()) listing += LineOf(*inner);
  }
  listing += "  Tab:";
  for (QWidget* next = dialog.nextInFocusChain(); next != &dialog;
       next = next->nextInFocusChain()) {
    if (next->focusPolicy() & Qt::TabFocus && next->isEnabled())
      listing += ' ' + next->objectName();
  }
  return listing + '\n';
}

using ::testing::ElementsAre;
using TerrainControlsTest = TerrainUiTest;

TEST_F(TerrainControlsTest, TheDialogsShowWhatIsListed) {
  levelTextures.SurfaceAssigned[2][1] = true;
  terrain.roadPointCount = 7;
  const std::function<void()> dialogs[] = {
      [] { CreateRoadDialog(nullptr); },
      [] { RandomTerrainDialog(nullptr); },
      [] { SampleBitsDialog(nullptr, "Select Import Bits"); },
      [] { ShadowDialog(nullptr); },
      [] { SurfaceAssignmentsDialog(nullptr, [] {}); },
  };
  QString listing;
  for (const auto& run : dialogs) {
    WhenDialogOpens([&listing](const OpenDialog& dialog) { listing += ListingOf(dialog.window); });
    run();
  }
  ExpectGolden("terrain/dialogs.txt", listing.toStdString());
}

// The toolbars, and what the user does with them.
class ToolbarsTest : public TerrainUiTest {
 protected:
  static QAction& Button(const QToolBar& toolbar, const QString& toolTip) {
    for (QAction* action : toolbar.actions()) {
      if (action->toolTip() == toolTip) return *action;
    }
    throw std::logic_error(toolTip.toStdString());
  }
  template <typename Widget>
  static Widget& Setting(const QToolBar& toolbar, const char* name) {
    auto* const widget = toolbar.findChild<Widget*>(name);
    if (!widget) throw std::logic_error(name);
    return *widget;
  }

  TerrainToolbar terrainToolbar{nullptr};
  MaterialToolbar materialToolbar{nullptr};
};

TEST_F(ToolbarsTest, TheToolbarsSettingsAreThoseListedAndTakeNoKeysFromTheView) {
  QString listing;
  for (const QToolBar* toolbar :
       {static_cast<QToolBar*>(&terrainToolbar), static_cast<QToolBar*>(&materialToolbar)}) {
    listing += "==== " + toolbar->windowTitle() + '\n';
    for (const QAction* action : toolbar->actions()) {
      if (action->isChecked()) listing += "  checked: " + action->toolTip() + '\n';
    }
    for (const QWidget* widget : toolbar->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
      if (!qobject_cast<const QComboBox*>(widget) && !qobject_cast<const QAbstractSlider*>(widget))
        continue;
      listing += LineOf(*widget);
      EXPECT_FALSE(widget->focusPolicy() & Qt::TabFocus);
    }
  }
  ExpectGolden("terrain/toolbars.txt", listing.toStdString());
}

class TerrainToolbarTest : public ToolbarsTest {
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

using MaterialToolbarTest = ToolbarsTest;

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
