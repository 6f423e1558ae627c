#include "app/frame.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <algorithm>

#include "app/camera_control.h"
#include "app/input.h"
#include "app/mini_map.h"
#include "app/modes.h"
#include "core/editor_state.h"
#include "core/frame_time.h"
#include "core/text.h"
#include "data/textures.h"
#include "objects/entity_markers.h"
#include "objects/mesh_drawing.h"
#include "objects/object_browser.h"
#include "objects/object_render.h"
#include "platform/prompts.h"
#include "terrain/level_textures.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"

namespace mw {
namespace {

constexpr std::uint32_t kFpsPeriod = 1000;  // milliseconds
constexpr float kShortestFrame = 0.01f;     // seconds

void SetFixedState() {
  constexpr float kAmbient[] = {0.5f, 0.5f, 0.5f, 1}, kDiffuse[] = {1, 1, 1, 1};
  constexpr float kSpecular[] = {0.5f, 0.5f, 0.5f, 1}, kPosition[] = {0, 0, 0, 1};
  glClearColor(211 / 255.0f, 237 / 255.0f, 254 / 255.0f, 1);
  glClearDepth(1);
  glEnable(GL_DEPTH_TEST);
  glEnable(GL_TEXTURE_2D);
  glDisable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
  glLightfv(GL_LIGHT1, GL_AMBIENT, kAmbient);
  glLightfv(GL_LIGHT1, GL_DIFFUSE, kDiffuse);
  glLightfv(GL_LIGHT1, GL_SPECULAR, kSpecular);
  glLightfv(GL_LIGHT1, GL_POSITION, kPosition);
  glEnable(GL_LIGHT1);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
}

void CountFrame(std::uint32_t now) {
  if (now >= editor.nextFpsUpdate) {
    editor.shownFps = editor.framesThisSecond;
    editor.framesThisSecond = 0;
    editor.nextFpsUpdate = now + kFpsPeriod;
  }
  ++editor.framesThisSecond;
  editor.frameSeconds = std::max(CountedSeconds(now - editor.lastFrameTime), kShortestFrame);
  editor.lastFrameTime = now;
}

void RenderObjectMode() {
  UpdateViewSquare();
  RenderPlainTerrain();
  DrawObjectModeScene();
  RenderWater();
}

// Leaves the depth of the scene, which objects are picked from.
void DrawRubberBand() {
  const auto& band = editor.rubberBand;
  glDisable(GL_TEXTURE_2D);
  glColor4f(1, 1, 0, 1);
  glLineWidth(3);
  glDepthMask(GL_FALSE);
  glBegin(GL_LINE_STRIP);
  glVertex2i(band.x0, band.y0);
  glVertex2i(band.x1, band.y0);
  glVertex2i(band.x1, band.y1);
  glVertex2i(band.x0, band.y1);
  glVertex2i(band.x0, band.y0);
  glEnd();
  glDepthMask(GL_TRUE);
  glLineWidth(1);
}

void DrawQuad(float left, float top, float size) {
  glBegin(GL_QUADS);
  glTexCoord2f(0, 1), glVertex2f(left, top);
  glTexCoord2f(0, 0), glVertex2f(left, top + size);
  glTexCoord2f(1, 0), glVertex2f(left + size, top + size);
  glTexCoord2f(1, 1), glVertex2f(left + size, top);
  glEnd();
}

// Both quads lie at the same depth, so the black one shows as a frame around the picture only.
void DrawMaterialSwatch() {
  constexpr float kMargin = 80, kSize = 64, kFrame = 1;
  const std::size_t material =
      std::min<std::size_t>(materialMapper->currentMaterial, kMaterialCount - 1);
  glEnable(GL_TEXTURE_2D);
  glBindTexture(GL_TEXTURE_2D, textureSet.shared.materials[material]);
  glColor4f(1, 1, 1, 1);
  DrawQuad(editor.viewWidth - kMargin, editor.viewHeight - kMargin, kSize);
  glDisable(GL_TEXTURE_2D);
  glColor4f(0, 0, 0, 1);
  DrawQuad(editor.viewWidth - kMargin - kFrame, editor.viewHeight - kMargin - kFrame,
           kSize + 2 * kFrame);
}

}  // namespace

void CreateViewObjects() {
  camera = Camera{};
  CreateTerrain();
  CreateMaterialMapper();
  SetTerrainBaseColour(255, 255, 255, 255);
  InitGrid();
  SetFixedState();
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  SetEditMode(EditMode::TerrainMapper);
  editor.viewReady = true;
}

void ResizeView(int width, int height) {
  height = std::max(height, 1);
  editor.viewWidth = static_cast<float>(width);
  editor.viewHeight = static_cast<float>(height);
  glViewport(0, 0, width, height);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  gluPerspective(kFieldOfView, static_cast<double>(width) / height, kNearPlane, kFarPlane);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
}

void RenderFrame(std::uint32_t now) {
  CountFrame(now);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glLoadIdentity();
  if (editor.browserPreviewActive) {
    DrawBrowserPreview();
  } else {
    UpdateCameraFromInput();
    PlaceCamera();
    DrawScene();
    FollowCamera();
  }
  DrawOverlay();
  SetStatusText(2, FormatText("FPS: %i", editor.shownFps));
}

void PlaceCamera() {
  ClampCamera();
  UpdateViewSquare();  // on the ground it sets the camera's height
  ApplyCamera();
}

void DrawScene() {
  switch (editor.editMode) {
    case EditMode::TerrainMapper:
      RenderTerrainMode();
      break;
    case EditMode::MaterialMapper:
      RenderMaterialMode();
      break;
    case EditMode::ObjectMapper:
      RenderObjectMode();
      break;
  }
}

void DrawOverlay() {
  glPushAttrib(GL_TRANSFORM_BIT | GL_VIEWPORT_BIT);
  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  glLoadIdentity();
  gluOrtho2D(0, editor.viewWidth, 0, editor.viewHeight);
  glScalef(1, -1, 1);
  glTranslatef(0, -editor.viewHeight, 0);
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glLoadIdentity();
  if (!editor.browserPreviewActive) {
    if (editor.rubberBandActive) DrawRubberBand();
    if (IsEditMode(EditMode::MaterialMapper)) DrawMaterialSwatch();
  }
  DrawMiniMap();
  glMatrixMode(GL_PROJECTION);
  glPopMatrix();
  glMatrixMode(GL_MODELVIEW);
  glPopMatrix();
  glPopAttrib();
  glLoadIdentity();
}

void DestroyViewObjects() {
  editor.viewReady = false;
  DeleteLevelTextures();
  ReleaseEntityMarkers();
  DeleteAllMeshLists();
  ReleaseTerrainBuffers();
  ReleaseMiniMap();
  DestroyMaterialMapper();
  DestroyTerrain();
}

}  // namespace mw
