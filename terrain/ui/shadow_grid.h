// The tile grid of the Generate Terrain Shadows dialog: a click selects a tile for tracing.
#pragma once

#include "terrain/ui/surface_grid.h"

namespace mw {

class ShadowGrid : public SurfaceGrid {
  Q_OBJECT

 public:
  explicit ShadowGrid(QWidget* parent = nullptr);

 protected:
  bool Toggle(int column, int row) override;
  bool IsMarked(int column, int row) const override;
  QString Description() const override;
};

}  // namespace mw
