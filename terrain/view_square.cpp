#include <algorithm>
#include <cmath>

#include "core/camera.h"
#include "core/editor_state.h"
#include "data/mod_config.h"
#include "terrain/ground_ray.h"
#include "terrain/terrain.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_render.h"

namespace mw {

namespace {

constexpr float kEyeHeight = 3.0f;  // height units above the ground in the on-terrain mode

struct Range {
  int start, end;
};

// The cells of one axis around a position, limited to the grid; empty when it lies too far outside.
Range CellsAround(float position) {
  constexpr float kHalf = kViewSquareCells / 2;
  constexpr float kFarOutside = 1e6f;
  float cells = position / terrain.cellSize;
  if (std::isnan(cells)) cells = 0;
  cells = std::clamp(cells, -kFarOutside, kFarOutside);
  return {std::max(static_cast<int>(cells - kHalf), 0),
          std::min({static_cast<int>(cells + kHalf), modConfig.MaterialSize, kMaxMaterialSize})};
}

}  // namespace

void SetTerrainBaseColour(int r, int g, int b, int a) {
  int channel = 0;
  for (const int value : {r, g, b, a})
    terrain.baseColour[channel++] = static_cast<float>(value) / 255.0f;
}

void UpdateViewSquare() {
  const Range rows = CellsAround(camera.position.x), columns = CellsAround(camera.position.z);
  terrain.viewSquare = {rows.start, rows.end, columns.start, columns.end};
  // On the slopes as they are drawn, not from step to step of the cells.
  if (editor.cameraMode == CameraMode::OnTerrain) {
    camera.position.y = DrawnGroundHeight(camera.position.x, camera.position.z) +
                        kEyeHeight * modConfig.HeightScale;
  }
}

}  // namespace mw
