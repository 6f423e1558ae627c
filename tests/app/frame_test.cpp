#include "app/frame.h"

#include <GL/gl.h>
#include <gmock/gmock.h>
#include <utility>

#include "app/shell_fixture.h"
#include "support/gl_context.h"

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

TEST_F(ShellTest, AfterARestAFrameCountsAsAShortOne) {
  if (!OpenTestGl(20, 20)) GTEST_SKIP() << TestGlError();
  editor.browserPreviewActive = true;  // only the time matters here
  RenderFrame(1000);
  for (const auto& [now, seconds] : {std::pair{1001u, 0.01f}, {1251u, 0.25f}, {61251u, 0.1f}}) {
    RenderFrame(now);
    EXPECT_FLOAT_EQ(editor.frameSeconds, seconds);
  }
}

}  // namespace
}  // namespace mw
