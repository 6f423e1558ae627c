// The toolbars of the three editing modes, of which one is shown above the 3D view.
#pragma once

#include <QStackedWidget>

#include "core/editor_state.h"

namespace mw {

class MaterialToolbar;
class ObjectToolbar;
class TerrainToolbar;

class ModeToolbars : public QStackedWidget {
 public:
  explicit ModeToolbars(QWidget* parent);

  void ShowMode(EditMode mode);
  TerrainToolbar* terrainToolbar() const { return terrainToolbar_; }
  MaterialToolbar* materialToolbar() const { return materialToolbar_; }
  ObjectToolbar* objectToolbar() const { return objectToolbar_; }

 private:
  TerrainToolbar* terrainToolbar_;
  MaterialToolbar* materialToolbar_;
  ObjectToolbar* objectToolbar_;
};

}  // namespace mw
