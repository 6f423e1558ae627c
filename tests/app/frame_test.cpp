#include "app/frame.h"

#include <GL/gl.h>
#include <gmock/gmock.h>
#include <string>
#include <utility>

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

}  // namespace
}  // namespace mw
