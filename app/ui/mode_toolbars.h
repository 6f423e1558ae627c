// The toolbars of the three editing modes, of which one is shown above the 3D view.
#pragma once

#include <QStackedWidget>

#include "app/command_ids.h"
#include "core/editor_state.h"

class QAction;

namespace mw {

class MaterialToolbar;
class ObjectToolbar;
class TerrainToolbar;

class ModeToolbars : public QStackedWidget {
 public:
  explicit ModeToolbars(QWidget* parent);

  void ShowMode(EditMode mode);
  // The button's action, or null. Its `data` is the command.
  QAction* Find(CommandId id) const;
  TerrainToolbar* terrainToolbar() const { return terrainToolbar_; }
  MaterialToolbar* materialToolbar() const { return materialToolbar_; }
  ObjectToolbar* objectToolbar() const { return objectToolbar_; }

 private:
  TerrainToolbar* terrainToolbar_;
  MaterialToolbar* materialToolbar_;
  ObjectToolbar* objectToolbar_;
};

}  // namespace mw
