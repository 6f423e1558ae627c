#include "app/ui/mode_toolbars.h"

#include "objects/ui/object_toolbar.h"
#include "terrain/ui/material_toolbar.h"
#include "terrain/ui/terrain_toolbar.h"

namespace mw {

ModeToolbars::ModeToolbars(QWidget* parent)
    : QStackedWidget(parent),
      terrainToolbar_(new TerrainToolbar(this)),
      materialToolbar_(new MaterialToolbar(this)),
      objectToolbar_(new ObjectToolbar(this)) {
  constexpr int kHeight = 32;
  setObjectName("modeToolbars");
  setFixedHeight(kHeight);
  addWidget(terrainToolbar_);
  addWidget(materialToolbar_);
  addWidget(objectToolbar_);
}

void ModeToolbars::ShowMode(EditMode mode) {
  switch (mode) {
    case EditMode::TerrainMapper:
      terrainToolbar_->Refresh();
      setCurrentWidget(terrainToolbar_);
      break;
    case EditMode::MaterialMapper:
      materialToolbar_->Refresh();
      setCurrentWidget(materialToolbar_);
      break;
    case EditMode::ObjectMapper:
      objectToolbar_->Refresh();
      setCurrentWidget(objectToolbar_);
      break;
  }
}

}  // namespace mw
