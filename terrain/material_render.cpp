#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "core/camera.h"
#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "data/textures.h"
#include "terrain/cell_draw_list.h"
#include "terrain/gl_buffers.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"
#include "terrain/terrain.h"
#include "terrain/terrain_buffers.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_render.h"

namespace mw {
namespace {

constexpr int kCellsPerSurfaceRepeat = 16;

// Each material has a layer, and behind those of all another one for its cells under the brush.
using MaterialLayers = std::array<CellLayer, 2 * kMaterialCount>;
static_assert(MaterialLayers{}.size() <= kMaxCellLayers);

struct BrushCell {
  int i = 0, j = 0;
  std::uint8_t layer = 0;
  friend bool operator==(const BrushCell&, const BrushCell&) = default;
};

// This is everything but brush and painting that decides which cells are drawn and with which
// layer. While it stays the same only the cells of those two are looked at, so that a stroke costs
// little.
struct MaterialScene {
  std::array<Plane, 6> frustum{};
  ViewSquare square;
  unsigned terrainVersion = 0, materialEdits = 0;
  bool grid = false;
  friend bool operator==(const MaterialScene&, const MaterialScene&) = default;
};

struct DrawnMaterials {
  MaterialScene scene;
  std::vector<BrushCell> brush;
  CellMap map;
  CellDrawList list;
  unsigned indexBuffer = 0;  // 0 before the first frame
};

// Both are a cache: what GL holds of the last frame serves again while nothing changes, and the
// brush to compare with it has a place of its own so that no frame has to allocate.
DrawnMaterials drawnMaterials;
std::vector<BrushCell> wantedBrush;

std::uint8_t GroundLayer(int i, int j) {
  return static_cast<std::uint8_t>(ShownMaterial(i, j) + 1);
}

void FindBrushLayers() {
  wantedBrush.clear();
  for (const auto [i, j] : MaterialBrushCells()) {
    const int layer = GroundLayer(i, j) + kMaterialCount;
    wantedBrush.push_back({i, j, static_cast<std::uint8_t>(layer)});
  }
}

// Each cell shows the whole icon, whose first coordinate runs against the rows. The vertices' own
// coordinates count surface tiles, and the pictures repeat.
CellLayer IconLayer(std::size_t material) {
  return {.texture = textureSet.shared.materials[material], .repeats = kTileCells};
}

// The pictures of the texture set lie one column off the tiles.
CellLayer SurfaceLayer(std::size_t material) {
  return {.texture = textureSet.textures[material].texture,
          .repeats = static_cast<float>(kTileCells) / kCellsPerSurfaceRepeat,
          .originT = 1.0f / kCellsPerSurfaceRepeat};
}

MaterialLayers FindLayers() {
  MaterialLayers layers;
  for (std::size_t material = 0; material < kMaterialCount; ++material) {
    CellLayer layer = materialMapper->SurfaceView ? SurfaceLayer(material) : IconLayer(material);
    layer.ownColour = true;
    layer.colour = {1, 1, 1, 1};
    layers[material] = layer;
    layer.colour = {1, 0, 0, 1};
    layers[material + kMaterialCount] = layer;
  }
  return layers;
}

void ChooseAllCells() {
  drawnMaterials.map.Reset();
  drawnMaterials.map.ChooseVisible(GroundLayer);
}

// Shows what was painted, and the ground again where the brush was.
void ShowGround(const std::vector<Cell>& painted) {
  for (const Cell& cell : painted)
    drawnMaterials.map.Replace(cell.i, cell.j, GroundLayer(cell.i, cell.j));
  for (const BrushCell& cell : drawnMaterials.brush)
    drawnMaterials.map.Replace(cell.i, cell.j, GroundLayer(cell.i, cell.j));
}

void CoverWithBrush() {
  for (const BrushCell& cell : wantedBrush) drawnMaterials.map.Replace(cell.i, cell.j, cell.layer);
  std::swap(drawnMaterials.brush, wantedBrush);
}

void UpdateDrawnCells() {
  const MaterialScene scene{camera.frustum, terrain.viewSquare, TerrainBufferVersion(),
                            materialMapper->edits, editor.ShowGrid};
  FindBrushLayers();
  const std::vector<Cell> painted = TakePaintedCells();
  const bool sceneChanged = !drawnMaterials.indexBuffer || scene != drawnMaterials.scene;
  if (!sceneChanged && painted.empty() && wantedBrush == drawnMaterials.brush) return;
  if (sceneChanged)
    ChooseAllCells();
  else
    ShowGround(painted);
  CoverWithBrush();
  drawnMaterials.scene = scene;
  BuildCellDrawList(drawnMaterials.map, CellSplit::FarLeftToNearRight, scene.grid,
                    drawnMaterials.list);
  UploadCellDrawList(drawnMaterials.list, drawnMaterials.indexBuffer);
}

}  // namespace

void DrawMaterialCells() {
  if (!SyncTerrainBuffers({})) return;
  UpdateDrawnCells();
  DrawCellBatches(drawnMaterials.list, drawnMaterials.indexBuffer, FindLayers(), true);
}

void ReleaseMaterialCells() {
  if (drawnMaterials.indexBuffer) glDeleteBuffers(1, &drawnMaterials.indexBuffer);
  drawnMaterials.indexBuffer = 0;
}

void RenderMaterialMode() {
  if (!materialMapper || !HasUsableTerrain()) return;
  materialMapper->materialCellSize =
      static_cast<float>(modConfig.WorldSize) / static_cast<float>(modConfig.MaterialSize);
  UpdateViewSquare();
  UpdateMaterialBrush();
  DrawMaterialCells();
  glLineWidth(kGridLineWidth);
  glColor4f(1, 1, 1, 1);
  if (editor.drawObjectsInMappers) hooks.drawStaticObjects();
  RenderWaterOverGround();
  glLineWidth(1);
}

}  // namespace mw
