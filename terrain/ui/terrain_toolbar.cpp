#include "terrain/ui/terrain_toolbar.h"

#include <QAbstractItemView>
#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QSignalBlocker>
#include <QSlider>

#include "resources/pictures.h"
#include "terrain/terrain.h"
#include "terrain/terrain_tools.h"

namespace mw {
namespace {

constexpr int kListWidth = 40, kEdgeListWidth = 80;
constexpr QSize kSliderSize(140, 20);

struct ButtonSpec {
  TerrainControl control;
  const char* toolTip;
  const char* icon;
};

constexpr ButtonSpec kButtons[] = {
    {TerrainControl::PointManipulation, "Point Manipulation Tool", "point_manipulation"},
    {TerrainControl::AutoSmoothing, "Toggle Point Auto Smoothing", "auto_smoothing"},
    {TerrainControl::Carving, "Carving Tool", "carving"},
    {TerrainControl::Raising, "Raising Tool", "raising"},
    {TerrainControl::Smoothing, "Smoothing Tool", "smoothing"},
    {TerrainControl::Flatten, "Flatten Tool", "flatten"},
    {TerrainControl::Road, "Road Tool", "road"},
};

void Describe(QWidget* widget, TerrainControl control, const char* objectName,
              const char* toolTip) {
  widget->setObjectName(objectName);
  widget->setProperty("controlId", static_cast<int>(control));
  widget->setAccessibleName(toolTip);
  widget->setToolTip(toolTip);
}

// It takes no keyboard focus: its keys are the 3D view's.
QComboBox* MakeList(QWidget* parent, const QStringList& entries, int width) {
  auto* list = new QComboBox(parent);
  list->addItems(entries);
  list->setMaxVisibleItems(static_cast<int>(entries.size()));
  list->setFixedWidth(width);
  list->setFocusPolicy(Qt::NoFocus);
  return list;
}

// Entries "1" ... "count".
QComboBox* MakeNumberList(QWidget* parent, int count) {
  QStringList numbers;
  for (int number = 1; number <= count; ++number) numbers << QString::number(number);
  return MakeList(parent, numbers, kListWidth);
}

QSlider* MakePowerSlider(QWidget* parent) {
  auto* slider = new QSlider(Qt::Horizontal, parent);
  slider->setRange(1, kMaxToolPower);
  slider->setPageStep(1);
  slider->setFixedSize(kSliderSize);
  slider->setFocusPolicy(Qt::ClickFocus);  // until the mouse is over the 3D view again
  return slider;
}

// Shows a setting without sending it.
template <typename Widget, typename Set>
void Show(Widget* widget, bool enabled, Set set) {
  const QSignalBlocker quiet(widget);
  set();
  widget->setEnabled(enabled);
}

// The closed list, too, has the shown entry as its selected one: screen readers tell that.
void ShowEntry(QComboBox* list, int index) {
  list->setCurrentIndex(index);
  list->view()->setCurrentIndex(list->model()->index(index, list->modelColumn()));
}

}  // namespace

TerrainToolbar::TerrainToolbar(QWidget* parent) : QToolBar("Terrain Mapper Tools", parent) {
  setObjectName("Terrain Mapper Tools");
  setIconSize(kIconSize);
  AddButtons();
  AddSettings();
  Refresh();
}

void TerrainToolbar::AddButtons() {
  addSeparator();
  auto* tools = new QActionGroup(this);
  for (const ButtonSpec& button : kButtons) {
    QAction* action = addAction(Icon(button.icon), button.toolTip);
    action->setToolTip(button.toolTip);
    action->setData(static_cast<int>(button.control));
    action->setProperty("controlId", static_cast<int>(button.control));
    action->setCheckable(true);
    if (ToolOf(button.control)) tools->addAction(action);
    connect(action, &QAction::triggered, this,
            [this, control = button.control] { Press(control); });
  }
}

// The list for auto-smoothing stands behind its button, the settings of the brush behind the tools.
void TerrainToolbar::AddSettings() {
  smoothingRange_ = MakeNumberList(this, kMaxSmoothingRange);
  brushSize_ = MakeNumberList(this, kMaxBrushSize);
  brushEdge_ = MakeList(this, {kBrushEdgeNames.begin(), kBrushEdgeNames.end()}, kEdgeListWidth);
  power_ = MakePowerSlider(this);
  Describe(smoothingRange_, TerrainControl::SmoothingRange, "smoothingRange", "Smoothing Range");
  Describe(brushSize_, TerrainControl::BrushSize, "brushSize", "Brush Size");
  Describe(brushEdge_, TerrainControl::BrushEdge, "brushEdge", "Brush Edge");
  Describe(power_, TerrainControl::Power, "power", "Tool Power Setting");

  QAction* firstSculptingTool = Button(TerrainControl::Carving);
  insertWidget(firstSculptingTool, smoothingRange_);
  insertSeparator(firstSculptingTool);
  addSeparator();
  addWidget(brushSize_);
  QAction* const edge = addWidget(brushEdge_);
  edge->setToolTip(brushEdge_->toolTip());
  edge->setProperty("controlId", static_cast<int>(TerrainControl::BrushEdge));
  addSeparator();
  addWidget(power_);

  connect(smoothingRange_, &QComboBox::currentIndexChanged, this,
          [](int index) { SetSmoothingRange(index + 1); });
  connect(brushSize_, &QComboBox::currentIndexChanged, this,
          [](int index) { SetBrushSize(index + 1); });
  connect(brushEdge_, &QComboBox::currentIndexChanged, this,
          [](int index) { SetBrushEdge(static_cast<BrushEdge>(index)); });
  connect(power_, &QSlider::valueChanged, this, SetPower);
}

QAction* TerrainToolbar::Button(TerrainControl button) const {
  for (QAction* action : actions()) {
    if (action->data().toInt() == static_cast<int>(button)) return action;
  }
  return nullptr;
}

void TerrainToolbar::Press(TerrainControl button) {
  PressTerrainControl(button);
  Refresh();
}

void TerrainToolbar::Refresh() {
  if (!terrain.grid) return;
  for (const ButtonSpec& button : kButtons)
    Button(button.control)->setChecked(ToolOf(button.control) == terrain.tool);
  Button(TerrainControl::AutoSmoothing)->setChecked(terrain.autoSmoothing);
  Show(smoothingRange_, terrain.autoSmoothing,
       [this] { ShowEntry(smoothingRange_, static_cast<int>(terrain.smoothingRange) - 1); });
  Show(brushSize_, UsesBrushSize(terrain.tool),
       [this] { ShowEntry(brushSize_, terrain.brushSize - 1); });
  Show(brushEdge_, IsBrush(terrain.tool),
       [this] { ShowEntry(brushEdge_, static_cast<int>(terrain.brushEdge)); });
  Show(power_, UsesPower(terrain.tool),
       [this] { power_->setValue(static_cast<int>(terrain.power)); });
}

}  // namespace mw
