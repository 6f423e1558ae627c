#include "terrain/terrain_render.h"

#include <GL/gl.h>
#include <climits>
#include <cmath>
#include <numeric>

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
  static constexpr auto kPointAt = [](TerrainTool tool, int brushSize, PickState pick) {
    terrain.tool = tool;
    terrain.brushSize = brushSize;
    terrain.pick = pick;
  };
  static constexpr auto kFlattenAt = [](bool ctrl) {
    InitGrid();
    terrain.flattenSampled = 1;
    editor.ctrlHeld = ctrl;
    kPointAt(TerrainTool::Flatten, 4, {1001, 76, 1061, false});
    editor.ShowGrid = editor.ShowTextures = false;
  };
  constexpr std::size_t kAny = SIZE_MAX;
  const struct {
    const char* name;
    void (*prepare)();
    SceneCamera from;
    int red, green, blue;
    std::size_t least, most;
  } rows[] = {
      {"lines of flat ground", [] { InitGrid(), ShowWireframe(); }, kTopDown, 0, 0, 0, 2000, kAny},
      {"steep cells", ShowWireframe, kFly, 255, 128, 0, 100, kAny},
      {"steep cells with textures", ShowTextured, kFly, 255, 128, 0, 0, 0},
      {"a missing tile", [] {}, kOverMissingTile, 255, 0, 255, 1000, kAny},
      {"beyond the tile table", [] { StartAnew(1024), modConfig.WaterLevel = -1000; },
       kOverLastColumns, 255, 0, 255, 1000, kAny},
      {"where no tile is left", MoveTiles<5, 5>, kLastCorner, 90, 250, 120, 0, 0},
      {"edge of a brush",
       [] {
         ShowWireframe(), kPointAt(TerrainTool::Raising, 6, {1014, 60, 1018, false});
       },
       kTopDown, 255, 255, 0, 100, kAny},
      {"edge of a brush that is nowhere",
       [] {
         ShowWireframe(), kPointAt(TerrainTool::Raising, 6, {1014, 60, 1018, true});
       },
       kTopDown, 255, 255, 0, 0, 0},
      {"brush",
       [] {
         kPointAt(TerrainTool::Raising, 1, {1003.5f, 80, 1080.5f, false});
       },
       kFly, 255, 0, 0, 20, kAny},
      {"brush in the camera's own unit",
       [] {
         kPointAt(TerrainTool::Raising, 1, {1000.5f, 80, 1080.5f, false});
       },
       kFly, 255, 0, 0, 0, 0},
      {"selected point", MarkPoints, kCloseBy, 255, 0, 0, 10, kAny},
      {"half of a smoothing range of 6", MarkPoints, kCloseBy, 128, 255, 0, 10, kAny},
      {"smoothing range without smoothing", [] { MarkPoints(), terrain.autoSmoothing = 0; },
       kCloseBy, 128, 255, 0, 0, 0},
      {"posts of a road",
       [] {
         terrain.tool = TerrainTool::Road;
         terrain.roadPoints[0] = {990, 110, 1080};
         terrain.roadPoints[1] = {1020, 110, 1090};
         terrain.roadPointCount = 2;
       },
       kFly, 255, 0, 255, 500, kAny},
      {"flatten brush", [] { kFlattenAt(false); }, kFly, 255, 0, 0, 500, kAny},
      {"flatten brush that samples", [] { kFlattenAt(true); }, kFly, 255, 0, 0, 0, 0},
      {"its cell", [] { kFlattenAt(true); }, kFly, 0, 0, 255, 20, kAny},
  };
  for (const auto& row : rows) {
    StartAnew();
    modConfig.WaterLevel = -1000;
    ShowTextured();
    row.prepare();
    const std::size_t count = CountColour(Frame(row.from), row.red, row.green, row.blue);
    EXPECT_GE(count, row.least) << row.name;
    EXPECT_LE(count, row.most) << row.name;
    if (terrain.tool == TerrainTool::Flatten) ExpectSamePicture(row.from);
  }
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
  const auto brightness = [](void (*show)(), bool relief) {
    show();
    editor.ReliefShading = relief;
    const DrawnPicture picture = Frame(kTopDown);
    return std::accumulate(picture.rgb.begin(), picture.rgb.end(), 0.0);
  };
  EXPECT_LT(brightness(ShowTextured, true), 0.95 * brightness(ShowTextured, false));
  EXPECT_EQ(brightness(ShowWireframe, true), brightness(ShowWireframe, false));
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

TEST_F(TerrainRenderTest, ObjectsAreDrawnIntoTheFrameOnlyOnRequest) {
  int calls = 0;
  hooks.drawStaticObjects = [&] { ++calls; };
  for (const bool requested : {false, true}) {
    editor.drawObjectsInMappers = requested;
    Frame(kFly);
    EXPECT_EQ(calls, requested);
  }
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
