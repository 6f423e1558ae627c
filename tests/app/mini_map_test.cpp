#include "app/mini_map.h"

#include <gtest/gtest.h>

#include "app/shell_fixture.h"

namespace mw {
namespace {

class MiniMapTest : public ShellTest {
 protected:
  bool IsYellow(int x, int y) {
    PaintMiniMap(pixels);
    const std::uint8_t* pixel = &pixels[static_cast<std::size_t>(y * kMiniMapSize + x) * 3];
    return pixel[0] == 255 && pixel[1] == 255 && pixel[2] == 0;
  }
  MiniMapPixels pixels;
};

TEST_F(MiniMapTest, TheMarkerStandsWhereAClickPutsTheCamera) {
  for (const int size : {256, 512, 1024}) {
    modConfig.MaterialSize = size;
    modConfig.WorldSize = size * 4;
    MoveCameraToMiniMapPixel(40, 90);
    EXPECT_TRUE(IsYellow(40, 90)) << size;
    EXPECT_FALSE(IsYellow(40, 70)) << size;
  }
}

TEST_F(MiniMapTest, ThePictureIsMirroredAndClicksAreClampedToIt) {
  camera.position.y = 77;
  MoveCameraToMiniMapPixel(-30, -5);
  EXPECT_EQ(camera.position, (Vector3{1024, 77, 1024})) << "top left is the far corner";
  MoveCameraToMiniMapPixel(500, 128);
  EXPECT_EQ(camera.position, (Vector3{0, 77, 0}));
}

TEST_F(MiniMapTest, TheLineShowsTheDirectionWithoutMovingTheSquare) {
  MoveCameraToMiniMapPixel(60, 60);
  camera.direction.Set(0, 0, 1);
  EXPECT_TRUE(IsYellow(61, 52)) << "towards larger z is up in the picture";
  camera.direction.Set(1, 0, 0);
  EXPECT_FALSE(IsYellow(61, 52));
  EXPECT_TRUE(IsYellow(52, 61));
  EXPECT_TRUE(IsYellow(60, 60));
}

TEST_F(MiniMapTest, SurvivesALevelSizeThatIsNotSet) {
  modConfig.MaterialSize = 0;
  MoveCameraToMiniMapPixel(10, 10);
  EXPECT_FALSE(IsYellow(64, 64));
}

TEST_F(MiniMapTest, HeightsArePixelsCountedFromTheFarCorner) {
  SetMiniMapPixel(1, 2, 200);
  SetMiniMapPixel(0, 5, 99);  // falls outside
  PaintMiniMap(pixels);
  EXPECT_EQ(pixels[(126 * kMiniMapSize + 127) * 3], 200);
}

}  // namespace
}  // namespace mw
