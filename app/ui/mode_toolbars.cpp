#include "app/ui/mode_toolbars.h"

#include <QAction>
#include <QActionGroup>
#include <QToolBar>
#include <span>
#include <string_view>

#include "app/operations.h"
#include "app/ui/qt_text.h"
#include "resources/pictures.h"
#include "terrain/ui/material_toolbar.h"
#include "terrain/ui/terrain_toolbar.h"

namespace mw {
namespace {

enum class Button { Separator, Toggle, Radio };

struct ButtonSpec {
  Button kind = Button::Separator;
  CommandId id = kCommandNone;
  std::string_view toolTip, icon;
  bool checked = false;
};

using enum Button;

constexpr ButtonSpec kObjectButtons[] = {
    {Toggle, kCommandShowStandardMeshes, "Show Standard Meshes", "show_standard_meshes", true},
    {Toggle, kCommandShowTreeMeshes, "Show Tree Meshes", "show_tree_meshes", true},
    {Toggle, kCommandShowObjectSpawns, "Show Object Spawns", "show_object_spawns", true},
    {Toggle, kCommandShowSoldierSpawns, "Show Soldier Spawns", "show_soldier_spawns", true},
    {Toggle, kCommandShowControlPoints, "Show Control Points", "show_control_points", true},
    {},
    {Radio, kCommandViewBoundingBox, "View As Bounding Box", "view_bounding_box"},
    {Radio, kCommandViewCollisionMesh, "View As Collision Mesh", "view_collision_mesh"},
    {Radio, kCommandViewDetailMesh, "View As Detail Mesh", "view_detail_mesh"},
    {Radio, kCommandViewTexturedMesh, "View As Textured Mesh", "view_textured_mesh", true},
    {},
    {Radio, kCommandSelectObjects, "Select Objects", "select_objects", true},
    {Radio, kCommandTranslateObjects, "Translate Objects", "translate_objects"},
    {Radio, kCommandRaiseLowerObjects, "Raise/Lower Objects", "raise_lower"},
    {Radio, kCommandRotateX, "Rotate Objects on X Axis", "rotate_x"},
    {Radio, kCommandRotateY, "Rotate Objects on Y Axis", "rotate_y"},
    {Radio, kCommandRotateZ, "Rotate Objects on Z Axis", "rotate_z"},
    {Radio, kCommandScaleWidth, "Scale Objects Width", "scale_width"},
    {Radio, kCommandScaleHeight, "Scale Objects Height", "scale_height"},
    {},
    {Toggle, kCommandSnapToGround, "Snap Objects to Ground", "snap_to_ground", true},
};

using Handler = std::function<void(CommandId)>;

// Radio buttons between two separators form a group.
QToolBar* MakeToolbar(QWidget* parent, const char* name, std::span<const ButtonSpec> buttons,
                      const Handler& handler) {
  auto* toolbar = new QToolBar(name, parent);
  toolbar->setObjectName(name);
  toolbar->setIconSize(QSize(16, 16));
  QActionGroup* group = nullptr;
  for (const ButtonSpec& button : buttons) {
    if (button.kind == Separator) {
      toolbar->addSeparator();
      group = nullptr;
      continue;
    }
    QAction* action = toolbar->addAction(Icon(FromText(button.icon)), FromText(button.toolTip));
    action->setToolTip(FromText(button.toolTip));
    action->setData(button.id);
    action->setProperty("controlId", static_cast<int>(button.id));
    action->setCheckable(true);
    if (button.kind == Radio) {
      if (!group) group = new QActionGroup(toolbar);
      group->addAction(action);
    }
    action->setChecked(button.checked);
    QObject::connect(action, &QAction::triggered, toolbar,
                     [handler, id = button.id] { handler(id); });
  }
  return toolbar;
}

}  // namespace

ModeToolbars::ModeToolbars(QWidget* parent)
    : QStackedWidget(parent),
      terrainToolbar_(new TerrainToolbar(this)),
      materialToolbar_(new MaterialToolbar(this)) {
  constexpr int kHeight = 32;
  setObjectName("modeToolbars");
  setFixedHeight(kHeight);
  // In the order of ShowMode.
  addWidget(terrainToolbar_);
  addWidget(materialToolbar_);
  addWidget(MakeToolbar(this, "Object Mapper Tools", kObjectButtons,
                        [](CommandId id) { operations.objectToolbarCommand(id); }));
}

void ModeToolbars::ShowMode(EditMode mode) {
  switch (mode) {
    case EditMode::TerrainMapper:
      terrainToolbar_->Refresh();
      setCurrentIndex(0);
      break;
    case EditMode::MaterialMapper:
      materialToolbar_->Refresh();
      setCurrentIndex(1);
      break;
    case EditMode::ObjectMapper:
      setCurrentIndex(2);
      break;
  }
}

QAction* ModeToolbars::Find(CommandId id) const {
  for (QAction* action : findChildren<QAction*>()) {
    if (action->data().toInt() == id && !action->isSeparator()) return action;
  }
  return nullptr;
}

}  // namespace mw
