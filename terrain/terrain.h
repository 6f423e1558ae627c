// The height field of the level: MaterialSize x MaterialSize samples over WorldSize x WorldSize
// units, and the state of the terrain tools, which the renderer reads together with it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "core/history.h"
#include "core/large_memory.h"
#include "core/vector3.h"
#include "data/mod_config.h"
#include "terrain/level_textures.h"
#include "terrain/mini_map_picture.h"

namespace mw {

inline constexpr int kGridCapacity = 1033;    // records per row and rows of the grid
inline constexpr int kTileCells = 64;         // cells per side of a surface tile
inline constexpr float kMaxHeight = 256.0f;   // height units
inline constexpr float kFlatHeight = 127.0f;  // of a grid that was never loaded
inline constexpr int kMaxRoadPoints = 32;

// The layout is a binary interface: plug-in modules get the grid whole.
struct TerrainVertex {
  float x;  // world x: row x cellSize
  float h;  // height units, 0 ... 256
  float z;  // world z: column x cellSize
  std::uint32_t reserved0;
  std::uint8_t selected;
  std::uint8_t reserved1[3];
  float weight;  // auto-smoothing weight, 0 = not smoothed
  std::uint32_t reserved2[2];
};
static_assert(sizeof(TerrainVertex) == 32 && offsetof(TerrainVertex, h) == 4 &&
              offsetof(TerrainVertex, z) == 8 && offsetof(TerrainVertex, selected) == 16 &&
              offsetof(TerrainVertex, weight) == 20);

enum class TerrainTool : std::int32_t {
  PointManipulation = 0,
  Carving = 1,
  Raising = 2,
  Smoothing = 3,
  Flatten = 4,
  Road = 5
};

// How the brush of the sculpting tools ends: at once, or fading from its core to its edge.
enum class BrushEdge : std::int32_t { Hard = 0, Smooth = 1, Linear = 2 };

struct RoadPoint {
  float x = 0, h = 0, z = 0;  // x and z in world units, h in height units
};

// A value for each vertex or cell of the largest level. One that was not made Zeroed has no rows.
template <typename T>
class LargeGrid {
 public:
  using Row = std::array<T, kGridCapacity>;

  static LargeGrid Zeroed() {
    LargeGrid made;
    made.rows_ = MakeZeroedArray<Row>(kGridCapacity);
    return made;
  }
  explicit operator bool() const { return rows_ != nullptr; }
  Row& operator[](std::size_t row) { return rows_[row]; }
  const Row& operator[](std::size_t row) const { return rows_[row]; }
  Row* begin() { return rows_.get(); }
  Row* end() { return begin() + (rows_ ? kGridCapacity : 0); }

 private:
  LargeArray<Row> rows_;
};

// The vertices of the height field; none before the view is created. Data rows are 1 ...
// MaterialSize, data columns 0 ... MaterialSize - 1. Row 0 and column MaterialSize are drawn with
// the heights of row MaterialSize and column 0 (the field wraps at its seams).
using VertexGrid = LargeGrid<TerrainVertex>;

struct Cell {
  int i = 0, j = 0;
  friend bool operator==(const Cell&, const Cell&) = default;
};

// Bounds of the selected vertices and their smoothing neighbourhood.
struct SelectionBox {
  int SelMinRow = 1000, SelMaxRow = 0, SelMinCol = 1000, SelMaxCol = 0;
};

// The point of the ground under the cursor, in world units; `missed` when there is none, and the
// point, if it ever was one, is that of an earlier place.
struct PickState {
  float x = 0, y = 0, z = 0;
  bool missed = true;
};

// What a stroke of the Flatten tool with an edge that fades has done to a vertex, so that holding
// the button longer does not do more.
struct FadedVertex {
  float height;    // before the stroke, height units
  float strength;  // 0 ... 1, the greatest that the brush had there
};

// What the held button makes of the mouse's moves: the picks that the brush has still to go along,
// from that where it acted last, and the time that it has for it.
struct BrushStroke {
  bool isHeld = false;
  std::vector<Vector3> picks;
  float dueSeconds = 0;            // below 0: done in advance
  std::uint32_t countedUntil = 0;  // milliseconds
  HeldStep step;
  std::unordered_map<int, FadedVertex> faded;  // by row x kGridCapacity + column
};

struct VertexBlock {
  int firstRow, lastRow, firstColumn, lastColumn;
};

// The part of a grid that was kept last for the open step (terrain/ground_history.h), lest every
// vertex of a brush asks again.
struct LastKept {
  unsigned moment = 0;  // of the history
  VertexBlock block{0, -1, 0, -1};
};

// Rows and columns drawn, around the camera.
struct ViewSquare {
  int ViewRowStart = 0, ViewRowEnd = 0, ViewColStart = 0, ViewColEnd = 0;
  friend bool operator==(const ViewSquare&, const ViewSquare&) = default;
};

struct Terrain {
  VertexGrid grid;
  float cellSize = 1;    // world units; with tilesPerSide derived from ModConfig by InitGrid
  int tilesPerSide = 0;  // surface tiles
  // The raw file image of heightmap.raw, 2 bytes per sample; flat where the file cannot be read or
  // ends early.
  std::vector<std::uint8_t> heightBuffer;
  MiniMapPicture miniMap;

  TerrainTool tool = TerrainTool::PointManipulation;
  std::int32_t brushSize = 1;  // cells
  BrushEdge brushEdge = BrushEdge::Hard;
  float power = 3.0f;            // height units per second
  float flattenHeight = 127.0f;  // height units
  std::uint8_t flattenSampled = 0;
  std::uint8_t autoSmoothing = 1;
  float smoothingRange = 6.0f;  // cells
  std::int32_t roadPointCount = 0;
  std::int32_t roadWidth = 1, roadMaterial = 1;
  std::uint8_t roadAutoMaterial = 0;
  std::array<RoadPoint, kMaxRoadPoints> roadPoints{};

  PickState pick;
  BrushStroke stroke;
  std::vector<Cell> flattenCells;  // in the brush of the Flatten tool
  LastKept keptHeights, keptMaterials;
  SelectionBox selectionBox;
  // Where the mouse selected last while the button was held; nothing when there was no ground.
  std::optional<Vector3> lastSelected;
  ShadowSettings shadowSettings;

  ViewSquare viewSquare;                        // set at the start of each terrain pass
  std::array<float, 4> baseColour{1, 1, 1, 1};  // of the cells; red, green, blue, opacity
  float waterScroll = 0.0f;                     // texture units
};

// The one terrain. It has a grid from the creation of the view to its end.
extern Terrain terrain;

// Puts the record back to what it is at program start, with a grid.
void CreateTerrain();
// Frees the grid.
void DestroyTerrain();
// True when there is a grid and MaterialSize is a size that its grid can hold. Whoever walks the
// grid asks first.
bool HasUsableTerrain();
// Whether MaterialSize fits the grids.
bool HasUsableSize();

// Rebuilds the grid, flat, for the current MaterialSize and WorldSize; clears selection, weights,
// selection box and pending road points. Does nothing for a MaterialSize below 1 or above
// kMaxMaterialSize.
void InitGrid();
// Reads "%s\heightmap.raw" of the level folder into the height buffer. False when no archive holds
// it: the buffer is then empty. What is wrong with it is noted in the load report.
bool LoadHeightBuffer();
// Height buffer to grid; samples that the buffer lacks keep their height. Repaints the Mini-Map.
void LoadHeightsFromBuffer();
// Clamps to 0 ... 256, stores, updates the Mini-Map picture and marks the vertex for redrawing.
void SetHeight(int i, int j, float h);
// Gives the vertex its pixel in the Mini-Map picture; who edits repaints the Mini-Map when done.
void ShowOnMiniMap(int i, int j);
// The same for all of them.
void ShowAllOnMiniMap();
// Mean height of the up to four neighbours that carry data; (i, j) lies in a usable grid.
float AverageOfNeighbours(int i, int j);
// Grid to height buffer: trunc(h x 256), limited to 0 ... 65535, low byte first. False when there
// is no grid of a usable size.
bool StoreHeightsInBuffer();
// Writes "%s\heightmap.raw" of the level folder from the grid. False when it cannot be written, or
// when there is no terrain of a usable size.
[[nodiscard]] bool SaveHeightmap();
// World height under a position in level coordinates (x mirrored against the view), of the corner
// of its cell as it is drawn; 0 outside.
float HeightAt(float x, float z);
// The cell under a world position, truncated; not limited to the grid.
Cell CellOf(float x, float z);
// Height units with which vertex (i, j), 0 ... MaterialSize each, is drawn: the seams wrap.
float DrawnHeight(int i, int j);
// World height (h + above) x HeightScale over the cell under the camera, which is limited to the
// grid.
float HeightUnderCamera(float above);

}  // namespace mw
