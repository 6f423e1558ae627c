#include "bench/plain/plain_material.h"

#include <GL/gl.h>

#include "core/camera.h"
#include "core/editor_state.h"
#include "data/mod_config.h"
#include "data/textures.h"
#include "terrain/cell_draw_list.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"

namespace mw::plain {
namespace {

void Corner(int a, int b, float raise = 0) {
  const TerrainVertex& vertex = terrain.grid[a][b];
  const int row = a == 0 ? modConfig.MaterialSize : a;
  const int column = b == modConfig.MaterialSize ? 0 : b;
  const float height = terrain.grid[row][column].h * modConfig.HeightScale;
  glVertex3f(vertex.x, height + raise, vertex.z);
}

bool IsInBrush(int i, int j) {
  const int size = modConfig.MaterialSize;
  const float c = static_cast<float>(modConfig.WorldSize) / static_cast<float>(size);
  const float b = static_cast<float>(materialMapper->brushSize);
  const float x = terrain.grid[i][j].x, z = terrain.grid[i][j].z;
  const Vector3& pick = materialMapper->pick;
  return pick.x - (b - 1) * c < x && x <= pick.x + b * c && pick.z - b * c < z &&
         z <= pick.z + (b - 1) * c && 1 <= i && i <= size && 0 <= j && j < size;
}

void IconCorner(int a, int b, float s, float t) {
  glTexCoord2f(s, t);
  Corner(a, b);
}

void DrawIcon(int i, int j) {
  glBegin(GL_TRIANGLE_STRIP);
  IconCorner(i, j, 0, 0);
  IconCorner(i, j + 1, 0, 1);
  IconCorner(i - 1, j, 1, 0);
  IconCorner(i - 1, j + 1, 1, 1);
  glEnd();
}

void SurfaceCorner(int a, int b) {
  const auto size = static_cast<float>(modConfig.MaterialSize);
  const auto repeats = static_cast<float>(modConfig.MaterialSize / 16);
  glTexCoord2f(-(static_cast<float>(a) / size * repeats + 1),
               static_cast<float>(b - 1) / size * repeats + 1);
  Corner(a, b);
}

void DrawSurface(int i, int j) {
  glBegin(GL_TRIANGLE_STRIP);
  SurfaceCorner(i, j);
  SurfaceCorner(i, j + 1);
  SurfaceCorner(i - 1, j);
  SurfaceCorner(i - 1, j + 1);
  glEnd();
}

void DrawGridLoop(int i, int j) {
  glLineWidth(2);
  glColor4f(0, 0, 0, 0);
  glBegin(GL_LINE_LOOP);
  Corner(i, j, 0.002f);
  Corner(i, j + 1, 0.002f);
  Corner(i - 1, j + 1, 0.002f);
  Corner(i - 1, j, 0.002f);
  glEnd();
}

void DrawCell(int i, int j) {
  const std::uint32_t cell = materialMapper->grid[i][j];
  const bool inBrush = IsInBrush(i, j);
  const std::uint32_t material = cell < kMaterialCount ? cell : 0;
  if (inBrush)
    glColor4f(1, 0, 0, 1);
  else
    glColor4f(1, 1, 1, 1);
  glEnable(GL_TEXTURE_2D);
  if (materialMapper->SurfaceView) {
    glBindTexture(GL_TEXTURE_2D, textureSet.textures[material].texture);
    DrawSurface(i, j);
  } else {
    glBindTexture(GL_TEXTURE_2D, textureSet.shared.materials[material]);
    DrawIcon(i, j);
  }
  glDisable(GL_TEXTURE_2D);
  if (editor.ShowGrid) DrawGridLoop(i, j);
}

}  // namespace

void DrawMaterialModeCells() {
  if (editor.ShowGrid) glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(kGridDepthFactor, kGridDepthUnits);
  for (int i = terrain.viewSquare.ViewRowEnd; i > terrain.viewSquare.ViewRowStart; --i) {
    for (int j = terrain.viewSquare.ViewColStart; j < terrain.viewSquare.ViewColEnd; ++j) {
      if (CellMap::IsCornerVisible(i, j)) DrawCell(i, j);
    }
  }
  glDisable(GL_POLYGON_OFFSET_FILL);
}

}  // namespace mw::plain
