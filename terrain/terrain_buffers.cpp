#include "terrain/terrain_buffers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include "data/mod_config.h"
#include "terrain/gl_buffers.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"

namespace mw {
namespace {

constexpr float kGridRaise = 0.002f;  // world units between a cell and its grid lines
constexpr float kSteep = 0.7f;  // from this height part of its unit vector on an edge is steep

struct DrawnVertex {
  float x, y, z;
  float s, t;
  ByteColour colour;
};
// A vertex, and its copy that is raised so that grid lines do not sink into the ground.
using VertexPair = std::array<DrawnVertex, 2>;

// What the buffer was built for: when one of these changes, all of it is built anew.
struct Shape {
  int size = 0;
  float cellSize = 0, heightScale = 0;
  CellColours colours;
  friend bool operator==(const Shape&, const Shape&) = default;
};

// The columns of one row that have to be written again. There are none when last < first.
struct ChangedColumns {
  int first = kGridCapacity, last = -1;
};

struct ChangedVertices {
  bool all = true;
  int firstRow = kGridCapacity, lastRow = -1;
  std::array<ChangedColumns, kGridCapacity> rows;
};

struct Buffers {
  unsigned name = 0;
  Shape shape;
  std::vector<VertexPair> row;      // where a row is put together before it goes into the buffer
  std::vector<std::uint8_t> steep;  // per cell, indexed as the vertices
};

// A cache of what is drawn: the buffers, what of them has to be written again, and how often they
// were.
ChangedVertices changedVertices;
Buffers buffers;
unsigned version = 0;

std::size_t RowLength() { return static_cast<std::size_t>(buffers.shape.size) + 1; }

std::size_t CellIndex(int i, int j) {
  return static_cast<std::size_t>(i) * RowLength() + static_cast<std::size_t>(j);
}

float WorldHeight(int i, int j) { return DrawnHeight(i, j) * modConfig.HeightScale; }

// The brightness of the ground: 1 where it is level, darker with the sine of its slope, so that
// gentle slopes show, too.
float ReliefShade(int i, int j) {
  constexpr float kDarkest = 0.35f;
  const int size = buffers.shape.size;
  const auto slope = [](float rise, int cells) {
    return rise / (static_cast<float>(cells) * terrain.cellSize);
  };
  const int i0 = std::max(i - 1, 0), i1 = std::min(i + 1, size);
  const int j0 = std::max(j - 1, 0), j1 = std::min(j + 1, size);
  const float across = slope(WorldHeight(i1, j) - WorldHeight(i0, j), i1 - i0);
  const float along = slope(WorldHeight(i, j1) - WorldHeight(i, j0), j1 - j0);
  const float squared = across * across + along * along;
  return 1 - (1 - kDarkest) * std::sqrt(squared / (1 + squared));
}

ByteColour VertexColour(int i, int j) {
  const CellColours& colours = buffers.shape.colours;
  ByteColour colour = IsSteepCell(i, j) ? colours.steep : colours.ground;
  if (!colours.relief) return colour;
  const float shade = ReliefShade(i, j);
  for (std::size_t channel = 0; channel < 3; ++channel) {
    colour[channel] = static_cast<std::uint8_t>(static_cast<float>(colour[channel]) * shade + 0.5f);
  }
  return colour;
}

VertexPair MakeVertexPair(int i, int j) {
  const auto size = static_cast<float>(buffers.shape.size);
  const auto tiles = static_cast<float>(terrain.tilesPerSide);
  const TerrainVertex& vertex = terrain.grid[i][j];
  const float y = WorldHeight(i, j);
  const float s = (size - static_cast<float>(i)) / size * tiles;
  const float t = static_cast<float>(j) / size * tiles;
  return {DrawnVertex{vertex.x, y, vertex.z, s, t, VertexColour(i, j)},
          DrawnVertex{vertex.x, y + kGridRaise, vertex.z, s, t, {}}};
}

bool IsSteepRise(float rise) {
  return std::abs(rise) > kSteep * std::sqrt(rise * rise + terrain.cellSize * terrain.cellSize);
}

void UpdateSteepCells(int i, int first, int last) {
  if (i == 0) return;  // no cell has its corner in this row, nor in the last column
  for (int j = first; j <= std::min(last, buffers.shape.size - 1); ++j) {
    const float y = WorldHeight(i, j);
    buffers.steep[CellIndex(i, j)] =
        IsSteepRise(WorldHeight(i, j + 1) - y) || IsSteepRise(WorldHeight(i - 1, j) - y);
  }
}

// Writes columns first ... last of row i into the bound buffer.
void WriteRow(int i, int first, int last) {
  UpdateSteepCells(i, first, last);
  for (int j = first; j <= last; ++j)
    buffers.row[static_cast<std::size_t>(j)] = MakeVertexPair(i, j);
  glBufferSubData(GL_ARRAY_BUFFER, static_cast<GLintptr>(CellIndex(i, first) * sizeof(VertexPair)),
                  static_cast<GLsizeiptr>(last - first + 1) * GLsizeiptr{sizeof(VertexPair)},
                  &buffers.row[static_cast<std::size_t>(first)]);
}

void RebuildBuffer() {
  const std::size_t rowLength = RowLength();
  buffers.row.resize(rowLength);
  buffers.steep.assign(rowLength * rowLength, 0);
  glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(rowLength * rowLength * sizeof(VertexPair)),
               nullptr, GL_DYNAMIC_DRAW);
  for (int i = 0; i <= buffers.shape.size; ++i) WriteRow(i, 0, buffers.shape.size);
}

void UpdateChangedRows() {
  for (int i = changedVertices.firstRow; i <= std::min(changedVertices.lastRow, buffers.shape.size);
       ++i) {
    const auto [first, last] = changedVertices.rows[i];
    if (first <= last) WriteRow(i, first, std::min(last, buffers.shape.size));
  }
}

// Marks vertices to be written again. What lies outside the grid is left out.
void MarkVertices(int i0, int j0, int i1, int j1) {
  i0 = std::max(i0, 0), j0 = std::max(j0, 0);
  i1 = std::min(i1, modConfig.MaterialSize), j1 = std::min(j1, modConfig.MaterialSize);
  if (i1 < i0 || j1 < j0 || i1 > kMaxMaterialSize) return;
  changedVertices.firstRow = std::min(changedVertices.firstRow, i0);
  changedVertices.lastRow = std::max(changedVertices.lastRow, i1);
  for (int i = i0; i <= i1; ++i) {
    changedVertices.rows[i].first = std::min(changedVertices.rows[i].first, j0);
    changedVertices.rows[i].last = std::max(changedVertices.rows[i].last, j1);
  }
}

void ForgetChanges() {
  for (int i = changedVertices.firstRow; i <= changedVertices.lastRow; ++i)
    changedVertices.rows[i] = ChangedColumns{};
  changedVertices.firstRow = kGridCapacity;
  changedVertices.lastRow = -1;
  changedVertices.all = false;
}

}  // namespace

void MarkTerrainChanged(int i0, int j0, int i1, int j1) {
  const int size = modConfig.MaterialSize;
  // In a relief a height also changes the slopes of its neighbours on all sides.
  if (buffers.shape.colours.relief) --i0, ++j1;
  // Cells of the next row and of the column before have edges that end here.
  MarkVertices(i0, j0 - 1, i1 + 1, j1);
  // So have cells on the other side of a seam, where the same heights are drawn a second time.
  if (i1 >= size) MarkVertices(0, j0 - 1, 1, j1);
  if (j0 <= 0) MarkVertices(i0, size - 1, i1 + 1, size);
  if (i1 >= size && j0 <= 0) MarkVertices(0, size - 1, 1, size);
}

void MarkAllTerrainChanged() { changedVertices.all = true; }

void ReleaseTerrainVertices() {
  if (buffers.name) glDeleteBuffers(1, &buffers.name);
  buffers = Buffers{};
}

bool SyncTerrainBuffers(const CellColours& colours) {
  const Shape shape{modConfig.MaterialSize, terrain.cellSize, modConfig.HeightScale, colours};
  if (!terrain.grid || shape.size < 1 || shape.size > kMaxMaterialSize) return false;
  const bool rebuild = changedVertices.all || !buffers.name || shape != buffers.shape;
  if (!rebuild && changedVertices.lastRow < 0) return true;
  if (!buffers.name) glGenBuffers(1, &buffers.name);
  glBindBuffer(GL_ARRAY_BUFFER, buffers.name);
  buffers.shape = shape;
  if (rebuild)
    RebuildBuffer();
  else
    UpdateChangedRows();
  glBindBuffer(GL_ARRAY_BUFFER, 0);
  ForgetChanges();
  ++version;
  return true;
}

unsigned TerrainBufferVersion() { return version; }

void BindTerrainVertices(bool textured) {
  glBindBuffer(GL_ARRAY_BUFFER, buffers.name);
  glEnableClientState(GL_VERTEX_ARRAY);
  glVertexPointer(3, GL_FLOAT, sizeof(DrawnVertex), BufferOffset(offsetof(DrawnVertex, x)));
  glEnableClientState(GL_COLOR_ARRAY);
  glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(DrawnVertex),
                 BufferOffset(offsetof(DrawnVertex, colour)));
  if (!textured) return;
  glEnableClientState(GL_TEXTURE_COORD_ARRAY);
  glTexCoordPointer(2, GL_FLOAT, sizeof(DrawnVertex), BufferOffset(offsetof(DrawnVertex, s)));
}

void UnbindTerrainVertices() {
  glDisableClientState(GL_COLOR_ARRAY);
  glDisableClientState(GL_TEXTURE_COORD_ARRAY);
  glDisableClientState(GL_VERTEX_ARRAY);
  glBindBuffer(GL_ARRAY_BUFFER, 0);
}

std::uint32_t TerrainVertexIndex(int i, int j) {
  return static_cast<std::uint32_t>(CellIndex(i, j)) * 2;
}

bool IsSteepCell(int i, int j) { return buffers.steep[CellIndex(i, j)] != 0; }

}  // namespace mw
