#include "terrain/ui/shadow_grid.h"

#include "terrain/shadow_work.h"

namespace mw {

ShadowGrid::ShadowGrid(QWidget* parent) : SurfaceGrid(parent) { Refresh(); }

bool ShadowGrid::Toggle(int column, int row) { return ToggleShadowSelection(column, row); }

bool ShadowGrid::IsMarked(int column, int row) const { return IsShadowSelected(column, row); }

QString ShadowGrid::Description() const { return QString::fromStdString(DescribeTilesToTrace()); }

}  // namespace mw
