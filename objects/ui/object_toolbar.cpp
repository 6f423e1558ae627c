#include "objects/ui/object_toolbar.h"

#include <QAction>
#include <QActionGroup>
#include <QComboBox>

#include "objects/object_mapper.h"
#include "objects/object_snapping.h"
#include "objects/object_store.h"
#include "resources/pictures.h"

namespace mw {
namespace {

enum class Group { Show, View, Tools, Snap };

struct ButtonSpec {
  ObjectControl control;
  Group group;
  const char* toolTip;
  const char* icon;
};

constexpr ButtonSpec kButtons[] = {
    {ObjectControl::ShowStandardMeshes, Group::Show, "Show Standard Meshes",
     "show_standard_meshes"},
    {ObjectControl::ShowTreeMeshes, Group::Show, "Show Tree Meshes", "show_tree_meshes"},
    {ObjectControl::ShowObjectSpawns, Group::Show, "Show Object Spawns", "show_object_spawns"},
    {ObjectControl::ShowSoldierSpawns, Group::Show, "Show Soldier Spawns", "show_soldier_spawns"},
    {ObjectControl::ShowControlPoints, Group::Show, "Show Control Points", "show_control_points"},
    {ObjectControl::ViewBoundingBox, Group::View, "View As Bounding Box", "view_bounding_box"},
    {ObjectControl::ViewCollisionMesh, Group::View, "View As Collision Mesh",
     "view_collision_mesh"},
    {ObjectControl::ViewDetailMesh, Group::View, "View As Detail Mesh", "view_detail_mesh"},
    {ObjectControl::ViewTexturedMesh, Group::View, "View As Textured Mesh", "view_textured_mesh"},
    {ObjectControl::Select, Group::Tools, "Select Objects", "select_objects"},
    {ObjectControl::Translate, Group::Tools, "Translate Objects", "translate_objects"},
    {ObjectControl::RaiseLower, Group::Tools, "Raise/Lower Objects", "raise_lower"},
    {ObjectControl::RotateX, Group::Tools, "Rotate Objects on X Axis", "rotate_x"},
    {ObjectControl::RotateY, Group::Tools, "Rotate Objects on Y Axis", "rotate_y"},
    {ObjectControl::RotateZ, Group::Tools, "Rotate Objects on Z Axis", "rotate_z"},
    {ObjectControl::ScaleWidth, Group::Tools, "Scale Objects Width", "scale_width"},
    {ObjectControl::ScaleHeight, Group::Tools, "Scale Objects Height", "scale_height"},
    {ObjectControl::Scatter, Group::Tools, "Scatter Objects", "scatter"},
    {ObjectControl::SnapToGround, Group::Snap, "Snap Objects to Ground", "snap_to_ground"},
};

// The buttons of these groups exclude each other.
bool IsChoice(Group group) { return group == Group::View || group == Group::Tools; }

bool IsOn(ObjectControl control) {
  switch (control) {
    case ObjectControl::ShowStandardMeshes:
      return objectStore.showStandardMeshes;
    case ObjectControl::ShowTreeMeshes:
      return objectStore.showTreeMeshes;
    case ObjectControl::ShowObjectSpawns:
      return objectStore.showObjectSpawns;
    case ObjectControl::ShowSoldierSpawns:
      return objectStore.showSoldierSpawns;
    case ObjectControl::ShowControlPoints:
      return objectStore.showControlPoints;
    case ObjectControl::ViewBoundingBox:
      return objectStore.viewMode == ViewMode::BoundingBox;
    case ObjectControl::ViewCollisionMesh:
      return objectStore.viewMode == ViewMode::CollisionMesh;
    case ObjectControl::ViewDetailMesh:
      return objectStore.viewMode == ViewMode::DetailMesh;
    case ObjectControl::ViewTexturedMesh:
      return objectStore.viewMode == ViewMode::TexturedMesh;
    case ObjectControl::Select:
      return objectStore.tool == ObjectTool::Select;
    case ObjectControl::Translate:
      return objectStore.tool == ObjectTool::Translate;
    case ObjectControl::RaiseLower:
      return objectStore.tool == ObjectTool::RaiseLower;
    case ObjectControl::RotateX:
      return objectStore.tool == ObjectTool::RotateX;
    case ObjectControl::RotateY:
      return objectStore.tool == ObjectTool::RotateY;
    case ObjectControl::RotateZ:
      return objectStore.tool == ObjectTool::RotateZ;
    case ObjectControl::ScaleWidth:
      return objectStore.tool == ObjectTool::ScaleWidth;
    case ObjectControl::ScaleHeight:
      return objectStore.tool == ObjectTool::ScaleHeight;
    case ObjectControl::Scatter:
      return objectStore.tool == ObjectTool::Scatter;
    case ObjectControl::SnapToGround:
      return objectStore.snapToGround;
    case ObjectControl::GridStep:
    case ObjectControl::TurnStep:
      break;
  }
  return false;
}

// The scale tools are kept for later; the others that change objects need a selection.
bool IsUsable(const ButtonSpec& button) {
  if (button.control == ObjectControl::ScaleWidth || button.control == ObjectControl::ScaleHeight)
    return false;
  const bool changesObjects = button.group == Group::Tools &&
                              button.control != ObjectControl::Select &&
                              button.control != ObjectControl::Scatter;
  return !changesObjects || objectStore.toolsEnabled;
}

}  // namespace

ObjectToolbar::ObjectToolbar(QWidget* parent) : QToolBar("Object Mapper Tools", parent) {
  setObjectName("Object Mapper Tools");
  setIconSize(kIconSize);
  AddButtons();
  AddSteps();
  Refresh();
}

void ObjectToolbar::AddButtons() {
  Group group = kButtons[0].group;
  QActionGroup* choice = nullptr;
  for (const ButtonSpec& button : kButtons) {
    if (button.group != group) {
      group = button.group;
      choice = IsChoice(group) ? new QActionGroup(this) : nullptr;
      addSeparator();
    }
    QAction* action = addAction(Icon(button.icon), button.toolTip);
    action->setToolTip(button.toolTip);
    action->setData(static_cast<int>(button.control));
    action->setProperty("controlId", static_cast<int>(button.control));
    action->setCheckable(true);
    if (choice) choice->addAction(action);
    connect(action, &QAction::triggered, this,
            [this, control = button.control] { Press(control); });
  }
}

void ObjectToolbar::AddSteps() {
  addSeparator();
  gridSteps_ =
      AddList(ObjectControl::GridStep, "Move on a Grid", kGridSteps, "Grid %1", SetGridStep);
  gridSteps_->setItemText(0, "No grid");
  turnSteps_ = AddList(ObjectControl::TurnStep, "Step of Turning with Shift", kTurnSteps,
                       QString("%1") + QChar(0xB0), SetTurnStep);
}

// It takes no keyboard focus: keys are the 3D view's.
QComboBox* ObjectToolbar::AddList(ObjectControl control, const char* toolTip,
                                  std::span<const int> steps, const QString& format,
                                  void (*choose)(int)) {
  auto* const list = new QComboBox(this);
  list->setAccessibleName(toolTip);
  list->setToolTip(toolTip);
  list->setFocusPolicy(Qt::NoFocus);
  for (const int step : steps) list->addItem(format.arg(step), step);
  connect(list, &QComboBox::activated, this,
          [list, choose](int row) { choose(list->itemData(row).toInt()); });
  QAction* const action = addWidget(list);
  action->setToolTip(toolTip);
  action->setProperty("controlId", static_cast<int>(control));
  return list;
}

void ObjectToolbar::Press(ObjectControl control) {
  PressObjectControl(control);
  Refresh();
}

void ObjectToolbar::Refresh() {
  const QList<QAction*> all = actions();
  auto action = all.begin();
  for (const ButtonSpec& button : kButtons) {
    while ((*action)->isSeparator()) ++action;
    (*action)->setChecked(IsOn(button.control));
    (*action)->setEnabled(IsUsable(button));
    ++action;
  }
  gridSteps_->setCurrentIndex(gridSteps_->findData(objectStore.gridStep));
  turnSteps_->setCurrentIndex(turnSteps_->findData(objectStore.turnStep));
}

}  // namespace mw
