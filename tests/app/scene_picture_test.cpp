// Pictures that are put together of tiles.
#include "app/scene_picture.h"

#include <GL/gl.h>
#include <algorithm>
#include <array>

#include "app/frame.h"
#include "app/shell_fixture.h"
#include "bench/plain/gl_context.h"
#include "terrain/terrain_render.h"

namespace mw {
namespace {

using Pixel = std::array<int, 3>;

class ScenePictureTest : public ShellTest {
 protected:
  static constexpr int kWidth = 160, kHeight = 120;

  ScenePictureTest() {
    for (int i = 10; i < 20; ++i) SetHeight(i, 30, 200);  // a steep wall, which shows in orange
    camera.position.Set(60, 90, 60);
    camera.pitch = -30;
    camera.UpdateDirection();
  }
  void SetUp() override {
    if (!OpenTestGl(kWidth, kHeight)) GTEST_SKIP() << TestGlError();
    SetUpGl(kWidth, kHeight);
  }
  void TearDown() override {
    ReleaseTerrainBuffers();
    ShellTest::TearDown();
  }
  static void SetUpGl(int width, int height) {
    ResizeView(width, height);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_DITHER);
  }
  static Pixel At(const DrawnPicture& picture, int x, int y) {
    const auto* const rgb = &picture.rgb[static_cast<std::size_t>(y * picture.width + x) * 3];
    return {rgb[0], rgb[1], rgb[2]};
  }
  // Of the whole picture, by its tiles; each is the lower left part of what is drawn into.
  static DrawnPicture Draw(PictureOf what, int scale) {
    const PictureSize size = SizeOfPicture(what, scale);
    DrawnPicture picture{size.width, size.height, {}};
    picture.rgb.resize(static_cast<std::size_t>(size.width * size.height) * 3);
    for (const auto& tile : TilesOfPicture(what, size)) {
      EXPECT_TRUE(OpenTestGl(tile.width, tile.height));
      DrawPictureTile(what, size, tile);
      const DrawnPicture drawn = ReadPicture();
      for (int y = 0; y < tile.height; ++y) {
        const auto row = drawn.rgb.begin() + std::ptrdiff_t{y} * tile.width * 3;
        std::copy(
            row, row + std::ptrdiff_t{tile.width} * 3,
            picture.rgb.begin() + (std::ptrdiff_t{tile.top + y} * size.width + tile.left) * 3);
      }
    }
    return picture;
  }
};

TEST_F(ScenePictureTest, TheViewIsFinerAndHasNoSeams) {
  const DrawnPicture picture = Draw(PictureOf::View, 2);
  ASSERT_TRUE(OpenTestGl(kWidth * 2, kHeight * 2));
  SetUpGl(kWidth * 2, kHeight * 2);
  terrain.waterScroll = 0;
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glLoadIdentity();
  PlaceCamera();
  DrawScene();
  const DrawnPicture atOnce = ReadPicture();
  EXPECT_LT(DifferentPixels(picture, atOnce, 8), atOnce.rgb.size() / 3 / 200);
}

TEST_F(ScenePictureTest, TheWholeLevelIsTurnedLikeTheMiniMapAndDisturbsNothing) {
  terrain.pick = {60, 60, 60, false};
  terrain.tool = TerrainTool::Raising;
  const Vector3 place = camera.position;
  const DrawnPicture picture = Draw(PictureOf::WholeLevel, 1);
  ASSERT_EQ(picture.width, 1024);  // a pixel for a unit
  int left = 1024, right = 0, top = 1024, bottom = 0;
  for (int y = 0; y < 1024; ++y) {
    for (int x = 0; x < 1024; ++x) {
      const Pixel pixel = At(picture, x, y);
      if (pixel[0] < pixel[2] + 50) continue;
      left = std::min(left, x), right = std::max(right, x);
      top = std::min(top, y), bottom = std::max(bottom, y);
    }
  }
  // Rows 9 to 20 of 4 units from the right, columns 29 to 31 from the bottom.
  EXPECT_NEAR(left, 1024 - 20 * 4, 2);
  EXPECT_NEAR(right, 1024 - 9 * 4, 2);
  EXPECT_NEAR(top, 1024 - 31 * 4, 2);
  EXPECT_NEAR(bottom, 1024 - 29 * 4, 2);
  EXPECT_EQ(camera.position, place);
  EXPECT_FALSE(terrain.pick.missed || editor.cameraMode == CameraMode::TopDown);
}

}  // namespace
}  // namespace mw
