#include "bench/plain/plain_terrain.h"

#include <GL/gl.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "core/camera.h"
#include "core/editor_state.h"
#include "core/vector3.h"
#include "data/mod_config.h"
#include "data/textures.h"
#include "terrain/cell_draw_list.h"
#include "terrain/level_textures.h"
#include "terrain/point_selection.h"
#include "terrain/terrain.h"
#include "terrain/terrain_passes.h"
#include "terrain/terrain_render.h"

namespace mw::plain {
namespace {

struct CellCorners {
  int i, j;
  Vector3 nearLeft, nearRight, farLeft, farRight;  // (i, j), (i, j+1), (i-1, j), (i-1, j+1)
};

Vector3 Corner(int a, int b) {
  const TerrainVertex& vertex = terrain.grid[a][b];
  const int row = a == 0 ? modConfig.MaterialSize : a;
  const int column = b == modConfig.MaterialSize ? 0 : b;
  return {vertex.x, terrain.grid[row][column].h * modConfig.HeightScale, vertex.z};
}

CellCorners CornersOf(int i, int j) {
  return {i, j, Corner(i, j), Corner(i, j + 1), Corner(i - 1, j), Corner(i - 1, j + 1)};
}

bool Within(float value, float low, float high) { return low < value && value <= high; }

bool IsInFlattenBrush(const CellCorners& cell) {
  if (terrain.tool != TerrainTool::Flatten) return false;
  const float x = cell.nearLeft.x, z = cell.nearLeft.z;
  if (!terrain.flattenSampled || editor.ctrlHeld)
    return Within(x, terrain.pick.x, terrain.pick.x + terrain.cellSize) &&
           Within(z, terrain.pick.z - terrain.cellSize, terrain.pick.z);
  const float inner = static_cast<float>(terrain.brushSize) * terrain.cellSize,
              outer = inner + terrain.cellSize;
  return Within(x, terrain.pick.x - inner, terrain.pick.x + outer) &&
         Within(z, terrain.pick.z - outer, terrain.pick.z + inner);
}

// Texture coordinates count tiles over the whole level; those of a tile start at its own corner.
struct TextureOrigin {
  float s = 0, t = 0;
};

void TexturedVertex(const Vector3& p, int a, int b, const TextureOrigin& origin) {
  const auto size = static_cast<float>(modConfig.MaterialSize);
  const auto tiles = static_cast<float>(terrain.tilesPerSide);
  glTexCoord2f((size - static_cast<float>(a)) / size * tiles - origin.s,
               static_cast<float>(b) / size * tiles - origin.t);
  glVertex3f(p.x, p.y, p.z);
}

void DrawTexturedCell(const CellCorners& cell) {
  const int blockRow = terrain.tilesPerSide - (cell.i - 1) / 64 - 1, blockColumn = cell.j / 64;
  const auto row = std::int64_t{blockRow} - modConfig.TexOffsetX;
  const auto column = std::int64_t{blockColumn} - modConfig.TexOffsetY;
  const bool inTable = row >= 0 && column >= 0 && row < kMaxTiles && column < kMaxTiles;
  const SurfaceTile tile =
      inTable ? levelTextures.tiles[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)]
              : SurfaceTile{};
  glBindTexture(GL_TEXTURE_2D, tile.hasTexture ? tile.texture : textureSet.shared.noSurface);
  TextureOrigin origin;
  if (tile.hasTexture) origin = {static_cast<float>(blockRow), static_cast<float>(blockColumn)};
  glEnable(GL_TEXTURE_2D);
  glBegin(GL_TRIANGLE_STRIP);
  TexturedVertex(cell.nearLeft, cell.i, cell.j, origin);
  TexturedVertex(cell.nearRight, cell.i, cell.j + 1, origin);
  TexturedVertex(cell.farLeft, cell.i - 1, cell.j, origin);
  TexturedVertex(cell.farRight, cell.i - 1, cell.j + 1, origin);
  glEnd();
  glDisable(GL_TEXTURE_2D);
}

void Vertex(const Vector3& p, float raise = 0) { glVertex3f(p.x, p.y + raise, p.z); }

void DrawUntexturedCell(const CellCorners& cell) {
  glBegin(GL_TRIANGLE_STRIP);
  Vertex(cell.nearRight);
  Vertex(cell.nearLeft);
  Vertex(cell.farRight);
  Vertex(cell.farLeft);
  glEnd();
}

void DrawGridLoop(const CellCorners& cell) {
  glLineWidth(2);
  glColor4f(0, 0, 0, 0);
  glBegin(GL_LINE_LOOP);
  Vertex(cell.nearLeft, 0.002f);
  Vertex(cell.nearRight, 0.002f);
  Vertex(cell.farRight, 0.002f);
  Vertex(cell.farLeft, 0.002f);
  glEnd();
}

bool IsSteep(const CellCorners& cell) {
  Vector3 along = cell.nearRight - cell.nearLeft, across = cell.farLeft - cell.nearLeft;
  along.Normalise();
  across.Normalise();
  return along.y > 0.7 || along.y < -0.7 || across.y > 0.7 || across.y < -0.7;
}

void SetBaseColour() { glColor4fv(terrain.baseColour.data()); }

void SetBrushColour() {
  if (terrain.flattenSampled && !editor.ctrlHeld)
    glColor4f(1, 0, 0, 1);
  else
    glColor4f(0, 0, 1, 1);
}

// Their depths sort them; the program draws them in order.
void DrawMarker(const CellCorners& cell) {
  const TerrainVertex& vertex = terrain.grid[cell.i][cell.j];
  const Vector3& d = camera.direction;
  if (vertex.selected)
    glColor4f(1, 0, 0, 1);
  else if (vertex.weight > 0 && terrain.autoSmoothing)
    glColor4f(vertex.weight / terrain.smoothingRange, 1, 0, 1);
  else
    glColor4f(0, 0, 0, 1);
  glLineWidth(10);
  glBegin(GL_LINE_STRIP);
  Vertex(cell.nearLeft);
  glVertex3f(cell.nearLeft.x - d.x * d.y, cell.nearLeft.y + 0.4f, cell.nearLeft.z - d.z * d.y);
  glEnd();
  SetBaseColour();
  glLineWidth(2);
}

void DrawTerrainModeCell(const CellCorners& cell) {
  const bool inBrush = IsInFlattenBrush(cell);
  if (editor.ShowTextures) {
    if (inBrush)
      SetBrushColour();
    else
      SetBaseColour();
    DrawTexturedCell(cell);
  } else {
    if (IsSteep(cell))
      glColor4f(1, 0.5f, 0, 1);
    else if (inBrush)
      SetBrushColour();
    else
      glColor4f(0.5f, 0.5f, 0.5f, 1);
    DrawUntexturedCell(cell);
  }
  if (editor.ShowGrid) DrawGridLoop(cell);
}

void DrawPlainCell(const CellCorners& cell) {
  if (editor.ShowTextures) {
    glColor3f(1, 1, 1);
    DrawTexturedCell(cell);
  } else {
    glColor3f(0.5f, 0.5f, 0.5f);
    DrawUntexturedCell(cell);
  }
  if (editor.ShowGrid) DrawGridLoop(cell);
}

template <typename DrawCell>
void ForEachVisibleCell(DrawCell drawCell) {
  if (editor.ShowGrid) glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(kGridDepthFactor, kGridDepthUnits);
  for (int i = terrain.viewSquare.ViewRowEnd; i > terrain.viewSquare.ViewRowStart; --i) {
    for (int j = terrain.viewSquare.ViewColStart; j < terrain.viewSquare.ViewColEnd; ++j) {
      const CellCorners cell = CornersOf(i, j);
      const Vector3& p = cell.nearLeft;
      if (camera.IsPointVisible(p.x, p.y, p.z, kCullMargin)) drawCell(cell);
    }
  }
  glDisable(GL_POLYGON_OFFSET_FILL);
}

}  // namespace

void DrawTerrainModeCells() {
  glDisable(GL_TEXTURE_2D);
  ForEachVisibleCell(DrawTerrainModeCell);
  if (terrain.tool == TerrainTool::PointManipulation) ForEachVisibleCell(DrawMarker);
}

void DrawPlainCells() {
  glDisable(GL_TEXTURE_2D);
  ForEachVisibleCell(DrawPlainCell);
}

}  // namespace mw::plain
