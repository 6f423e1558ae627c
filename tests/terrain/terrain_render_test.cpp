#include "terrain/terrain_render.h"

#include <GL/gl.h>
#include <climits>
#include <cmath>
#include <gmock/gmock.h>
#include <numeric>

#include "core/camera.h"
#include "core/hooks.h"
#include "terrain/terrain.h"
#include "terrain/terrain_picture_test.h"

namespace mw {
namespace {

using TerrainRenderTest = TerrainPictureTest;

TEST_F(TerrainRenderTest, EveryDisplayModeLooksAsDrawnCellByCell) {
  const SceneCamera cameras[] = {kFly,        kLow,     kTopDown,    kFirstCorner,
                                 kLastCorner, kOutside, kUnderground};
  for (const TerrainTool tool : {TerrainTool::Smoothing, TerrainTool::PointManipulation}) {
    terrain.tool = tool;
    for (std::size_t index = 0; index < std::size(cameras); ++index) {
      SCOPED_TRACE("camera " + std::to_string(index));
      ShowWireframe();
      ExpectSamePicture(cameras[index]);
      ShowTextured();
      ExpectSamePicture(cameras[index]);
      ShowTexturedWireframe();
      ExpectSamePicture(cameras[index]);
    }
  }
}

TEST_F(TerrainRenderTest, FlatGroundSeenFromAboveKeepsItsGridLines) {
  InitGrid();
  ShowWireframe();
  EXPECT_GT(CountColour(Frame(kTopDown), 0, 0, 0), 2000u);
  ExpectSamePicture(kTopDown);
}

TEST_F(TerrainRenderTest, SteepCellsAreOrangeOnlyWithoutTextures) {
  terrain.waterScroll = 0;
  modConfig.WaterLevel = -1000;
  ShowWireframe();
  EXPECT_GT(CountColour(Frame(kFly), 255, 128, 0), 100u);
  ShowTextured();
  EXPECT_EQ(CountColour(Frame(kFly), 255, 128, 0), 0u);
}

TEST_F(TerrainRenderTest, TilesMoveWithTheOffsetsAndMissingOnesShowNoSurface) {
  modConfig.WaterLevel = -1000;
  ShowTextured();
  const SceneCamera overMissingTile{800, 200, 1150, -90, 180};
  EXPECT_GT(CountColour(Frame(overMissingTile), 255, 0, 255), 1000u);
  ExpectSamePicture(overMissingTile);
  for (const auto& [x, y] :
       {std::pair{1, 2}, std::pair{-1, -3}, std::pair{INT_MIN, INT_MAX}, std::pair{5, 5}}) {
    modConfig.TexOffsetX = x, modConfig.TexOffsetY = y;
    ExpectSamePicture(kFly);
    ExpectSamePicture(kTopDown);
  }
  EXPECT_EQ(CountColour(Frame(kLastCorner), 90, 250, 120), 0u) << "no tile is left here";
}

TEST_F(TerrainRenderTest, ALargeLevelShowsNoSurfaceBeyondTheTileTable) {
  MakeLandscape(1024);
  terrain.tool = TerrainTool::Raising;
  modConfig.WaterLevel = -1000;
  ShowTextured();
  const SceneCamera overLastColumns{3000, 200, 3900, -60, 180};
  EXPECT_GT(CountColour(Frame(overLastColumns), 255, 0, 255), 1000u);
  ExpectSamePicture(overLastColumns);
}

TEST_F(TerrainRenderTest, AfterEditsThePictureIsThatOfTheWholeTerrainDrawnAnew) {
  for (const auto& show : {ShowWireframe, ShowTexturedWireframe}) {
    for (const SceneCamera& from : {kFly, kFirstCorner, kLastCorner}) {
      show();
      const DrawnPicture before = Frame(from);
      const int row = static_cast<int>(from.x / 4), column = static_cast<int>(from.z / 4);
      for (int i = row - 12; i <= row + 12; ++i) {
        for (int j = column - 12; j <= column + 40; ++j) {
          if (i >= 1 && i <= 512 && j >= 0 && j < 512)
            SetHeight(i, j, terrain.grid[i][j].h + 12 * std::sin(static_cast<float>(i * j)));
        }
      }
      SetHeight(512, 5, 180);  // drawn on both sides of a seam
      SetHeight(500, 0, 180);
      const DrawnPicture edited = Frame(from);
      EXPECT_GT(DifferentPixels(before, edited, kShades), 1000u);
      MarkAllTerrainChanged();
      EXPECT_EQ(DifferentPixels(edited, Frame(from)), 0u);
      ExpectSamePicture(from);
    }
  }
}

TEST_F(TerrainRenderTest, ReliefShadingDarkensSlopesOfTexturedGroundOnlyAndFollowsEdits) {
  const auto brightness = [](const DrawnPicture& picture) {
    return std::accumulate(picture.rgb.begin(), picture.rgb.end(), 0.0);
  };
  modConfig.WaterLevel = -1000;
  ShowTextured();
  const DrawnPicture without = Frame(kTopDown);
  editor.ReliefShading = true;
  const DrawnPicture hills = Frame(kTopDown);
  EXPECT_LT(brightness(hills), 0.95 * brightness(without));
  for (const SceneCamera& from : {kFly, kFirstCorner, kLastCorner}) {
    Frame(from);
    const int row = static_cast<int>(from.x / 4), column = static_cast<int>(from.z / 4);
    for (const int step : {0, 5, 9}) {
      SetHeight(std::min(row + step, 512), std::min(column + step, 511), 140);
    }
    SetHeight(512, 5, 180);  // drawn on both sides of a seam
    SetHeight(500, 0, 180);
    const DrawnPicture edited = Frame(from);
    MarkAllTerrainChanged();
    EXPECT_EQ(DifferentPixels(edited, Frame(from)), 0u);
  }
  ShowWireframe();
  ExpectSamePicture(kFly);
  InitGrid();
  ShowTextured();
  ExpectSamePicture(kTopDown);
}

TEST_F(TerrainRenderTest, TheBrushsEdgeLiesOnTheGroundUnderTheCursorOnly) {
  modConfig.WaterLevel = -1000;
  ShowWireframe();
  terrain.brushSize = 6;
  const auto yellow = [] { return CountColour(Frame(kTopDown), 255, 255, 0); };
  const float ground = terrain.grid[254][255].h * modConfig.HeightScale;
  terrain.pick = {1014, ground, 1018, false};
  EXPECT_GT(yellow(), 100u);
  terrain.pick.missed = true;
  EXPECT_EQ(yellow(), 0u);
}

TEST_F(TerrainRenderTest, AnotherHeightScaleOrLevelSizeRedrawsEverything) {
  ShowWireframe();
  Frame(kFly);
  modConfig.HeightScale = 0.4f;
  ExpectSamePicture(kFly);
  MakeLandscape(256);
  terrain.tool = TerrainTool::Raising;
  ExpectSamePicture({500, 120, 500, -25, 180});
}

TEST_F(TerrainRenderTest, MarkersShowSelectionAndSmoothingWeight) {
  modConfig.WaterLevel = -1000;
  terrain.tool = TerrainTool::PointManipulation;
  ShowTextured();
  InitGrid();
  terrain.grid[250][258].selected = 1;
  terrain.grid[251][258].weight = 3;
  const SceneCamera closeBy{1000, 90, 1000, -25, 180};
  const DrawnPicture frame = Frame(closeBy);
  EXPECT_GT(CountColour(frame, 255, 0, 0), 10u);
  EXPECT_GT(CountColour(frame, 128, 255, 0), 10u) << "half of a smoothing range of 6";
  ExpectSamePicture(closeBy);
  terrain.autoSmoothing = 0;
  EXPECT_EQ(CountColour(Frame(closeBy), 128, 255, 0), 0u);
}

TEST_F(TerrainRenderTest, TheObjectMapperShowsThePlainGround) {
  terrain.tool = TerrainTool::Flatten;
  terrain.pick = {1000, 60, 1030, false};
  for (const auto& show : {ShowWireframe, ShowTextured, ShowTexturedWireframe}) {
    show();
    BeginScene(kFly, kWidth, kHeight);
    RenderPlainTerrain();
    const DrawnPicture frame = ReadPicture();
    BeginScene(kFly, kWidth, kHeight);
    plain::DrawPlainCells();
    ExpectSimilar(frame, ReadPicture());
    EXPECT_EQ(CountColour(frame, 255, 128, 0), 0u);
  }
}

TEST_F(TerrainRenderTest, TheViewSquareFollowsTheCameraInsideTheGrid) {
  BeginScene(kFly, kWidth, kHeight);
  EXPECT_EQ(terrain.viewSquare, (ViewSquare{175, 325, 175, 325}));
  BeginScene(kFirstCorner, kWidth, kHeight);
  EXPECT_EQ(terrain.viewSquare, (ViewSquare{0, 82, 0, 80}));
  BeginScene({2048, 50, 1e30f, 0, 0}, kWidth, kHeight);
  EXPECT_EQ(terrain.viewSquare.ViewRowEnd, 512);
  RenderTerrainMode();  // nothing is in sight; nothing outside the grid is touched
}

TEST_F(TerrainRenderTest, OnTerrainTheCameraStandsThreeHeightUnitsUp) {
  editor.cameraMode = CameraMode::OnTerrain;
  BeginScene(kFly, kWidth, kHeight);
  EXPECT_FLOAT_EQ(camera.position.y, (terrain.grid[250][250].h + 3) * 0.6f);
}

TEST_F(TerrainRenderTest, ObjectsAreDrawnIntoTheFrameOnlyOnRequest) {
  int calls = 0;
  hooks.drawStaticObjects = [&] { ++calls; };
  Frame(kFly);
  EXPECT_EQ(calls, 0);
  editor.drawObjectsInMappers = true;
  Frame(kFly);
  EXPECT_EQ(calls, 1);
}

TEST_F(TerrainRenderTest, SculptingToolsShowTheirBrushAndTheRoadToolItsPosts) {
  modConfig.WaterLevel = -1000;
  ShowTextured();
  terrain.pick = {1003.5f, 80, 1080.5f, false};
  EXPECT_GT(CountColour(Frame(kFly), 255, 0, 0), 20u);
  terrain.pick.x = 1000.5f;  // the camera's own unit
  EXPECT_EQ(CountColour(Frame(kFly), 255, 0, 0), 0u);

  terrain.tool = TerrainTool::Road;
  terrain.roadPoints[0] = {990, 110, 1080};
  terrain.roadPoints[1] = {1020, 110, 1090};
  terrain.roadPointCount = 2;
  EXPECT_GT(CountColour(Frame(kFly), 255, 0, 255), 500u);
}

TEST_F(TerrainRenderTest, WaterMultipliesWhatIsDrawnAndStartsAgainAfterOneTextureWidth) {
  modConfig.WaterLevel = 500;
  BeginScene({1000, 600, 1000, -90, 180}, kWidth, kHeight);
  RenderWater();
  const DrawnPicture overSky = ReadPicture();
  EXPECT_EQ(CountColour(overSky, 211, 237, 254), 0u);
  EXPECT_FLOAT_EQ(terrain.waterScroll, 0.0004f);

  int frames = 1;
  for (; terrain.waterScroll > 0 && frames < 5000; ++frames) RenderWater();
  EXPECT_NEAR(frames, 2500, 2);
}

TEST_F(TerrainRenderTest, AFrameLeavesGlAsItWas) {
  ShowTexturedWireframe();
  for (const TerrainTool tool :
       {TerrainTool::PointManipulation, TerrainTool::Raising, TerrainTool::Road}) {
    terrain.tool = tool;
    terrain.pick = {900.5f, 70, 1060.5f, false};
    Frame(kFly);
    for (const GLenum feature :
         {GL_TEXTURE_2D, GL_BLEND, GL_VERTEX_ARRAY, GL_COLOR_ARRAY, GL_TEXTURE_COORD_ARRAY})
      EXPECT_FALSE(glIsEnabled(feature)) << feature;
    GLint value = -1;
    glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &value);
    EXPECT_EQ(value, 0);
    glGetIntegerv(GL_ELEMENT_ARRAY_BUFFER_BINDING, &value);
    EXPECT_EQ(value, 0);
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &value);
    EXPECT_EQ(value, 1);
    GLfloat width = 0, colour[4] = {};
    glGetFloatv(GL_LINE_WIDTH, &width);
    EXPECT_EQ(width, 1);
    glGetFloatv(GL_CURRENT_COLOR, colour);
    EXPECT_THAT(colour, testing::ElementsAre(1, 1, 1, 1));
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
  }
}

}  // namespace
}  // namespace mw
