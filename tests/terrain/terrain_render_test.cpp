#include "terrain/terrain_render.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <climits>
#include <cmath>

#include "core/camera.h"
#include "support/test.h"
#include "terrain/terrain.h"
#include "terrain/terrain_picture_test.h"

namespace mw {
namespace {

class TerrainRenderTest : public TerrainPictureTest {
 protected:
  // The landscape anew, seen by a sculpting tool that is nowhere.
  static void StartAnew(int size = 512) {
    MakeLandscape(size);
    terrain.tool = TerrainTool::Smoothing;
  }
  template <int x, int y>
  static void MoveTiles() {
    modConfig.TexOffsetX = x, modConfig.TexOffsetY = y;
  }
  // Points that are selected and weighed around a camera close by.
  static void MarkPoints() {
    InitGrid();
    terrain.tool = TerrainTool::PointManipulation;
    terrain.grid[250][258].selected = 1;
    terrain.grid[251][258].weight = 3;
  }
  static constexpr SceneCamera kCloseBy{1000, 90, 1000, -25, 180},
      kOverMissingTile{800, 200, 1150, -90, 180}, kOverLastColumns{3000, 200, 3900, -60, 180};
};

TEST_F(TerrainRenderTest, EveryDisplayModeLooksAsDrawnCellByCell) {
  const std::vector<SceneCamera> all(std::begin(kCameras), std::end(kCameras));
  const struct {
    const char* name;
    void (*prepare)();
    std::vector<SceneCamera> cameras;
  } grounds[] = {
      {"sculpting", [] {}, all},
      {"point tool", [] { terrain.tool = TerrainTool::PointManipulation; }, all},
      {"marked points", MarkPoints, {kCloseBy}},
      {"flat ground", InitGrid, {kTopDown}},
      {"another height scale", [] { modConfig.HeightScale = 0.4f; }, {kFly}},
      {"small level", [] { StartAnew(256); }, {{500, 120, 500, -25, 180}}},
      {"large level, beyond the tile table", [] { StartAnew(1024); }, {kOverLastColumns}},
      {"missing tile", [] {}, {kOverMissingTile}},
      {"moved tiles", MoveTiles<1, 2>, {kFly, kTopDown}},
      {"tiles moved back", MoveTiles<-1, -3>, {kFly, kTopDown}},
      {"tiles moved out of reach", MoveTiles<INT_MIN, INT_MAX>, {kFly, kTopDown}},
      {"relief shading of flat ground",
       [] { InitGrid(), editor.ReliefShading = true; },
       {kTopDown}},
  };
  for (const auto& [name, prepare, cameras] : grounds) {
    StartAnew();
    prepare();
    for (std::size_t mode = 0; mode < std::size(kDisplayModes); ++mode) {
      kDisplayModes[mode]();
      for (const SceneCamera& from : cameras) {
        SCOPED_TRACE(testing::Message()
                     << name << ", mode " << mode << ", from " << from.x << ", " << from.z);
        ExpectSamePicture(from);
      }
    }
  }
}

TEST_F(TerrainRenderTest, MarksAndBrushesHaveTheirColours) {
  struct Colour {
    int red, green, blue;
  };
  constexpr Colour kRed{255, 0, 0}, kBlue{0, 0, 255}, kYellow{255, 255, 0}, kOrange{255, 128, 0},
      kMagenta{255, 0, 255}, kLime{128, 255, 0}, kBlack{0, 0, 0}, kLastTile{90, 250, 120};
  const auto count = [](const SceneCamera& from, const Colour& colour) {
    modConfig.WaterLevel = -1000;
    return CountColour(Frame(from), colour.red, colour.green, colour.blue);
  };
  ShowTextured();
  EXPECT_EQ(count(kFly, kOrange), 0u);
  EXPECT_GT(count(kOverMissingTile, kMagenta), 1000u);
  terrain.pick = {1003.5f, 80, 1080.5f, false};
  EXPECT_GT(count(kFly, kRed), 20u);
  terrain.pick.x = 1000.5f;
  EXPECT_EQ(count(kFly, kRed), 0u) << "in the camera's own unit";
  terrain.tool = TerrainTool::Road;
  terrain.roadPoints[0] = {990, 110, 1080};
  terrain.roadPoints[1] = {1020, 110, 1090};
  terrain.roadPointCount = 2;
  EXPECT_GT(count(kFly, kMagenta), 500u) << "posts";
  MoveTiles<5, 5>();
  EXPECT_EQ(count(kLastCorner, kLastTile), 0u) << "no tile is left here";
  StartAnew(1024);
  EXPECT_GT(count(kOverLastColumns, kMagenta), 1000u) << "beyond the tile table";

  StartAnew();
  ShowWireframe();
  EXPECT_GT(count(kFly, kOrange), 100u) << "steep cells";
  terrain.brushSize = 6;
  terrain.pick = {1014, 60, 1018, false};
  EXPECT_GT(count(kTopDown, kYellow), 100u) << "the brush's edge";
  terrain.pick.missed = true;
  EXPECT_EQ(count(kTopDown, kYellow), 0u);
  InitGrid();
  EXPECT_GT(count(kTopDown, kBlack), 2000u) << "lines of flat ground";

  MarkPoints();
  ShowTextured();
  EXPECT_GT(count(kCloseBy, kRed), 10u);
  EXPECT_GT(count(kCloseBy, kLime), 10u) << "half of a smoothing range of 6";
  terrain.autoSmoothing = 0;
  EXPECT_EQ(count(kCloseBy, kLime), 0u);

  InitGrid();
  editor.ShowTextures = false;
  terrain.tool = TerrainTool::Flatten;
  terrain.brushSize = 4;
  terrain.flattenSampled = 1;
  terrain.pick = {1001, 76, 1061, false};
  EXPECT_GT(count(kFly, kRed), 500u);
  ExpectSamePicture(kFly);
  editor.ctrlHeld = true;
  EXPECT_EQ(count(kFly, kRed), 0u);
  EXPECT_GT(count(kFly, kBlue), 20u) << "the cell that it samples";
}

TEST_F(TerrainRenderTest, AfterEditsThePictureIsThatOfTheWholeTerrainDrawnAnew) {
  for (const bool relief : {false, true}) {
    editor.ReliefShading = relief;
    for (const auto& show : kDisplayModes) {
      for (const SceneCamera& from : {kFly, kFirstCorner, kLastCorner}) {
        StartAnew();
        show();
        const DrawnPicture before = Frame(from);
        const int row = static_cast<int>(from.x / 4), column = static_cast<int>(from.z / 4);
        for (int i = std::max(row - 12, 1); i <= std::min(row + 12, 512); ++i) {
          for (int j = std::max(column - 12, 0); j <= std::min(column + 40, 511); ++j)
            SetHeight(i, j, terrain.grid[i][j].h + 12 * std::sin(static_cast<float>(i * j)));
        }
        SetHeight(512, 5, 180);  // drawn on both sides of a seam
        SetHeight(500, 0, 180);
        const DrawnPicture edited = Frame(from);
        EXPECT_GT(DifferentPixels(before, edited, kShades), 1000u);
        MarkAllTerrainChanged();
        EXPECT_EQ(DifferentPixels(edited, Frame(from)), 0u);
        if (!relief) ExpectSamePicture(from);
      }
    }
  }
}

TEST_F(TerrainRenderTest, ReliefShadingDarkensSlopesOfTexturedGroundOnly) {
  modConfig.WaterLevel = -1000;
  for (const bool textured : {false, true}) {
    editor.ShowTextures = textured, editor.ShowGrid = !textured;
    double brightness[2] = {};
    for (const bool relief : {false, true}) {
      editor.ReliefShading = relief;
      for (const int shade : Frame(kTopDown).rgb) brightness[relief] += shade;
    }
    EXPECT_EQ(brightness[1] < 0.95 * brightness[0], textured);
  }
}

TEST_F(TerrainRenderTest, TheObjectMapperShowsThePlainGround) {
  terrain.tool = TerrainTool::Flatten;
  terrain.pick = {1000, 60, 1030, false};
  for (const auto& show : kDisplayModes) {
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
  editor.cameraMode = CameraMode::OnTerrain;
  BeginScene(kFly, kWidth, kHeight);
  EXPECT_FLOAT_EQ(camera.position.y, (terrain.grid[250][250].h + 3) * 0.6f);
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
    for (const auto& [name, expected] : {std::pair{GL_ARRAY_BUFFER_BINDING, 0},
                                         {GL_ELEMENT_ARRAY_BUFFER_BINDING, 0},
                                         {GL_MODELVIEW_STACK_DEPTH, 1},
                                         {GL_LINE_WIDTH, 1}}) {
      GLint value = -1;
      glGetIntegerv(static_cast<GLenum>(name), &value);
      EXPECT_EQ(value, expected) << name;
    }
    GLfloat colour[4] = {};
    glGetFloatv(GL_CURRENT_COLOR, colour);
    EXPECT_THAT(colour, testing::ElementsAre(1, 1, 1, 1));
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
  }
}

}  // namespace
}  // namespace mw
