#include "terrain/terrain.h"

#include <gtest/gtest.h>

#include "core/camera.h"
#include "core/hooks.h"
#include "data/level_archive_test.h"
#include "data/load_report.h"
#include "data/open_level.h"
#include "terrain/mini_map_picture.h"

namespace mw {
namespace {

// A level of 256 samples, 4 world units apart, with its archive open.
class TerrainTest : public LevelArchiveTest {
 protected:
  TerrainTest() {
    modConfig.MaterialSize = 256;
    modConfig.WorldSize = 1024;
    modConfig.HeightScale = 0.5f;
    CreateTerrain();
    InitGrid();
  }
  ~TerrainTest() override { DestroyTerrain(); }

  // A height map in which every sample has a value of its own, as far as 16 bits go.
  static std::string DistinctHeightmap() {
    std::string file(256 * 256 * 2, '\0');
    for (std::size_t sample = 0; sample < file.size() / 2; ++sample) {
      file[sample * 2] = static_cast<char>(sample & 0xFF);
      file[sample * 2 + 1] = static_cast<char>(sample >> 8);
    }
    return file;
  }
  static float& Height(int i, int j) { return terrain.grid[i][j].h; }
};

TEST_F(TerrainTest, CellSizeIsAWholeNumberOfUnits) {
  EXPECT_EQ(terrain.cellSize, 4);
  EXPECT_EQ(terrain.tilesPerSide, 4);

  modConfig.MaterialSize = 512;
  modConfig.WorldSize = 2050;
  InitGrid();
  EXPECT_EQ(terrain.cellSize, 4) << "2050 / 512 is cut";
  EXPECT_EQ(terrain.tilesPerSide, 8);
  EXPECT_EQ(terrain.grid[512][3].x, 2048);
  EXPECT_EQ(terrain.grid[512][3].z, 12);
}

TEST_F(TerrainTest, ANewGridIsFlatWithNothingSelected) {
  SetHeight(5, 5, 20);
  terrain.grid[5][5].selected = 1;
  terrain.grid[5][6].weight = 2;
  terrain.selectionBox = {4, 6, 4, 6};
  InitGrid();
  EXPECT_EQ(Height(5, 5), 127);
  EXPECT_EQ(terrain.grid[5][5].selected, 0);
  EXPECT_EQ(terrain.grid[5][6].weight, 0);
  EXPECT_EQ(terrain.selectionBox.SelMinRow, 1000);
  EXPECT_EQ(terrain.selectionBox.SelMaxCol, 0);
}

TEST_F(TerrainTest, FileRowsRunAlongTheColumnsOfTheGrid) {
  Put("heightmap.raw", DistinctHeightmap());
  ASSERT_TRUE(LoadHeightBuffer());
  LoadHeightsFromBuffer();
  EXPECT_EQ(Height(256, 0), 0) << "first sample of the file";
  EXPECT_EQ(Height(1, 0), 255.0f / 256) << "last sample of the first row";
  EXPECT_EQ(Height(256, 1), 1) << "first sample of the second row";
  EXPECT_EQ(Height(1, 255), 65535.0f / 256) << "last sample";
  EXPECT_EQ(Height(0, 0), 127) << "row 0 carries no data";
}

TEST_F(TerrainTest, SavingWithoutAnEditGivesTheSameFile) {
  const std::string file = DistinctHeightmap();
  Put("heightmap.raw", file);
  LoadHeightBuffer();
  LoadHeightsFromBuffer();
  EXPECT_TRUE(SaveHeightmap());
  EXPECT_TRUE(Get("heightmap.raw") == file);
}

TEST_F(TerrainTest, HeightsBeyondTheFileFormatAreLimitedWhenSaved) {
  Height(256, 0) = 256;
  Height(255, 0) = -7;
  Height(254, 0) = 1e20f;
  EXPECT_TRUE(SaveHeightmap());
  EXPECT_EQ(Get("heightmap.raw").substr(0, 8), std::string("\xFF\xFF\0\0\xFF\xFF\0\x7F", 8));
}

TEST_F(TerrainTest, SamplesThatTheFileLacksStayFlat) {
  Put("heightmap.raw",
      DistinctHeightmap().substr(0, 256 * 2 + 3));  // one row, one sample and a half
  ASSERT_TRUE(LoadHeightBuffer());
  LoadHeightsFromBuffer();
  EXPECT_EQ(Height(1, 0), 255.0f / 256);
  EXPECT_EQ(Height(256, 1), 1);
  EXPECT_EQ(Height(255, 1), 127);
  EXPECT_EQ(Height(1, 255), 127);
}

TEST_F(TerrainTest, AMissingHeightMapIsToldAndLeavesAFlatGrid) {
  BeginLoadReport();
  EXPECT_FALSE(LoadHeightBuffer());
  EXPECT_EQ(openLevel.loadReport.lines.at(0),
            "Can't Find The Height Map! (The height map, heightmap.raw, is missing.)");
  ClearLoadReport();
  LoadHeightsFromBuffer();
  EXPECT_EQ(Height(1, 0), 127);
}

TEST_F(TerrainTest, LoadingPaintsTheMiniMapAsSettingEveryHeightInFileOrderWould) {
  int repaints = 0;
  hooks.invalidateMiniMap = [&] { ++repaints; };
  Put("heightmap.raw", DistinctHeightmap());
  LoadHeightBuffer();
  LoadHeightsFromBuffer();
  const auto loaded = terrain.miniMap.grey;
  EXPECT_EQ(repaints, 1);

  terrain.miniMap = MiniMapPicture{};
  for (int r = 0; r < 256; ++r) {
    for (int c = 0; c < 256; ++c) SetHeight(256 - c, r, Height(256 - c, r));
  }
  EXPECT_TRUE(terrain.miniMap.grey == loaded);
}

TEST_F(TerrainTest, SettingAHeightLimitsItAndShowsItOnTheMiniMap) {
  SetHeight(20, 30, 300);
  EXPECT_EQ(Height(20, 30), 256);
  SetHeight(20, 30, -1);
  EXPECT_EQ(Height(20, 30), 0);
  SetHeight(20, 30, 200.9f);
  EXPECT_EQ(Height(20, 30), 200.9f);
  EXPECT_EQ(terrain.miniMap.grey[(128 - 15) * 128 + (128 - 10)], 200);

  SetHeight(-1, 0, 1);
  SetHeight(0, kGridCapacity, 1);  // outside the grid: nothing happens
}

TEST_F(TerrainTest, ATerrainTooSmallForTheMiniMapIsNotPainted) {
  modConfig.MaterialSize = 64;
  InitGrid();
  terrain.heightBuffer.assign(64 * 64 * 2, 1);
  LoadHeightsFromBuffer();
  SetHeight(10, 10, 5);
  EXPECT_TRUE(terrain.miniMap.grey == MiniMapPicture{}.grey);
}

TEST_F(TerrainTest, TheMeanTakesOnlyNeighboursThatCarryData) {
  Height(2, 0) = 10;
  Height(1, 1) = 20;
  Height(0, 0) = 1000;  // row 0 carries no data
  EXPECT_EQ(AverageOfNeighbours(1, 0), 15);
  Height(255, 255) = 40;
  Height(256, 254) = 60;
  EXPECT_EQ(AverageOfNeighbours(256, 255), 50);
  Height(9, 9) = 99;  // its own height does not count
  EXPECT_EQ(AverageOfNeighbours(9, 9), 127);
}

TEST_F(TerrainTest, HeightUnderALevelPositionIsMirroredAndZeroOutside) {
  SetHeight(10, 20, 100);
  EXPECT_EQ(HeightAt(1024 - 41, 83), 50);
  SetHeight(256, 20, 80);
  EXPECT_EQ(HeightAt(1022, 83), 40) << "the last cell is drawn with the heights of row 256";
  EXPECT_EQ(HeightAt(-100, 83), 0);
  EXPECT_EQ(HeightAt(10, 1024), 0);
  EXPECT_EQ(HeightAt(1e30f, -1e30f), 0);
}

TEST_F(TerrainTest, TheHeightUnderTheCameraStaysInTheGrid) {
  SetHeight(256, 255, 100);
  camera.position.Set(1024, 0, 1023);
  EXPECT_EQ(HeightUnderCamera(3), 51.5f);
  SetHeight(256, 0, 40);
  camera.position.Set(-1e9f, 0, 1e9f);
  EXPECT_EQ(HeightUnderCamera(0), 20) << "the field wraps at its seams";
}

}  // namespace
}  // namespace mw
