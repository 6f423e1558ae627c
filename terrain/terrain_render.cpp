#include "terrain/terrain_render.h"

#include <GL/gl.h>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "data/textures.h"
#include "terrain/terrain.h"
#include "terrain/terrain_buffers.h"
#include "terrain/terrain_passes.h"

namespace mw {
namespace {

constexpr float kWaterRepeats = 10.0f;       // how often its texture stands across the world
constexpr float kWaterScrollStep = 0.0004f;  // texture units per frame

bool HasRoundBrush(TerrainTool tool) {
  return tool == TerrainTool::Carving || tool == TerrainTool::Raising ||
         tool == TerrainTool::Smoothing;
}

// The square of Flatten with a hard edge is coloured with the cells.
bool HasOutline(TerrainTool tool) {
  return HasRoundBrush(tool) ||
         (tool == TerrainTool::Flatten && terrain.brushEdge != BrushEdge::Hard);
}

void DrawWaterPlane() {
  const auto world = static_cast<float>(modConfig.WorldSize);
  const float y = modConfig.WaterLevel, s = terrain.waterScroll, end = s + kWaterRepeats;
  const auto corner = [y](float texS, float texT, float x, float z) {
    glTexCoord2f(texS, texT);
    glVertex3f(x, y, z);
  };
  glBegin(GL_TRIANGLE_STRIP);
  corner(s, end, 0, world);
  corner(s, s, 0, 0);
  corner(end, end, world, world);
  corner(end, s, world, 0);
  glEnd();
}

void ScrollWater() {
  terrain.waterScroll += kWaterScrollStep;
  if (terrain.waterScroll > 1.0f) terrain.waterScroll = 0.0f;
}

}  // namespace

void RenderTerrainMode() {
  if (!terrain.grid) return;
  UpdateViewSquare();
  UpdateFlattenBrush();
  DrawTerrainCells();
  glColor4fv(terrain.baseColour.data());
  glLineWidth(kGridLineWidth);
  if (editor.drawObjectsInMappers) hooks.drawStaticObjects();
  RenderWaterOverGround();
  if (!terrain.pick.missed) {
    if (HasRoundBrush(terrain.tool)) DrawBrushSphere();
    if (HasOutline(terrain.tool)) DrawBrushOutline();
  }
  if (terrain.tool == TerrainTool::Road) DrawRoadPosts();
  glLineWidth(1);
  glColor4f(1, 1, 1, 1);
}

void RenderWater() {
  if (!terrain.grid) return;
  glEnable(GL_BLEND);
  glBlendFunc(GL_DST_COLOR, GL_ZERO);  // the texture multiplies what is already drawn
  glEnable(GL_TEXTURE_2D);
  glBindTexture(GL_TEXTURE_2D, textureSet.shared.water);
  glColor4f(1, 1, 1, 1);
  DrawWaterPlane();
  glDisable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glDisable(GL_TEXTURE_2D);
  ScrollWater();
}

void RenderWaterOverGround() {
  glDepthMask(GL_FALSE);
  RenderWater();
  glDepthMask(GL_TRUE);
}

void ReleaseTerrainBuffers() {
  ReleaseTerrainVertices();
  ReleaseTerrainCells();
  ReleaseMaterialCells();
  ReleaseTerrainMarks();
}

}  // namespace mw
