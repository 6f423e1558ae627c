#include "app/mini_map.h"

#include <GL/gl.h>
#include <array>
#include <gtest/gtest.h>

#include "app/camera_control.h"
#include "app/frame.h"
#include "app/session.h"
#include "app/shell_fixture.h"
#include "bench/plain/gl_context.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

using Pixel = std::array<int, 3>;
constexpr Pixel kBlack{0, 0, 0}, kRed{255, 0, 0}, kYellow{255, 255, 0};
constexpr Pixel Grey(int shade) { return {shade, shade, shade}; }

// The Mini-Map alone in the view, in a window with a red border of two pixels.
class MiniMapTest : public ShellTest {
 protected:
  static constexpr int kBorder = 2, kLeft = 7, kTop = 11;

  void SetUp() override {
    constexpr int kSide = kMiniMapSize + 2 * kBorder;
    if (!OpenTestGl(kLeft + kSide + 9, kTop + kSide + 5)) GTEST_SKIP() << TestGlError();
    ResizeView(kLeft + kSide + 9, kTop + kSide + 5);
    session.miniMapWindow = {kLeft, kTop, kSide, kSide, kBorder, kBorder, kMiniMapSize, {}, true};
    for (int i = 0; i < kSide * kSide; ++i) {
      session.miniMapWindow.pixels.insert(session.miniMapWindow.pixels.end(), {255, 0, 0});
    }
  }
  ~MiniMapTest() override { ReleaseMiniMap(); }
  // Of the picture of the heights.
  static Pixel PixelAt(int x, int y) {
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    DrawOverlay();
    const DrawnPicture view = ReadPicture();
    const int place = (kTop + kBorder + y) * view.width + kLeft + kBorder + x;
    const std::uint8_t* pixel = &view.rgb[static_cast<std::size_t>(place) * 3];
    return {pixel[0], pixel[1], pixel[2]};
  }
};

TEST_F(MiniMapTest, TheMarkerStandsWhereAClickPutsTheCameraAndGoesWithIt) {
  for (const int size : {256, 512, 1024}) {
    modConfig.MaterialSize = size;
    modConfig.WorldSize = size * 4;
    MoveCameraToMiniMapPixel(40, 90);
    EXPECT_EQ(PixelAt(40, 90), kYellow) << size;
    EXPECT_NE(PixelAt(40, 70), kYellow) << size;
    const auto pixel = static_cast<float>(size) / 32;  // in world units
    MoveCameraForward(-20 * pixel);
    EXPECT_EQ(PixelAt(40, 70), kYellow) << size;
    EXPECT_NE(PixelAt(40, 90), kYellow) << size;
    StrafeCamera(20 * pixel);
    EXPECT_EQ(PixelAt(60, 70), kYellow) << size;
  }
  modConfig.MaterialSize = 0;  // no size is known
  MoveCameraToMiniMapPixel(10, 10);
  EXPECT_NE(PixelAt(64, 64), kYellow);
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
  EXPECT_EQ(PixelAt(61, 52), kYellow) << "towards larger z is up in the picture";
  camera.direction.Set(1, 0, 0);
  EXPECT_NE(PixelAt(61, 52), kYellow);
  EXPECT_EQ(PixelAt(52, 61), kYellow);
  EXPECT_EQ(PixelAt(60, 60), kYellow);
}

TEST_F(MiniMapTest, ItsWindowFramesThePictureWhoseHeightsAreCountedFromTheFarCorner) {
  camera.position.Set(900, 0, 900);
  EXPECT_EQ(PixelAt(127, 126), Grey(127));
  terrain.miniMap.SetPixel(1, 2, 200);
  terrain.miniMap.SetPixel(1, 100, 90);
  terrain.miniMap.SetPixel(0, 5, 99);  // falls outside
  EXPECT_EQ(PixelAt(127, 126), Grey(200));
  EXPECT_EQ(PixelAt(127, 28), Grey(90)) << "edits after the first frame";
  terrain.miniMap = MiniMapPicture{};
  EXPECT_EQ(PixelAt(127, 126), Grey(127)) << "another level";
  EXPECT_EQ(PixelAt(-kBorder - 1, 50), kBlack);
  EXPECT_EQ(PixelAt(-kBorder, 50), kRed);
  EXPECT_EQ(PixelAt(kMiniMapSize + kBorder - 1, kMiniMapSize + kBorder - 1), kRed);
  EXPECT_EQ(PixelAt(kMiniMapSize + kBorder, 50), kBlack);
  session.miniMapWindow.left += 3;
  EXPECT_EQ(PixelAt(0, 50), kBlack) << "nothing is left where it was";
}

}  // namespace
}  // namespace mw
