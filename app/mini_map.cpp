#include "app/mini_map.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <algorithm>
#include <bit>

#include "app/session.h"
#include "core/camera.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "terrain/stretched_mini_map.h"
#include "terrain/terrain.h"

namespace mw {

namespace {

constexpr int kMarkerCentre = 10;
constexpr int kSquareFirst = 8, kSquareEnd = 14;  // marker pixels of the square
constexpr int kLineStart = 11, kLineLength = 10;  // marker pixels

struct DrawnMiniMap {
  unsigned window = 0, heights = 0;       // textures; 0 before the first frame
  int windowWidth = 0, windowHeight = 0;  // of the window's texture: powers of two
  bool isStretched = false;               // the heights' texture holds this picture
  StretchedMiniMap stretched;
};
DrawnMiniMap drawn;  // a cache: what GL holds of both pictures

// World units that one picture pixel covers; 0 while no level size is known.
float WorldUnitsPerPixel() {
  const int samplesPerPixel = modConfig.MaterialSize / kMiniMapSize;
  if (samplesPerPixel < 1) return 0;
  return static_cast<float>(modConfig.WorldSize) / static_cast<float>(modConfig.MaterialSize) *
         static_cast<float>(samplesPerPixel);
}

void UseTexture(unsigned& texture, GLint filter) {
  if (!texture) glGenTextures(1, &texture);
  glBindTexture(GL_TEXTURE_2D, texture);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
}

// Gives GL what changed of the picture that is shown, all when it is another one.
void UploadHeights(bool isNew) {
  const bool wantsStretched = session.miniMapLook.stretched;
  auto changed = terrain.miniMap.changed;
  if (isNew || wantsStretched != drawn.isStretched) changed = {};
  terrain.miniMap.changed = {kMiniMapSize, -1};
  if (changed.first > changed.last) return;
  if (wantsStretched) changed = drawn.stretched.Update(changed);
  drawn.isStretched = wantsStretched;
  const auto& grey = wantsStretched ? drawn.stretched.Grey() : terrain.miniMap.grey;
  glTexSubImage2D(GL_TEXTURE_2D, 0, 0, changed.first, kMiniMapSize,
                  changed.last - changed.first + 1, GL_LUMINANCE, GL_UNSIGNED_BYTE,
                  &grey[static_cast<std::size_t>(changed.first) * kMiniMapSize]);
}

// Leaves the height picture's texture bound.
void BindHeights() {
  const bool isNew = !drawn.heights;
  const bool isEnlarged = session.miniMapLook.size != MiniMapSize::Small;
  UseTexture(drawn.heights, isEnlarged ? GL_LINEAR : GL_NEAREST);
  if (isNew) {
    glTexImage2D(GL_TEXTURE_2D, 0, GL_LUMINANCE8, kMiniMapSize, kMiniMapSize, 0, GL_LUMINANCE,
                 GL_UNSIGNED_BYTE, nullptr);
    // Enlarged, the last pixels do not run into those of the other edge.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
  }
  UploadHeights(isNew);
}

// Leaves the window's texture bound.
void BindWindow() {
  MiniMapWindowPicture& window = session.miniMapWindow;
  const bool isNew = !drawn.window;
  UseTexture(drawn.window, GL_NEAREST);
  if (!isNew && !window.changed) return;
  const auto powerOfTwo = [](int side) {
    return static_cast<int>(std::bit_ceil(static_cast<unsigned>(side)));
  };
  drawn.windowWidth = powerOfTwo(window.width);
  drawn.windowHeight = powerOfTwo(window.height);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB8, drawn.windowWidth, drawn.windowHeight, 0, GL_RGB,
               GL_UNSIGNED_BYTE, nullptr);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, window.width, window.height, GL_RGB, GL_UNSIGNED_BYTE,
                  window.pixels.data());
  glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
  window.changed = false;
}

// The bound texture from its first row and column up to (s, t).
void DrawTexture(float left, float top, float width, float height, float s, float t) {
  glBegin(GL_QUADS);
  glTexCoord2f(0, 0), glVertex2f(left, top);
  glTexCoord2f(0, t), glVertex2f(left, top + height);
  glTexCoord2f(s, t), glVertex2f(left + width, top + height);
  glTexCoord2f(s, 0), glVertex2f(left + width, top);
  glEnd();
}

// Pixels column ... endColumn - 1 of rows row ... endRow - 1 of the picture, as far as it has them.
void AddPixels(int column, int row, int endColumn, int endRow) {
  const auto limited = [](int value) {
    return static_cast<float>(std::clamp(value, 0, kMiniMapSize));
  };
  const float left = limited(column), top = limited(row);
  const float right = limited(endColumn), bottom = limited(endRow);
  glVertex2f(left, top), glVertex2f(left, bottom);
  glVertex2f(right, bottom), glVertex2f(right, top);
}

// A yellow square at the camera's place with a line in its viewing direction; one unit is one pixel
// of the picture.
void DrawMarker() {
  const float unitsPerPixel = WorldUnitsPerPixel();
  if (unitsPerPixel <= 0) return;
  const auto corner = [unitsPerPixel](float world) {
    return static_cast<int>(kMiniMapSize - world / unitsPerPixel - kMarkerCentre);
  };
  const int left = corner(camera.position.x), top = corner(camera.position.z);
  glColor4f(1, 1, 0, 1);
  glBegin(GL_QUADS);
  AddPixels(left + kSquareFirst, top + kSquareFirst, left + kSquareEnd, top + kSquareEnd);
  for (int i = 0; i < kLineLength; ++i) {
    const auto along = [i](float part) {
      return static_cast<int>(static_cast<float>(kLineStart) - static_cast<float>(i) * part);
    };
    const int x = left + along(camera.direction.x), y = top + along(camera.direction.z);
    AddPixels(x, y, x + 1, y + 1);
  }
  glEnd();
}

}  // namespace

void DrawMiniMap() {
  const MiniMapWindowPicture& window = session.miniMapWindow;
  if (window.width <= 0 || window.height <= 0) return;
  const auto left = static_cast<float>(window.left), top = static_cast<float>(window.top);
  const auto width = static_cast<float>(window.width), height = static_cast<float>(window.height);
  const auto size = static_cast<float>(window.pictureSize);
  glDisable(GL_DEPTH_TEST);
  glEnable(GL_TEXTURE_2D);
  glColor4f(1, 1, 1, 1);
  BindWindow();
  DrawTexture(left, top, width, height, width / static_cast<float>(drawn.windowWidth),
              height / static_cast<float>(drawn.windowHeight));
  glPushMatrix();
  glTranslatef(left + static_cast<float>(window.pictureLeft),
               top + static_cast<float>(window.pictureTop), 0);
  glScalef(size / kMiniMapSize, size / kMiniMapSize, 1);
  BindHeights();
  DrawTexture(0, 0, kMiniMapSize, kMiniMapSize, 1, 1);
  glDisable(GL_TEXTURE_2D);
  DrawMarker();
  glPopMatrix();
  glColor4f(1, 1, 1, 1);
  glEnable(GL_DEPTH_TEST);
}

void ReleaseMiniMap() {
  for (const unsigned texture : {drawn.window, drawn.heights}) {
    if (texture) glDeleteTextures(1, &texture);
  }
  drawn = DrawnMiniMap{};
}

void MoveCameraToMiniMapPixel(int x, int y) {
  const float unitsPerPixel = WorldUnitsPerPixel();
  const auto world = [unitsPerPixel](int pixel) {
    return static_cast<float>(std::clamp(kMiniMapSize - pixel, 0, kMiniMapSize)) * unitsPerPixel;
  };
  camera.position.x = world(x);
  camera.position.z = world(y);
  hooks.invalidateMiniMap();
}

}  // namespace mw
