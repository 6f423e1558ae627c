#include "terrain/world_point.h"

#include <GL/gl.h>
#include <cmath>
#include <vector>

#include "core/camera.h"
#include "terrain/terrain_picture_test.h"

namespace mw {
namespace {

using WorldPointTest = TerrainPictureTest;

TEST_F(WorldPointTest, ThePointUnderAPixelIsTheGroundAtItsCentre) {
  InitGrid();
  const float halfPixel = 123.8f * std::tan(0.3926991f) / kHeight;  // on the ground, from above
  for (const auto& show : {ShowTextured, ShowTexturedWireframe}) {
    show();
    for (const float water : {-1000.0f, 100.0f}) {
      modConfig.WaterLevel = water;  // one sees through to the sea bed
      Frame({1010, 200, 900, -90, 180});
      for (const auto& point : {WorldPointUnderCursor(kWidth / 2, kHeight / 2),
                                GroundUnderCursor(kWidth / 2, kHeight / 2)}) {
        ASSERT_TRUE(point);
        EXPECT_NEAR(point->x, 1010 - halfPixel, 0.002f);
        EXPECT_NEAR(point->y, 127 * 0.6f, 0.0001f);
        EXPECT_NEAR(point->z, 900 - halfPixel, 0.002f);
      }
    }
  }
}

// Pixels on the outline of a hill may show either what is before it or what is behind.
TEST_F(WorldPointTest, TheGroundUnderEveryPixelIsTheOneThatIsDrawnThere) {
  modConfig.WaterLevel = -1000;
  editor.ShowGrid = false;
  for (const SceneCamera& from : kCameras) {
    for (const bool textured : {false, true}) {
      editor.ShowTextures = textured;
      Frame(from);
      std::vector<GLfloat> depths(kWidth * kHeight);
      glReadPixels(0, 0, kWidth, kHeight, GL_DEPTH_COMPONENT, GL_FLOAT, depths.data());
      int wrong = 0, pixels = 0;
      for (int y = 0; y < kHeight; y += 3) {
        for (int x = 0; x < kWidth; x += 3, ++pixels) {
          const auto ground = GroundUnderCursor(x, y);
          const double depth = depths[static_cast<std::size_t>((kHeight - 1 - y) * kWidth + x)];
          const double drawn =
              kNearPlane * kFarPlane / (kFarPlane - depth * (kFarPlane - kNearPlane));
          const double found = ground ? -camera.ToEye(*ground).z : kFarPlane;
          wrong += std::abs(found - drawn) > 0.01 * drawn;
        }
      }
      EXPECT_LE(wrong, pixels / 100) << from.x << ' ' << from.z << ' ' << textured;
    }
  }
}

TEST_F(WorldPointTest, ThePointUnderAPixelIsShownAtThatPixel) {
  Frame(kLow);
  const auto ground = GroundUnderCursor(130, 200);
  ASSERT_TRUE(ground);
  const auto shown = ViewPointOf(*ground);
  ASSERT_TRUE(shown);
  EXPECT_NEAR(shown->x, 130.5f, 0.01f);
  EXPECT_NEAR(shown->y, 200.5f, 0.01f);
  EXPECT_FALSE(ViewPointOf(camera.position - camera.direction)) << "behind the camera";
}

TEST_F(WorldPointTest, WithoutAPixelOfTheViewThereIsNoPoint) {
  Frame(kFly);
  for (const auto& [x, y] : {std::pair{-1, 5}, {5, -1}, {kWidth, 5}, {5, kHeight}})
    EXPECT_FALSE(WorldPointUnderCursor(x, y)) << x << ' ' << y;
  scripted::script.makeContextCurrent = nullptr;
  EXPECT_FALSE(WorldPointUnderCursor(5, 5));
}

}  // namespace
}  // namespace mw
