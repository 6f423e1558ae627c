// An empty level in front of an offscreen 3D view, with objects and entities that the tests place
// in it.
#pragma once

#include <GL/gl.h>
#include <GL/glu.h>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>

#include "bench/plain/gl_context.h"
#include "bench/plain/object_scene.h"
#include "bench/plain/terrain_scene.h"
#include "data/mod_config.h"
#include "objects/entities.h"
#include "objects/object_render.h"
#include "objects/object_store.h"
#include "objects/objects_state.h"
#include "support/sandbox.h"
#include "terrain/terrain.h"

namespace mw {

class ObjectPictureTest : public SandboxTest {
 protected:
  static constexpr int kWidth = 400, kHeight = 260;
  static constexpr int kShades = 3;  // of 255
  static constexpr PictureColour kSky{211, 237, 254}, kRed{255, 0, 0}, kGreen{0, 255, 0},
      kYellow{255, 255, 0}, kWhite{255, 255, 255}, kBlack{0, 0, 0};
  // The level's middle in view coordinates, seen from +z.
  static constexpr float kMiddle = 512;
  static constexpr SceneCamera kFront{kMiddle, 52, kMiddle + 25, -5, 0};

  void SetUp() override {
    if (!OpenTestGl(kWidth, kHeight)) GTEST_SKIP() << TestGlError();
    ResetObjectsState();
    MakeLandscape(256);
    objectStore.CursorPoint = {-1000, 0, 0};
    objectStore.objects.reserve(kMaxStaticObjects);
    texture_ = MakeSideTexture();
  }
  void TearDown() override {
    if (IsSkipped()) return;
    for (const GLenum matrix : {GL_PROJECTION, GL_MODELVIEW}) {
      glMatrixMode(matrix);
      glLoadIdentity();
    }
    DeleteSceneMeshes();
    glDeleteTextures(1, &texture_);
    RemoveLandscape();
    ResetObjectsState();
  }

  // Level coordinates of a place given from the middle of the level in view coordinates.
  static Vector3 Place(float x, float y, float z) {
    return {static_cast<float>(modConfig.WorldSize) - (kMiddle + x), 50 + y, kMiddle + z};
  }

  // An F whose marker is out of sight.
  StaticObject& AddLetter(const Vector3& at, MeshKind kind = MeshKind::StandardMesh) {
    if (letter_ == 0) {
      const MeshSurface surface = LetterF(texture_);
      letter_ = MakeSceneMesh({&surface, 1});
    }
    return AddSceneObject(AddSceneEntry(kind, {-200, -200, -200}, {200, 200, 200}), letter_, at);
  }

  void Begin(const SceneCamera& from) {
    BeginScene(from, kWidth, kHeight);
    glGetDoublev(GL_MODELVIEW_MATRIX, modelView_);
    glGetDoublev(GL_PROJECTION_MATRIX, projection_);
  }
  DrawnPicture Draw(const SceneCamera& from = kFront) {
    Begin(from);
    DrawObjectModeScene();
    return picture_ = ReadPicture();
  }
  void ExpectAsPlain(const SceneCamera& from) {
    const DrawnPicture frame = Draw(from);
    Begin(from);
    plain::DrawStaticObjects();
    EXPECT_LE(DifferentPixels(frame, ReadPicture(), kShades), kWidth * kHeight / 1000u);
  }

  struct Pixel {
    int column, row;  // from the top left
  };
  // Where the last picture shows a point given as Place takes it.
  Pixel PixelAt(float x, float y, float z) const {
    const int viewport[] = {0, 0, kWidth, kHeight};
    double wx = 0, wy = 0, wz = 0;
    gluProject(kMiddle + x, 50 + y, kMiddle + z, modelView_, projection_, viewport, &wx, &wy, &wz);
    return {static_cast<int>(wx), kHeight - 1 - static_cast<int>(wy)};
  }
  // The colour of the last picture at a point given as Place takes it.
  PictureColour At(float x, float y, float z) const {
    const auto [column, row] = PixelAt(x, y, z);
    if (column < 0 || column >= kWidth || row < 0 || row >= kHeight) {
      ADD_FAILURE() << x << ", " << y << ", " << z << " is out of the picture";
      return {};
    }
    const auto pixel = static_cast<std::size_t>(row * kWidth + column) * 3;
    return {picture_.rgb[pixel], picture_.rgb[pixel + 1], picture_.rgb[pixel + 2]};
  }
  static std::size_t Count(const DrawnPicture& picture, const PictureColour& colour) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < picture.rgb.size(); at += 3) {
      bool same = true;
      for (std::size_t channel = 0; channel < 3; ++channel)
        same = same && std::abs(picture.rgb[at + channel] - colour[channel]) <= kShades;
      count += same;
    }
    return count;
  }

  unsigned texture_ = 0;
  MeshListId letter_ = 0;

 private:
  double modelView_[16] = {}, projection_[16] = {};
  DrawnPicture picture_;
};

}  // namespace mw
