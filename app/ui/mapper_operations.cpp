#include "app/ui/mapper_operations.h"

#include "app/light_map_commands.h"
#include "app/operations.h"
#include "app/shell.h"
#include "app/ui/main_window.h"
#include "platform/clock.h"
#include "terrain/brush_stroke.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"
#include "terrain/point_selection.h"
#include "terrain/terrain_tools.h"
#include "terrain/ui/material_toolbar.h"
#include "terrain/ui/shadow_dialog.h"
#include "terrain/ui/surface_assignments_dialog.h"
#include "terrain/ui/terrain_toolbar.h"

namespace mw {

void ConnectTerrainTools(TerrainToolbar& toolbar) {
  operations.pickUnderCursor = PickUnderCursor;
  operations.pressBrush = [] { PressBrush(MillisecondsNow()); };
  operations.moveBrush = MoveBrush;
  operations.holdBrush = [] { HoldBrush(MillisecondsNow()); };
  operations.releaseBrush = [] { ReleaseBrush(MillisecondsNow()); };
  operations.liftBrush = [] {
    LiftBrush();
    LiftMaterialBrush();
  };
  operations.toggleVertex = ToggleVertexUnderCursor;
  operations.startSelecting = StartSelecting;
  operations.selectOnTheWay = SelectOnTheWayTo;
  operations.moveSelection = MoveSelection;
  operations.clearSelection = ClearSelection;
  operations.selectRectangle = SelectRectangle;
  operations.terrainToolbarCommand = [&toolbar](CommandId id) {
    toolbar.Press(static_cast<TerrainControl>(id));
  };
  operations.setTerrainBrushSize = [&toolbar](int size) { toolbar.ChooseBrushSize(size); };
  operations.setTerrainPower = [&toolbar](int power) { toolbar.ChoosePower(power); };
}

void ConnectMaterialTools(MaterialToolbar& toolbar) {
  operations.renderMaterialMode = RenderMaterialMode;
  operations.pickMaterialPoint = PickMaterialPoint;
  operations.startPainting = StartPainting;
  operations.stopPainting = StopPainting;
  operations.setMaterialBrushSize = [&toolbar](int size) { toolbar.ChooseBrushSize(size); };
  operations.currentMaterial = [] {
    return materialMapper ? static_cast<int>(materialMapper->currentMaterial) : 0;
  };
}

void ConnectSurfaceDialogs(MainWindow& window) {
  operations.openSurfaceAssignments = [&window] {
    SurfaceAssignmentsDialog(&window, shell.renderFrameNow);
  };
  ConnectLightMapCommands([&window] { return ShadowDialog(&window); });
}

}  // namespace mw
