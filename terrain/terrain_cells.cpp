#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "core/camera.h"
#include "core/editor_state.h"
#include "data/mod_config.h"
#include "data/textures.h"
#include "terrain/cell_draw_list.h"
#include "terrain/gl_buffers.h"
#include "terrain/level_textures.h"
#include "terrain/terrain.h"
#include "terrain/terrain_buffers.h"
#include "terrain/terrain_passes.h"

namespace mw {
namespace {

using CellColour = std::array<float, 4>;

constexpr int kMaxTileBlocks = kMaxMaterialSize / kTileCells;  // per side of the grid
// Cells without a texture are grey; steep ones stand out in orange.
constexpr ByteColour kGrey{128, 128, 128, 255}, kOrange{255, 128, 0, 255};
constexpr CellColour kWhiteCell{1, 1, 1, 1};

// This is everything that decides what is drawn: while it stays the same, the list of the last
// frame is drawn again instead of being built anew.
struct CellScene {
  std::array<Plane, 6> frustum{};
  ViewSquare square;
  unsigned terrainVersion = 0;
  bool textured = false, grid = false, showSteep = false;
  bool relief = false;         // the vertices' colours multiply the textures
  CellColour textureColour{};  // multiplies them otherwise
  // These layers cover the square's blocks of 64 x 64 cells, which are counted from row 1 and
  // column 0.
  std::array<std::array<CellLayer, kMaxTileBlocks>, kMaxTileBlocks> blocks{};
  std::vector<Cell> brush;
  CellColour brushColour{};
  friend bool operator==(const CellScene&, const CellScene&) = default;
};

struct DrawnCells {
  CellScene scene;
  CellMap map;
  std::vector<CellLayer> layers;
  CellDrawList list;
  unsigned indexBuffer = 0;  // 0 before the first frame
};

// Both are a cache: the indices that were drawn last serve again while nothing changes, and the
// scene to compare with theirs has a place of its own so that no frame has to allocate.
CellScene wanted;
DrawnCells drawnCells;

// Returns the layer of the tile that covers a block of cells. Where the level has no tile it is
// that of "no surface", which repeats and so needs no origin.
CellLayer LayerOfBlock(int rowBlock, int columnBlock) {
  const int blockRow = terrain.tilesPerSide - rowBlock - 1;
  // Offsets come from the level's scripts and may be of any size.
  const auto row = std::int64_t{blockRow} - modConfig.TexOffsetX;
  const auto column = std::int64_t{columnBlock} - modConfig.TexOffsetY;
  CellLayer layer{.texture = textureSet.shared.noSurface,
                  .ownColour = !wanted.relief,
                  .colour = wanted.textureColour};
  if (row < 0 || column < 0 || row >= kMaxTiles || column >= kMaxTiles) return layer;
  const SurfaceTile& tile =
      levelTextures.tiles[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
  if (!tile.hasTexture) return layer;
  layer.texture = tile.texture;
  layer.originS = static_cast<float>(blockRow);
  layer.originT = static_cast<float>(columnBlock);
  return layer;
}

void FindBlockLayers() {
  for (auto& row : wanted.blocks) row.fill({});
  if (!wanted.textured) return;
  const ViewSquare& square = wanted.square;
  for (int i = square.ViewRowStart / kTileCells; i * kTileCells < square.ViewRowEnd; ++i) {
    for (int j = square.ViewColStart / kTileCells; j * kTileCells < square.ViewColEnd; ++j) {
      wanted.blocks[i][j] = LayerOfBlock(i, j);
    }
  }
}

const CellLayer& LayerOfCell(int i, int j) {
  return wanted.blocks[(i - 1) / kTileCells][j / kTileCells];
}

// Returns 1 + the layer's index, as the map of the cells holds it. The few tiles that fit into a
// view square leave room for all layers.
std::uint8_t LayerFor(const CellLayer& layer) {
  const auto found = std::find(drawnCells.layers.begin(), drawnCells.layers.end(), layer);
  const auto index =
      std::min<std::ptrdiff_t>(found - drawnCells.layers.begin(), kMaxCellLayers - 1);
  if (found == drawnCells.layers.end() && drawnCells.layers.size() < kMaxCellLayers)
    drawnCells.layers.push_back(layer);
  return static_cast<std::uint8_t>(index + 1);
}

void ChooseVisibleCells() {
  drawnCells.map.Reset();
  drawnCells.layers.clear();
  const CellLayer* last = nullptr;
  std::uint8_t lastIndex = 0;
  drawnCells.map.ChooseVisible([&](int i, int j) {
    const CellLayer& layer = LayerOfCell(i, j);
    if (&layer != last) {
      last = &layer;
      lastIndex = LayerFor(layer);
    }
    return lastIndex;
  });
  for (const auto [i, j] : wanted.brush) {
    if (wanted.showSteep && IsSteepCell(i, j)) continue;
    CellLayer layer = LayerOfCell(i, j);
    layer.ownColour = true;
    layer.colour = wanted.brushColour;
    drawnCells.map.Replace(i, j, LayerFor(layer));
  }
}

bool ShowsRelief() { return editor.ShowTextures && editor.ReliefShading; }

// Cells that have no texture show the given colours. With relief shading it is the textures that
// are multiplied, by shades of their colour.
CellColours ColoursOfCells(const CellColours& untextured, const CellColour& textureColour) {
  if (!ShowsRelief()) return untextured;
  ByteColour colour;
  std::transform(textureColour.begin(), textureColour.end(), colour.begin(),
                 [](float channel) { return static_cast<std::uint8_t>(channel * 255.0f + 0.5f); });
  return {.ground = colour, .steep = colour, .relief = true};
}

// Describes the frame as far as all modes have it in common.
void DescribeScene(const CellColour& textureColour) {
  wanted.frustum = camera.frustum;
  wanted.square = terrain.viewSquare;
  wanted.terrainVersion = TerrainBufferVersion();
  wanted.textured = editor.ShowTextures;
  wanted.relief = ShowsRelief();
  wanted.grid = editor.ShowGrid;
  wanted.showSteep = false;
  wanted.textureColour = textureColour;
  wanted.brush.clear();
  wanted.brushColour = {};
  FindBlockLayers();
}

void DrawScene() {
  if (!drawnCells.indexBuffer || wanted != drawnCells.scene) {
    ChooseVisibleCells();
    BuildCellDrawList(
        drawnCells.map,
        wanted.textured ? CellSplit::FarLeftToNearRight : CellSplit::FarRightToNearLeft,
        wanted.grid, drawnCells.list);
    UploadCellDrawList(drawnCells.list, drawnCells.indexBuffer);
    std::swap(wanted, drawnCells.scene);
  }
  DrawCellBatches(drawnCells.list, drawnCells.indexBuffer, drawnCells.layers,
                  drawnCells.scene.textured);
}

}  // namespace

void DrawTerrainCells() {
  if (!SyncTerrainBuffers(ColoursOfCells({kGrey, kOrange}, terrain.baseColour))) return;
  DescribeScene(terrain.baseColour);
  wanted.showSteep = !editor.ShowTextures;
  wanted.brush.assign(BrushCells().begin(), BrushCells().end());
  wanted.brushColour = BrushColour();
  DrawScene();
  if (terrain.tool == TerrainTool::PointManipulation) DrawPointMarkers(drawnCells.map);
}

void RenderPlainTerrain() {
  if (!SyncTerrainBuffers(ColoursOfCells({kGrey, kGrey}, kWhiteCell))) return;
  DescribeScene(kWhiteCell);
  DrawScene();
}

void ReleaseTerrainCells() {
  if (drawnCells.indexBuffer) glDeleteBuffers(1, &drawnCells.indexBuffer);
  drawnCells.indexBuffer = 0;
}

}  // namespace mw
