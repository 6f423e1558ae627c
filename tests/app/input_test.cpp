// Brushes that go on while the button is held, which takes its time.
#include "app/input.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

#include "app/camera_control.h"
#include "app/editing_fixture.h"
#include "app/session.h"

namespace mw {
namespace {

class InputTest : public EditingTest {
 protected:
  // A frame with the left button held, some time after the last event.
  static void HoldForAFrame() {
    std::this_thread::sleep_for(std::chrono::milliseconds(25));
    UpdateCameraFromInput();
    FollowCamera();
  }
  static bool IsRaised(int x, int y) { return VertexUnder(x, y).h > kFlatHeight; }
};

TEST_F(InputTest, AHeldBrushGoesOnByItselfUntilItIsReleasedAnywhere) {
  const std::pair<const char*, void (*)()> releases[] = {
      {"released", [] { Release(50, 50); }},
      {"another window has it", ForgetHeldInput},
      {"another mode", [] { SetEditMode(EditMode::ObjectMapper); }},
      {"nobody told", [] { session.heldInput.leftButton = false; }}};
  for (const auto& [how, release] : releases) {
    Choose(TerrainTool::Raising);
    const float before = VertexUnder(50, 50).h;
    session.heldInput.leftButton = true;
    Press(50, 50);
    const float pressed = VertexUnder(50, 50).h;
    EXPECT_FLOAT_EQ(pressed, before + 0.01f * terrain.power) << how;
    HoldForAFrame();
    EXPECT_GT(VertexUnder(50, 50).h, pressed) << how;
    release();
    UpdateCameraFromInput();
    const float released = VertexUnder(50, 50).h;
    Show(EditMode::TerrainMapper);
    HoldForAFrame();
    EXPECT_EQ(VertexUnder(50, 50).h, released) << how;
    ForgetHeldInput();
  }
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(InputTest, ABrushActsAlongItsWayAndGoesWithTheCameraUntilItJumps) {
  Choose(TerrainTool::Raising);
  Click(20, 20);
  Press(80, 20);
  Release(80, 80);  // quicker than the mouse's moves
  Hover(50, 80);
  EXPECT_TRUE(IsRaised(20, 20) && IsRaised(80, 20) && IsRaised(80, 50) && IsRaised(80, 80));
  EXPECT_FALSE(IsRaised(50, 20) || IsRaised(50, 50) || IsRaised(60, 80));
  session.heldInput.leftButton = true;
  LookDownOn(300, 300);
  Press(50, 50);
  EXPECT_EQ(frames, 1) << "one of the new sight comes before";
  EXPECT_TRUE(IsRaised(50, 50));
  LookDownOn(340, 300);
  FollowCamera();
  HoldForAFrame();
  EXPECT_GT(terrain.grid[80][75].h, kFlatHeight) << "the way there";
  LookDownOn(500, 300);
  FollowCamera();
  HoldForAFrame();
  HoldForAFrame();
  EXPECT_TRUE(IsRaised(50, 50));
  EXPECT_EQ(terrain.grid[105][75].h, kFlatHeight) << "no way leads there";
}

}  // namespace
}  // namespace mw
