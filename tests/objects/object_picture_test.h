// An empty level in front of an offscreen 3D view, with objects and entities that the tests place
// in it. Points of the scene are given from the middle of the level in view coordinates.
#pragma once

#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/glu.h>
#include <initializer_list>

#include "bench/plain/object_scene.h"
#include "bench/plain/terrain_scene.h"
#include "data/mod_config.h"
#include "objects/entities.h"
#include "objects/entity_markers.h"
#include "objects/object_render.h"
#include "objects/object_store.h"
#include "objects/objects_state.h"
#include "support/pictures.h"
#include "support/sandbox.h"
#include "terrain/terrain.h"

namespace mw {

class ObjectPictureTest : public SandboxTest {
 protected:
  static constexpr int kWidth = 400, kHeight = 260, kNone = -1;
  static constexpr PictureColour kSky{211, 237, 254}, kRed{255, 0, 0}, kGreen{0, 255, 0},
      kYellow{255, 255, 0}, kWhite{255, 255, 255}, kBlack{0, 0, 0};
  enum Side { kPlusX, kMinusX, kTop, kBottom, kPlusZ, kMinusZ };
  static constexpr float kMiddle = 512;  // x and z of the level's middle in view coordinates
  static constexpr SceneCamera kFront{kMiddle, 52, kMiddle + 25, -5, 0};  // from +z
  static constexpr SceneCamera kAbove{kMiddle, 90, kMiddle, -90, 0};

  void SetUp() override {
    if (!OpenTestGl(kWidth, kHeight)) GTEST_SKIP() << TestGlError();
    ResetObjectsState();
    MakeLandscape(256);
    PointAt({-1000, 0, 0});
    objectStore.objects.reserve(kMaxStaticObjects);
    texture_ = MakeSideTexture();
  }
  void TearDown() override {
    if (IsSkipped()) return;
    for (const GLenum matrix : {GL_PROJECTION, GL_MODELVIEW}) {
      glMatrixMode(matrix);
      glLoadIdentity();
    }
    ReleaseEntityMarkers();
    DeleteSceneMeshes();
    glDeleteTextures(1, &texture_);
    RemoveLandscape();
    ResetObjectsState();
  }

  static const PictureColour& Colour(Side side) { return kSideColours[side]; }
  // Level coordinates of a place.
  static Vector3 Place(float x, float y, float z) {
    return {static_cast<float>(modConfig.WorldSize) - (kMiddle + x), 50 + y, kMiddle + z};
  }
  static void PointAt(const Vector3& point) {
    objectStore.CursorPoint = Vector3{kMiddle, 50, kMiddle} + point;
  }
  // On the marker of a box at this place.
  static void PointAtMarker(float x, float y, float z) { PointAt({x, y + 3.5f, z}); }

  // An F whose marker is out of sight.
  StaticObject& AddLetter(const Vector3& at, MeshKind kind = MeshKind::StandardMesh) {
    if (letter_ == 0) letter_ = MakeMesh(LetterF(texture_));
    return AddSceneObject(AddSceneEntry(kind, {-200, -200, -200}, {200, 200, 200}), letter_, at);
  }
  // 4 wide and deep and 3 high, with a marker on it, as a level's objects have it.
  StaticObject& AddBoxObject(const Vector3& at, MeshKind kind = MeshKind::StandardMesh) {
    if (box_ == 0) {
      MeshSurface surface;
      AddBox(surface, {-2, 0, -2}, {2, 3, 2});
      surface.texture = texture_;
      box_ = MakeMesh(surface);
    }
    return AddSceneObject(AddSceneEntry(kind, {-2, 0, -2}, {2, 3, 2}), box_, at);
  }
  static MeshListId MakeMesh(const MeshSurface& surface) { return MakeSceneMesh({&surface, 1}); }
  static MeshSurface Line(const Vector3& from, const Vector3& to) {
    MeshSurface line;
    line.kind = MeshSurface::Kind::Lines;
    line.lineWidth = 3;
    line.vertices = {{from}, {to}};
    line.indices = {0, 1};
    return line;
  }

  void Begin(const SceneCamera& from) {
    BeginScene(from, kWidth, kHeight);
    glGetDoublev(GL_MODELVIEW_MATRIX, modelView_);
    glGetDoublev(GL_PROJECTION_MATRIX, projection_);
  }
  DrawnPicture Draw(const SceneCamera& from = kFront) {
    Begin(from);
    for (const GLenum state : {GL_TEXTURE_2D, GL_BLEND}) glEnable(state);  // as others may leave it
    DrawObjectModeScene();
    return picture_ = ReadPicture();
  }
  DrawnPicture DrawPlainly(const SceneCamera& from) {
    Begin(from);
    plain::DrawStaticObjects();
    return ReadPicture();
  }
  // The object that is hovered when the cursor is at a point.
  int HoveredAt(const Vector3& point, const SceneCamera& from = kFront) {
    PointAt(point);
    Draw(from);
    return objectStore.hoveredObject;
  }

  struct Pixel {
    int column, row;  // from the top left
  };
  // Where the last picture shows a point.
  Pixel PixelAt(const Vector3& point) const {
    const int viewport[] = {0, 0, kWidth, kHeight};
    double wx = 0, wy = 0, wz = 0;
    gluProject(kMiddle + point.x, 50 + point.y, kMiddle + point.z, modelView_, projection_,
               viewport, &wx, &wy, &wz);
    return {static_cast<int>(wx), kHeight - 1 - static_cast<int>(wy)};
  }
  // The colour of the last picture at a point.
  PictureColour At(float x, float y, float z) const {
    const auto [column, row] = PixelAt({x, y, z});
    if (column < 0 || column >= kWidth || row < 0 || row >= kHeight) {
      ADD_FAILURE() << x << ", " << y << ", " << z << " is out of the picture";
      return {};
    }
    const auto pixel = static_cast<std::size_t>(row * kWidth + column) * 3;
    return {picture_.rgb[pixel], picture_.rgb[pixel + 1], picture_.rgb[pixel + 2]};
  }
  void ExpectAt(std::initializer_list<Vector3> points, const PictureColour& colour) const {
    for (const Vector3& p : points)
      EXPECT_EQ(At(p.x, p.y, p.z), colour) << p.x << ", " << p.y << ", " << p.z;
  }
  void ExpectSomethingAt(std::initializer_list<Vector3> points) const {
    for (const Vector3& p : points)
      EXPECT_NE(At(p.x, p.y, p.z), kSky) << p.x << ", " << p.y << ", " << p.z;
  }
  static std::size_t Count(const DrawnPicture& picture, const PictureColour& colour) {
    return CountColour(picture, colour[0], colour[1], colour[2]);
  }

  unsigned texture_ = 0;

 private:
  MeshListId letter_ = 0, box_ = 0;
  double modelView_[16] = {}, projection_[16] = {};
  DrawnPicture picture_;
};

}  // namespace mw
