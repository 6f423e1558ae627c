#include "terrain/ui/material_toolbar.h"

#include <QAction>
#include <QComboBox>
#include <QSignalBlocker>

#include "resources/pictures.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"

namespace mw {
namespace {

constexpr int kBrushListWidth = 40, kMaterialListWidth = 150;

enum class MaterialControl : int {
  Fill = 3000,
  BrushSize = 3001,
  Material = 3002,
  SurfaceView = 3004
};

QAction* AddButton(QToolBar* toolbar, MaterialControl control, const char* toolTip,
                   const char* icon) {
  QAction* action = toolbar->addAction(Icon(icon), toolTip);
  action->setToolTip(toolTip);
  action->setData(static_cast<int>(control));
  action->setProperty("controlId", static_cast<int>(control));
  return action;
}

// It takes no keyboard focus: keys are the 3D view's.
QComboBox* MakeList(QWidget* parent, MaterialControl control, const char* objectName,
                    const char* toolTip, const QStringList& entries, int width) {
  auto* list = new QComboBox(parent);
  list->setObjectName(objectName);
  list->setProperty("controlId", static_cast<int>(control));
  list->setAccessibleName(toolTip);
  list->setToolTip(toolTip);
  list->addItems(entries);
  list->setMaxVisibleItems(static_cast<int>(entries.size()));
  list->setFixedWidth(width);
  list->setFocusPolicy(Qt::NoFocus);
  return list;
}

QStringList BrushSizes() {
  QStringList sizes;
  for (int size = 1; size <= kMaxMaterialBrushSize; ++size) sizes << QString::number(size);
  return sizes;
}

QStringList MaterialNames() { return {kMaterialNames.begin(), kMaterialNames.end()}; }

// Shows a setting without sending it.
void Show(QComboBox* list, std::uint32_t index) {
  const QSignalBlocker quiet(list);
  list->setCurrentIndex(static_cast<int>(index));
}

}  // namespace

MaterialToolbar::MaterialToolbar(QWidget* parent) : QToolBar("Material Mapper Tools", parent) {
  setObjectName("Material Mapper Tools");
  setIconSize(kIconSize);
  addSeparator();
  QAction* fill = AddButton(this, MaterialControl::Fill, "Fill With Material", "fill_material");
  connect(fill, &QAction::triggered, this, FillWithMaterial);
  AddLists();
  addSeparator();
  surfaceView_ =
      AddButton(this, MaterialControl::SurfaceView, "Toggle Surface View", "surface_view");
  surfaceView_->setCheckable(true);
  connect(surfaceView_, &QAction::triggered, this, [this] {
    ToggleSurfaceView();
    Refresh();
  });
  Refresh();
}

void MaterialToolbar::AddLists() {
  brushSize_ = MakeList(this, MaterialControl::BrushSize, "materialBrushSize", "Brush Size",
                        BrushSizes(), kBrushListWidth);
  material_ = MakeList(this, MaterialControl::Material, "material", "Material", MaterialNames(),
                       kMaterialListWidth);
  addWidget(brushSize_);
  addWidget(material_);
  connect(brushSize_, &QComboBox::currentIndexChanged, this,
          [](int index) { SetMaterialBrushSize(index + 1); });
  connect(material_, &QComboBox::currentIndexChanged, this, SetCurrentMaterial);
}

void MaterialToolbar::Refresh() {
  if (!materialMapper) return;
  Show(brushSize_, materialMapper->brushSize - 1);
  Show(material_, materialMapper->currentMaterial);
  surfaceView_->setChecked(materialMapper->SurfaceView);
}

}  // namespace mw
