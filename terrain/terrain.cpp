#include "terrain/terrain.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "core/camera.h"
#include "core/editor_state.h"
#include "core/hooks.h"
#include "core/little_endian.h"
#include "core/parallel.h"
#include "core/text.h"
#include "data/game_file.h"
#include "data/level_map.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "terrain/ground_history.h"
#include "terrain/height_image.h"
#include "terrain/mini_map_picture.h"
#include "terrain/terrain_render.h"

namespace mw {

namespace {

std::string HeightmapPath() { return FormatText("%s\\heightmap.raw", openLevel.folder.c_str()); }

std::uint8_t MiniMapGrey(float h) { return static_cast<std::uint8_t>(static_cast<int>(h)); }

// What setting every height one after the other leaves in the picture: each pixel shows the vertex
// of its block that comes last in file order, the smallest row of the largest column. Heights that
// the image holds are taken from there, where they lie close together: the whole height units are
// the upper byte.
void PaintMiniMap(std::span<const std::uint8_t> image) {
  const int size = modConfig.MaterialSize, block = size / kMiniMapSize;
  if (block == 0) return;
  for (int y = 1; y < kMiniMapSize; ++y) {
    for (int x = 1; x <= kMiniMapSize; ++x) {
      const int i = x * block, j = y * block + block - 1;
      const std::size_t upper = HeightImageOffset(size, i, j) + 1;
      terrain.miniMap.SetPixel(
          x, y, upper < image.size() ? image[upper] : MiniMapGrey(terrain.grid[i][j].h));
    }
  }
}

// Makes the samples of the height buffer flat that the gap holds, wholly or in part.
void FlattenSamples(const MemberGap& gap) {
  constexpr auto kFlatSample = static_cast<std::uint16_t>(kFlatHeight * kStoredPerUnit);
  for (std::size_t at = gap.begin / 2 * 2; at < gap.end; at += 2) {
    StoreU16(terrain.heightBuffer, at, kFlatSample);
  }
}

// Truncates a position to a whole cell; positions no integer can hold become the nearest that it
// can.
int WholeCell(float position) {
  constexpr float kLimit = 1e9f;
  const float cells = position / terrain.cellSize;
  if (std::isnan(cells)) return 0;
  return static_cast<int>(std::clamp(cells, -kLimit, kLimit));
}

}  // namespace

void CreateTerrain() {
  terrain = Terrain{};
  terrain.grid = VertexGrid::Zeroed();
}

void DestroyTerrain() { terrain.grid = {}; }

bool HasUsableSize() {
  return modConfig.MaterialSize >= 1 && modConfig.MaterialSize <= kMaxMaterialSize;
}

bool HasUsableTerrain() { return terrain.grid && HasUsableSize(); }

void InitGrid() {
  if (!HasUsableTerrain()) return;
  const int cellSize = modConfig.WorldSize / modConfig.MaterialSize;
  terrain.cellSize = static_cast<float>(cellSize);
  terrain.tilesPerSide = modConfig.MaterialSize / kTileCells;
  SpreadOverCores(kMaxMaterialSize + 1, [](std::size_t i) {
    for (std::size_t j = 0; j <= kMaxMaterialSize; ++j) {
      TerrainVertex& vertex = terrain.grid[i][j];
      vertex.x = static_cast<float>(i) * terrain.cellSize;
      vertex.h = kFlatHeight;
      vertex.z = static_cast<float>(j) * terrain.cellSize;
      vertex.selected = 0;
      vertex.weight = 0;
    }
  });
  terrain.selectionBox = SelectionBox{};
  terrain.roadPointCount = 0;
  MarkAllTerrainChanged();
}

bool LoadHeightBuffer() {
  terrain.heightBuffer.clear();
  if (!HasUsableSize()) return false;
  const auto side = static_cast<std::size_t>(modConfig.MaterialSize);
  auto map = LoadLevelMap(LevelPart::HeightMap, HeightmapPath(), side,
                          HeightImageBytes(modConfig.MaterialSize) / side);
  if (!map) return false;
  terrain.heightBuffer = std::move(map->data);
  for (const MemberGap& gap : map->gaps) FlattenSamples(gap);
  return true;
}

void LoadHeightsFromBuffer() {
  if (!HasUsableTerrain()) return;
  ImageToHeights(terrain.heightBuffer, modConfig.MaterialSize, terrain.grid);
  PaintMiniMap(terrain.heightBuffer);
  MarkAllTerrainChanged();
  hooks.invalidateMiniMap();
}

void SetHeight(int i, int j, float h) {
  if (!terrain.grid || i < 0 || j < 0 || i >= kGridCapacity || j >= kGridCapacity) return;
  h = std::max(0.0f, std::min(h, kMaxHeight));  // what is not a number becomes 0
  KeepHeight(i, j);
  terrain.grid[i][j].h = h;
  ShowOnMiniMap(i, j);
  MarkTerrainChanged(i, j, i, j);
}

void ShowOnMiniMap(int i, int j) {
  const int block = modConfig.MaterialSize / kMiniMapSize;
  if (block > 0) terrain.miniMap.SetPixel(i / block, j / block, MiniMapGrey(terrain.grid[i][j].h));
}

void ShowAllOnMiniMap() {
  if (HasUsableTerrain()) PaintMiniMap({});
}

float AverageOfNeighbours(int i, int j) {
  const auto& grid = terrain.grid;
  float sum = 0;
  int count = 0;
  const auto add = [&](int row, int column) { sum += grid[row][column].h, ++count; };
  if (i + 1 <= modConfig.MaterialSize) add(i + 1, j);
  if (j + 1 < modConfig.MaterialSize) add(i, j + 1);
  if (i - 1 > 0) add(i - 1, j);
  if (j - 1 >= 0) add(i, j - 1);
  return count > 0 ? sum / static_cast<float>(count) : grid[i][j].h;
}

bool StoreHeightsInBuffer() {
  if (!HasUsableTerrain()) return false;
  terrain.heightBuffer.resize(HeightImageBytes(modConfig.MaterialSize));
  HeightsToImage(terrain.grid, modConfig.MaterialSize, terrain.heightBuffer);
  return true;
}

bool SaveHeightmap() {
  return StoreHeightsInBuffer() && SaveGameFileBytes(HeightmapPath(), terrain.heightBuffer);
}

float HeightAt(float x, float z) {
  const auto [i, j] = CellOf(static_cast<float>(modConfig.WorldSize) - x, z);
  if (!HasUsableTerrain()) return 0;
  if (i < 0 || j < 0 || i >= modConfig.MaterialSize || j >= modConfig.MaterialSize) return 0;
  return modConfig.HeightScale * DrawnHeight(i, j);
}

Cell CellOf(float x, float z) { return {WholeCell(x), WholeCell(z)}; }

float DrawnHeight(int i, int j) {
  return terrain.grid[i == 0 ? modConfig.MaterialSize : i][j == modConfig.MaterialSize ? 0 : j].h;
}

float HeightUnderCamera(float above) {
  if (!HasUsableTerrain()) return 0;
  const auto [i, j] = CellOf(camera.position.x, camera.position.z);
  const int row = std::clamp(i, 0, modConfig.MaterialSize);
  const int column = std::clamp(j, 0, modConfig.MaterialSize);
  return (DrawnHeight(row, column) + above) * modConfig.HeightScale;
}

}  // namespace mw
