// The Terrain Mapper's toolbar: its tools, and the settings that the chosen one heeds. What its
// buttons do comes from keys, too; the toolbar then shows the new state.
#pragma once

#include <QToolBar>

#include "terrain/terrain_controls.h"

class QComboBox;
class QSlider;

namespace mw {

class TerrainToolbar : public QToolBar {
 public:
  explicit TerrainToolbar(QWidget* parent);

  // What a click on the button does.
  void Press(TerrainControl button);
  // Shows the tool and the settings that the terrain has now.
  void Refresh();

 private:
  void AddButtons();
  void AddSettings();
  QAction* Button(TerrainControl button) const;

  QComboBox* smoothingRange_ = nullptr;
  QComboBox* brushSize_ = nullptr;
  QComboBox* brushEdge_ = nullptr;
  QSlider* power_ = nullptr;
};

}  // namespace mw
