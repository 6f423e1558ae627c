#include "terrain/terrain.h"

#include <algorithm>
#include <cmath>

#include "core/camera.h"
#include "core/editor_state.h"
#include "core/hooks.h"
#include "core/mini_map_picture.h"
#include "core/parallel.h"
#include "core/text.h"
#include "data/game_file.h"
#include "data/mod_config.h"
#include "terrain/terrain_render.h"

namespace mw {

std::unique_ptr<Terrain> terrain;
float CellSize = 1;
int TilesPerSide = 0;
SelectionBox selectionBox;
std::vector<std::uint8_t> heightBuffer;
std::size_t heightBufferFilled = 0;

namespace {

constexpr float kStoredPerUnit = 256.0f;  // steps of heightmap.raw per height unit
constexpr float kMaxStored = 65535;
constexpr std::size_t kBytesPerSample = 2;

std::size_t HeightmapBytes() {
  const auto side = static_cast<std::size_t>(modConfig.MaterialSize);
  return side * side * kBytesPerSample;
}

// Where the sample of grid vertex (i, j) lies in the file image.
std::size_t FileOffset(int i, int j) {
  const auto side = static_cast<std::size_t>(modConfig.MaterialSize);
  return (static_cast<std::size_t>(j) * side + side - static_cast<std::size_t>(i)) *
         kBytesPerSample;
}

// Calls act(i, j) for every vertex with data, on several cores. Rows of the grid are columns of the
// file: in narrow bands of rows, in the order of the file, neither leaves memory that was fetched
// before it is used up.
template <typename Act>
void ForEachSample(Act act) {
  constexpr int kBand = 32;
  const int size = modConfig.MaterialSize;
  SpreadOverCores(static_cast<std::size_t>((size + kBand - 1) / kBand), [&](std::size_t band) {
    const int firstRow = 1 + static_cast<int>(band) * kBand;
    const int lastRow = std::min(firstRow + kBand - 1, size);
    for (int j = 0; j < size; ++j) {
      for (int i = lastRow; i >= firstRow; --i) act(i, j);
    }
  });
}

std::string HeightmapPath() { return FormatText("%s\\heightmap.raw", editor.levelFolder.c_str()); }

std::uint8_t MiniMapGrey(float h) { return static_cast<std::uint8_t>(static_cast<int>(h)); }

// What setting every height one after the other leaves in the picture: each pixel shows the vertex
// of its block that comes last in file order, the smallest row of the largest column.
void PaintMiniMap() {
  const int block = modConfig.MaterialSize / kMiniMapSize;
  if (block == 0) return;
  for (int x = 1; x <= kMiniMapSize; ++x) {
    for (int y = 1; y < kMiniMapSize; ++y) {
      SetMiniMapPixel(x, y, MiniMapGrey(terrain->grid[x * block][y * block + block - 1].h));
    }
  }
}

// Truncates a position to a whole cell; positions no integer can hold become the nearest that it
// can.
int WholeCell(float position) {
  constexpr float kLimit = 1e9f;
  const float cells = position / CellSize;
  if (std::isnan(cells)) return 0;
  return static_cast<int>(std::clamp(cells, -kLimit, kLimit));
}

}  // namespace

void CreateTerrain() { terrain = std::make_unique<Terrain>(); }

void DestroyTerrain() { terrain.reset(); }

bool HasUsableSize() {
  return modConfig.MaterialSize >= 1 && modConfig.MaterialSize <= kMaxMaterialSize;
}

bool HasUsableTerrain() { return terrain && HasUsableSize(); }

void InitGrid() {
  if (!HasUsableTerrain()) return;
  const int cellSize = modConfig.WorldSize / modConfig.MaterialSize;
  CellSize = static_cast<float>(cellSize);
  TilesPerSide = modConfig.MaterialSize / kTileCells;
  for (int i = 0; i <= kMaxMaterialSize; ++i) {
    for (int j = 0; j <= kMaxMaterialSize; ++j) {
      TerrainVertex& vertex = terrain->grid[i][j];
      vertex.x = static_cast<float>(i) * CellSize;
      vertex.h = kFlatHeight;
      vertex.z = static_cast<float>(j) * CellSize;
      vertex.selected = 0;
      vertex.weight = 0;
    }
  }
  selectionBox = SelectionBox{};
  terrain->roadPointCount = 0;
  MarkAllTerrainChanged();
}

bool LoadHeightBuffer() {
  heightBuffer.clear();
  heightBufferFilled = 0;
  if (!HasUsableSize()) return false;
  auto bytes = LoadGameFileBytes(HeightmapPath(), HeightmapBytes(), &heightBufferFilled);
  if (!bytes) {
    heightBufferFilled = 0;
    return false;
  }
  heightBuffer = std::move(*bytes);
  return true;
}

void LoadHeightsFromBuffer() {
  if (!HasUsableTerrain()) return;
  const std::size_t filled = std::min(heightBufferFilled, heightBuffer.size());
  ForEachSample([filled, file = heightBuffer.data(), grid = terrain->grid.data()](int i, int j) {
    const std::size_t offset = FileOffset(i, j);
    if (offset + kBytesPerSample > filled) return;
    const int stored = file[offset] + 256 * file[offset + 1];
    grid[i][static_cast<std::size_t>(j)].h = static_cast<float>(stored) / kStoredPerUnit;
  });
  PaintMiniMap();
  MarkAllTerrainChanged();
  hooks.invalidateMiniMap();
}

void SetHeight(int i, int j, float h) {
  if (!terrain || i < 0 || j < 0 || i >= kGridCapacity || j >= kGridCapacity) return;
  h = std::max(0.0f, std::min(h, kMaxHeight));  // what is not a number becomes 0
  terrain->grid[i][j].h = h;
  ShowOnMiniMap(i, j);
  MarkTerrainChanged(i, j, i, j);
}

void ShowOnMiniMap(int i, int j) {
  const int block = modConfig.MaterialSize / kMiniMapSize;
  if (block > 0) SetMiniMapPixel(i / block, j / block, MiniMapGrey(terrain->grid[i][j].h));
}

float AverageOfNeighbours(int i, int j) {
  const auto& grid = terrain->grid;
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
  heightBuffer.resize(HeightmapBytes());
  heightBufferFilled = heightBuffer.size();
  ForEachSample([file = heightBuffer.data(), grid = terrain->grid.data()](int i, int j) {
    const float scaled = grid[i][static_cast<std::size_t>(j)].h * kStoredPerUnit;
    const int stored = static_cast<int>(std::max(0.0f, std::min(scaled, kMaxStored)));
    const std::size_t offset = FileOffset(i, j);
    file[offset] = static_cast<std::uint8_t>(stored & 0xFF);
    file[offset + 1] = static_cast<std::uint8_t>(stored >> 8);
  });
  return true;
}

void SaveHeightmap() {
  if (StoreHeightsInBuffer()) SaveGameFileBytes(HeightmapPath(), heightBuffer);
}

float HeightAt(float x, float z) {
  const auto [i, j] = CellOf(static_cast<float>(modConfig.WorldSize) - x, z);
  if (!HasUsableTerrain()) return 0;
  if (i < 0 || j < 0 || i >= modConfig.MaterialSize || j >= modConfig.MaterialSize) return 0;
  return modConfig.HeightScale * terrain->grid[i][j].h;
}

Cell CellOf(float x, float z) { return {WholeCell(x), WholeCell(z)}; }

float DrawnHeight(int i, int j) {
  return terrain->grid[i == 0 ? modConfig.MaterialSize : i][j == modConfig.MaterialSize ? 0 : j].h;
}

float HeightUnderCamera(float above) {
  if (!HasUsableTerrain()) return 0;
  const auto [i, j] = CellOf(camera.position.x, camera.position.z);
  const int row = std::clamp(i, 0, modConfig.MaterialSize);
  const int column = std::clamp(j, 0, modConfig.MaterialSize);
  return (DrawnHeight(row, column) + above) * modConfig.HeightScale;
}

}  // namespace mw
