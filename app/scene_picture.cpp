#include "app/scene_picture.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <algorithm>

#include "app/frame.h"
#include "core/camera.h"
#include "core/editor_state.h"
#include "data/mod_config.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr float kAboveGround = 300;  // world units: what stands on the highest ground fits below

// What drawing from another place would change, or what does not belong into a picture.
class UndisturbedView {
 public:
  UndisturbedView() {
    editor.lastMouseX = editor.lastMouseY = -1;  // on nothing
    terrain.pick.missed = true;
    if (materialMapper) materialMapper->pickMissed = true;
  }
  UndisturbedView(const UndisturbedView&) = delete;
  UndisturbedView& operator=(const UndisturbedView&) = delete;
  ~UndisturbedView() {
    camera = camera_;
    editor.cameraMode = mode_;
    editor.lastMouseX = mouseX_;
    editor.lastMouseY = mouseY_;
    terrain.pick.missed = pickMissed_;
    terrain.waterScroll = waterScroll_;
    if (materialMapper) materialMapper->pickMissed = materialPickMissed_;
  }

 private:
  Camera camera_ = camera;
  CameraMode mode_ = editor.cameraMode;
  int mouseX_ = editor.lastMouseX, mouseY_ = editor.lastMouseY;
  bool pickMissed_ = terrain.pick.missed;
  bool materialPickMissed_ = materialMapper && materialMapper->pickMissed;
  float waterScroll_ = terrain.waterScroll;
};

// Shares of pixels are computed as such.
double AsDouble(int pixels) { return static_cast<double>(pixels); }

// Over the middle of the tile; the picture's right is where x is small, its top where z is large.
void PutCameraOver(PictureSize picture, const PictureTile& tile) {
  const auto world = static_cast<float>(modConfig.WorldSize);
  const auto along = [world](int first, int length, int whole) {
    return world * (1 - (static_cast<float>(first) + static_cast<float>(length) / 2) /
                            static_cast<float>(whole));
  };
  editor.cameraMode = CameraMode::TopDown;
  camera.position.Set(
      along(tile.left, tile.width, picture.width),
      std::max(kMaxHeight * modConfig.HeightScale, modConfig.WaterLevel) + kAboveGround,
      along(tile.top, tile.height, picture.height));
}

// The part of the picture that the tile shows; the current matrix is the projection's.
void Project(PictureOf what, PictureSize picture, const PictureTile& tile) {
  glLoadIdentity();
  const double width = AsDouble(tile.width) / picture.width;
  const double height = AsDouble(tile.height) / picture.height;
  if (what == PictureOf::WholeLevel) {
    const double halfWidth = width * modConfig.WorldSize / 2;
    const double halfHeight = height * modConfig.WorldSize / 2;
    glOrtho(-halfWidth, halfWidth, -halfHeight, halfHeight, kNearPlane,
            static_cast<double>(camera.position.y) + 1);
    return;
  }
  glScaled(1 / width, 1 / height, 1);
  glTranslated(1 - AsDouble(2 * tile.left + tile.width) / picture.width,
               AsDouble(2 * tile.top + tile.height) / picture.height - 1, 0);
  gluPerspective(kFieldOfView, AsDouble(picture.width) / picture.height, kNearPlane, kFarPlane);
}

}  // namespace

PictureSize SizeOfPicture(PictureOf what, int scale) {
  scale = std::clamp(scale, 1, kMostPictureScale);
  if (what == PictureOf::WholeLevel) return {kLevelPictureSide * scale, kLevelPictureSide * scale};
  return {static_cast<int>(editor.viewWidth) * scale, static_cast<int>(editor.viewHeight) * scale};
}

std::vector<PictureTile> TilesOfPicture(PictureOf what, PictureSize picture) {
  int rows = 1, columns = 1;
  if (what == PictureOf::View) {
    columns = std::max(picture.width / std::max(static_cast<int>(editor.viewWidth), 1), 1);
    rows = std::max(picture.height / std::max(static_cast<int>(editor.viewHeight), 1), 1);
  } else {
    rows = columns = std::max((modConfig.MaterialSize + kTileCells - 1) / kTileCells, 1);
  }
  std::vector<PictureTile> tiles;
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      const int left = picture.width * column / columns, top = picture.height * row / rows;
      tiles.push_back({left, top, picture.width * (column + 1) / columns - left,
                       picture.height * (row + 1) / rows - top});
    }
  }
  return tiles;
}

void DrawPictureTile(PictureOf what, PictureSize picture, const PictureTile& tile) {
  const UndisturbedView undisturbed;
  glViewport(0, 0, tile.width, tile.height);
  if (what == PictureOf::WholeLevel) PutCameraOver(picture, tile);
  // The camera sees as much as for twice the picture: what stands in another tile may reach into
  // this one.
  const PictureTile wide{-picture.width / 2, -picture.height / 2, 2 * picture.width,
                         2 * picture.height};
  glMatrixMode(GL_PROJECTION);
  Project(what, picture, wide);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  PlaceCamera();
  glMatrixMode(GL_PROJECTION);
  Project(what, picture, tile);
  glMatrixMode(GL_MODELVIEW);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  DrawScene();
}

}  // namespace mw
