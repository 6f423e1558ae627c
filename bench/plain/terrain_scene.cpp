#include "bench/plain/terrain_scene.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <cmath>
#include <vector>

#include "core/camera.h"
#include "core/editor_state.h"
#include "data/mod_config.h"
#include "data/textures.h"
#include "terrain/level_textures.h"
#include "terrain/terrain.h"
#include "terrain/terrain_render.h"

namespace mw {
namespace {

constexpr int kTexturePixels = 128;

float Hills(int i, int j) {
  const auto x = static_cast<float>(i), z = static_cast<float>(j);
  return 100 + 40 * std::sin(x * 0.06f) * std::cos(z * 0.05f) + 8 * std::sin(x * 0.7f + z * 0.3f);
}

// A checked pattern in shades of the colour.
unsigned MakeTexture(int red, int green, int blue) {
  std::vector<std::uint8_t> rgb;
  rgb.reserve(kTexturePixels * kTexturePixels * 3);
  for (int y = 0; y < kTexturePixels; ++y) {
    for (int x = 0; x < kTexturePixels; ++x) {
      const int shade = 3 + ((x / 16 + y / 8) % 2);
      for (const int channel : {red, green, blue})
        rgb.push_back(static_cast<std::uint8_t>(channel * shade / 4));
    }
  }
  GLuint name = 0;
  glGenTextures(1, &name);
  glBindTexture(GL_TEXTURE_2D, name);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
  gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGB, kTexturePixels, kTexturePixels, GL_RGB, GL_UNSIGNED_BYTE,
                    rgb.data());
  glBindTexture(GL_TEXTURE_2D, 0);
  return name;
}

void SetViewMatrices(const SceneCamera& from, int width, int height) {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  gluPerspective(kFieldOfView, static_cast<double>(width) / height, kNearPlane, kFarPlane);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glRotatef(-from.pitch, 1, 0, 0);
  glRotatef(-from.yaw, 0, 1, 0);
  glTranslatef(-from.x, -from.y, -from.z);
}

void SetCamera(const SceneCamera& from) {
  camera.position.Set(from.x, from.y, from.z);
  camera.pitch = from.pitch;
  camera.yaw = from.yaw;
  camera.UpdateDirection();
  Matrix4 projection, modelView;
  glGetFloatv(GL_PROJECTION_MATRIX, projection.data());
  glGetFloatv(GL_MODELVIEW_MATRIX, modelView.data());
  camera.ExtractFrustum(projection, modelView);
}

}  // namespace

void MakeLandscape(int materialSize) {
  modConfig = ModConfig{};
  modConfig.MaterialSize = materialSize;
  modConfig.WorldSize = materialSize * 4;
  modConfig.HeightScale = 0.6f;
  modConfig.WaterLevel = 45;
  CreateTerrain();
  InitGrid();
  for (int i = 1; i <= materialSize; ++i) {
    for (int j = 0; j < materialSize; ++j) terrain.grid[i][j].h = Hills(i, j);
  }
  MarkAllTerrainChanged();
}

void RemoveLandscape() {
  DestroyTerrain();
  modConfig = ModConfig{};
}

void MakeLandscapeTextures() {
  for (int row = 0; row < kMaxTiles; ++row) {
    for (int column = 0; column < kMaxTiles; ++column)
      levelTextures.tiles[row][column] = {MakeTexture(90 + row * 20, 250 - column * 25, 120), true};
  }
  levelTextures.tiles[4][4].hasTexture = false;
  textureSet.shared.noSurface = MakeTexture(255, 0, 255);
  textureSet.shared.water = MakeTexture(120, 160, 255);
  for (int material = 0; material < kMaterialCount; ++material) {
    const auto index = static_cast<std::size_t>(material);
    textureSet.shared.materials[index] = MakeTexture(60 + material * 12, 250 - material * 15, 90);
    textureSet.textures[index].texture = MakeTexture(200 - material * 10, 80, 60 + material * 12);
  }
}

void DeleteLandscapeTextures() {
  for (auto& row : levelTextures.tiles) {
    for (SurfaceTile& tile : row) {
      glDeleteTextures(1, &tile.texture);
      tile = SurfaceTile{};
    }
  }
  glDeleteTextures(1, &textureSet.shared.noSurface);
  glDeleteTextures(1, &textureSet.shared.water);
  glDeleteTextures(kMaterialCount, textureSet.shared.materials.data());
  for (const SetTexture& texture : textureSet.textures) glDeleteTextures(1, &texture.texture);
  textureSet.shared = SharedTextures{};
  textureSet = TextureSet{};
}

void BeginScene(const SceneCamera& from, int width, int height) {
  glClearColor(211.0f / 255, 237.0f / 255, 254.0f / 255, 1);
  glEnable(GL_DEPTH_TEST);
  glDisable(GL_BLEND);
  editor.viewWidth = static_cast<float>(width);
  editor.viewHeight = static_cast<float>(height);
  SetViewMatrices(from, width, height);
  SetCamera(from);
  UpdateViewSquare();
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

}  // namespace mw
