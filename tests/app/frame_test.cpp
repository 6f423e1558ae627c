// What a frame shows over the level, and beside it.
#include "app/frame.h"

#include <GL/gl.h>
#include <array>
#include <gmock/gmock.h>
#include <string>
#include <utility>

#include "app/camera_control.h"
#include "app/mini_map.h"
#include "app/session.h"
#include "app/shell_fixture.h"
#include "app/status_reading.h"
#include "bench/plain/gl_context.h"
#include "core/camera.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

TEST_F(ShellTest, TheRubberBandLeavesTheDepthThatItsCornersArePickedFrom) {
  constexpr int kWidth = 200, kHeight = 120;
  if (!OpenTestGl(kWidth, kHeight)) GTEST_SKIP() << TestGlError();
  ResizeView(kWidth, kHeight);
  glEnable(GL_DEPTH_TEST);
  glClearColor(0, 0, 0, 1);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  editor.rubberBandActive = true;
  editor.rubberBand = {50, 30, 150, 90};
  DrawOverlay();
  const DrawnPicture picture = ReadPicture();
  EXPECT_EQ(picture.rgb[(60 * kWidth + 50) * 3], 255) << "its left side is there";
  std::vector<GLfloat> depths(kWidth * kHeight);
  glReadPixels(0, 0, kWidth, kHeight, GL_DEPTH_COMPONENT, GL_FLOAT, depths.data());
  EXPECT_THAT(depths, ::testing::Each(1.0f));
}

TEST_F(ShellTest, TheStatusBarReadsTheGroundUnderTheCursorAndTheTool) {
  constexpr int kSide = 40;
  if (!OpenTestGl(kSide, kSide)) GTEST_SKIP() << TestGlError();
  ResizeView(kSide, kSide);
  camera.position.Set(502, 100, 702);  // above the middle of a cell
  camera.pitch = -90;
  camera.UpdateDirection();
  editor.lastMouseX = editor.lastMouseY = kSide / 2;
  SetHeight(126, 175, 80.5f);
  terrain.power = 7;
  terrain.brushSize = 4;
  terrain.flattenHeight = 12.5f;
  constexpr double kGround = 0.998286, kSky = 1;  // depths 50 and 350 units away
  const struct {
    double depth;
    TerrainTool tool;
    bool sampled;
  } cases[] = {{kGround, TerrainTool::PointManipulation, false},
               {kGround, TerrainTool::Raising, false},
               {kSky, TerrainTool::Smoothing, false},
               {kSky, TerrainTool::Flatten, false},
               {kSky, TerrainTool::Flatten, true}};
  for (const auto& [depth, tool, sampled] : cases) {
    glClearDepth(depth);
    glClear(GL_DEPTH_BUFFER_BIT);
    terrain.tool = tool;
    terrain.flattenSampled = sampled;
    Tell(StatusReading());
  }
  glClearDepth(1);

  UpdateStatusReading(1'000'000);
  terrain.brushSize = 5;
  UpdateStatusReading(1'000'150);  // too soon to be read
  UpdateStatusReading(1'000'200);
  editor.editMode = EditMode::ObjectMapper;
  editor.leftHeld = true;  // objects are dragged
  UpdateStatusReading(1'000'500);
  EXPECT_THAT(scripted::script.status[3],
              ::testing::ElementsAre("Size 4   Flatten to 12.50", "Size 5   Flatten to 12.50"));
}

TEST_F(ShellTest, AfterARestAFrameCountsAsAShortOne) {
  if (!OpenTestGl(20, 20)) GTEST_SKIP() << TestGlError();
  editor.browserPreviewActive = true;  // only the time matters here
  RenderFrame(1000);
  for (const auto& [now, seconds] : {std::pair{1001u, 0.01f}, {1251u, 0.25f}, {61251u, 0.1f}}) {
    RenderFrame(now);
    EXPECT_FLOAT_EQ(editor.frameSeconds, seconds);
  }
  EXPECT_EQ(scripted::script.status[2].back(), "FPS: 3") << "of the second that is over";
}

TEST_F(ShellTest, TheMaterialInHandIsShownInACornerWithAFrame) {
  constexpr int kWidth = 200, kHeight = 120;
  if (!OpenTestGl(kWidth, kHeight)) GTEST_SKIP() << TestGlError();
  ResizeView(kWidth, kHeight);
  const std::string red{"\xFF\0\0", 3}, black(3, '\0'), white(3, '\xFF');
  for (const EditMode mode : {EditMode::ObjectMapper, EditMode::MaterialMapper}) {
    const bool shown = mode == EditMode::MaterialMapper;
    editor.editMode = mode;
    glEnable(GL_DEPTH_TEST);
    glClearColor(1, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    DrawOverlay();
    const DrawnPicture picture = ReadPicture();
    const auto at = [&](int x, int y) {
      const auto first = picture.rgb.begin() + (y * kWidth + x) * 3;
      return std::string(first, first + 3);
    };
    EXPECT_EQ(at(118, 70), red);
    EXPECT_EQ(at(119, 70), shown ? black : red);
    EXPECT_EQ(at(120, 41), shown ? white : red);
    EXPECT_EQ(at(183, 103), shown ? white : red);
    EXPECT_EQ(at(184, 104), shown ? black : red);
    EXPECT_EQ(at(185, 70), red);
  }
}

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
