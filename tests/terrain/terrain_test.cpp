// The two grids of a level, heights and materials, and their files heightmap.raw and
// materialmap.raw.
#include "terrain/terrain.h"

#include <cmath>
#include <limits>
#include <random>

#include "core/bytes.h"
#include "data/level_archive_test.h"
#include "support/test.h"
#include "terrain/flat_ground.h"
#include "terrain/height_image.h"

namespace mw {
namespace {

// Every sample has a value of its own, as far as 16 bits go.
std::string DistinctHeightmap() {
  std::string file;
  for (int sample = 0; sample < 256 * 256; ++sample)
    file += {static_cast<char>(sample & 0xFF), static_cast<char>(sample >> 8)};
  return file;
}

// Rows and columns differ, and all 256 bytes occur, also those that are no material.
std::string DistinctMaterialMap() {
  std::string file;
  for (int cell = 0; cell < 256 * 256; ++cell) file += static_cast<char>(cell * 3 + cell / 256);
  return file;
}

class TerrainTest : public FlatGround<LevelArchiveTest> {
 protected:
  static bool LoadHeights() {
    const bool loaded = LoadHeightBuffer();
    LoadHeightsFromBuffer();
    return loaded;
  }
};

TEST_F(TerrainTest, FileRowsRunAlongTheColumnsOfTheGridsAndComeBackAsTheyWere) {
  const std::string heights = DistinctHeightmap(), materials = DistinctMaterialMap();
  Put("heightmap.raw", heights);
  Put("materialmap.raw", materials);
  EXPECT_TRUE(LoadHeights());
  const unsigned edits = materialMapper->edits;
  LoadMaterialMap();
  EXPECT_NE(materialMapper->edits, edits);
  EXPECT_EQ(repaints, 1);
  const struct {
    int i, j;
    std::size_t sample;
  } places[] = {{256, 0, 0}, {1, 0, 255}, {256, 1, 256}, {1, 255, 256 * 256 - 1}, {7, 9, 2553}};
  for (const auto& [i, j, sample] : places) {
    EXPECT_EQ(Height(i, j), static_cast<float>(sample) / 256) << sample;
    EXPECT_EQ(Material(i, j), static_cast<std::uint8_t>(materials[sample])) << sample;
  }
  EXPECT_EQ(Height(0, 0), kFlatHeight) << "row 0 carries no data";
  EXPECT_TRUE(SaveHeightmap() && SaveMaterialMap());
  EXPECT_TRUE(Get("heightmap.raw") == heights);
  EXPECT_TRUE(Get("materialmap.raw") == materials);

  const auto painted = terrain.miniMap.grey;
  terrain.miniMap = {};
  for (int r = 0; r < 256; ++r) {
    for (int c = 0; c < 256; ++c) SetHeight(256 - c, r, Height(256 - c, r));
  }
  EXPECT_TRUE(terrain.miniMap.grey == painted) << "as setting every height in file order does";
}

TEST_F(TerrainTest, WhatTheFilesLackIsFlatAndDefault) {
  Material(254, 0) = Material(1, 255) = 9;  // of the level before
  const std::size_t rowASampleAndAHalf = 256 * 2 + 3;
  Put("heightmap.raw", DistinctHeightmap().substr(0, rowASampleAndAHalf));
  Put("materialmap.raw", "\x05\x06");
  EXPECT_TRUE(LoadHeights());
  LoadMaterialMap();
  EXPECT_EQ(Height(1, 0), 255.0f / 256);
  EXPECT_EQ(Height(256, 1), 1);
  EXPECT_EQ(Height(255, 1), kFlatHeight);
  EXPECT_EQ(Height(1, 255), kFlatHeight);
  EXPECT_EQ(Materials(), "255: 0=6\n256: 0=5\n");
}

TEST_F(TerrainTest, MissingFilesAreToldAndOnlyTheLevelsCellsBecomeDefault) {
  Material(1, 0) = Material(256, 255) = 9;
  Material(0, 0) = Material(1, 256) = 7;
  BeginLoadReport();
  EXPECT_FALSE(LoadHeights());
  LoadMaterialMap();
  EXPECT_THAT(openLevel.loadReport.lines,
              testing::ElementsAre(
                  "Can't Find The Height Map! (The height map, heightmap.raw, is missing.)",
                  "Can't Find The Height Map! (The material map, materialmap.raw, is missing.)"));
  EXPECT_EQ(Heights(), "");
  EXPECT_EQ(Materials(), "0: 0=7\n1: 256=7\n");
}

TEST_F(TerrainTest, OfMaterialsThatTheFileCannotHoldTheLowByteOfTheirAmountIsSaved) {
  SetMaterial(15, 256, 1);
  SetMaterial(8, 0, 1);   // no data row: not in the file
  SetMaterial(8, -1, 0);  // outside the grid: nothing happens
  SetMaterial(8, 0, kGridCapacity);
  SetMaterial(0x80000003u, 255, 0);  // as a plug-in may leave it: the low byte of 2^31 - 3
  SetMaterial(static_cast<std::uint32_t>(-2), 254, 0);
  EXPECT_TRUE(SaveMaterialMap());
  std::string materials(256 * 256, '\0');
  materials[256] = 15;
  materials[1] = '\xFD';
  materials[2] = 2;
  EXPECT_TRUE(Get("materialmap.raw") == materials);
}

TEST_F(TerrainTest, AnImpossibleSizeIsNeitherReadNorWritten) {
  for (const int size : {0, -256, 2048}) {
    modConfig.MaterialSize = size;
    InitGrid();
    EXPECT_FALSE(LoadHeights());
    LoadMaterialMap();
    EXPECT_FALSE(SaveHeightmap() || SaveMaterialMap());
    EXPECT_EQ(Get("heightmap.raw") + Get("materialmap.raw"), "(none)(none)") << size;
    EXPECT_EQ(HeightAt(10, 10) + HeightUnderCamera(0), 0);
  }
}

TEST_F(TerrainTest, ANewGridIsFlatWithNothingSelectedAndHasCellsOfAWholeNumberOfUnits) {
  SetHeight(5, 5, 20);
  terrain.grid[5][5].selected = 1;
  terrain.grid[5][6].weight = 2;
  terrain.selectionBox = {4, 6, 4, 6};
  modConfig.MaterialSize = 512;
  modConfig.WorldSize = 2050;
  InitGrid();
  EXPECT_EQ(Heights(), "");
  EXPECT_EQ(terrain.grid[5][5].selected, 0);
  EXPECT_EQ(terrain.grid[5][6].weight, 0);
  EXPECT_EQ(terrain.selectionBox.SelMinRow, 1000);
  EXPECT_EQ(terrain.selectionBox.SelMaxCol, 0);
  EXPECT_EQ(terrain.cellSize, 4) << "2050 / 512 is cut";
  EXPECT_EQ(terrain.tilesPerSide, 8);
  EXPECT_EQ(terrain.grid[512][3].x, 2048);
  EXPECT_EQ(terrain.grid[512][3].z, 12);
}

TEST_F(TerrainTest, SettingAHeightLimitsItAndShowsItOnTheMiniMap) {
  for (const auto& [set, kept] : {std::pair{300.0f, 256.0f}, {-1, 0}, {200.9f, 200.9f}}) {
    SetHeight(20, 30, set);
    EXPECT_EQ(Height(20, 30), kept);
  }
  EXPECT_EQ(terrain.miniMap.grey[(128 - 15) * 128 + (128 - 10)], 200);
  SetHeight(-1, 0, 1);
  SetHeight(0, kGridCapacity, 1);  // outside the grid: nothing happens
  StartFlat();
  modConfig.MaterialSize = 64;  // too small for the Mini-Map
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

TEST_F(TerrainTest, HeightsUnderPlacesOfTheLevelAndUnderTheCamera) {
  SetHeight(10, 20, 100);
  SetHeight(256, 20, 80);
  const struct {
    float x, z, height;
  } places[] = {{1024 - 41, 83, 50},
                {-100, 83, 0},
                {10, 1024, 0},
                {1e30f, -1e30f, 0},
                {1022, 83, 40}};  // the last cell is drawn with the heights of row 256
  for (const auto& [x, z, height] : places) EXPECT_EQ(HeightAt(x, z), height) << x << ' ' << z;
  SetHeight(256, 255, 100);
  camera.position.Set(1024, 0, 1023);
  EXPECT_EQ(HeightUnderCamera(3), 51.5f);
  SetHeight(256, 0, 40);
  camera.position.Set(-1e9f, 0, 1e9f);
  EXPECT_EQ(HeightUnderCamera(0), 20) << "in the grid, which wraps at its seams";
}

// The image of the heights in memory.

constexpr int kSizes[] = {1, 7, 8, 33, 100, 256};  // with and without whole blocks and bands

// Every vertex by itself.
void LoadPlainly(const Bytes& image, int size, VertexGrid& to) {
  for (int i = 1; i <= size; ++i) {
    for (int j = 0; j < size; ++j) {
      const std::size_t at = HeightImageOffset(size, i, j);
      if (at + 2 <= image.size())
        to[i][j].h = static_cast<float>(image[at] + 256 * image[at + 1]) / 256;
    }
  }
}

TEST(HeightImage, AnImageOfAnySizeAndLengthIsReadLikeSampleBySampleAndWrittenAgain) {
  std::minstd_rand random(1);
  VertexGrid read = VertexGrid::Zeroed(), expected = VertexGrid::Zeroed();
  for (const int size : kSizes) {
    Bytes whole(HeightImageBytes(size));
    for (std::uint8_t& byte : whole) byte = static_cast<std::uint8_t>(random() >> 8);
    for (const double share : {0.0, 0.01, 0.63, 1.0}) {
      const auto length = static_cast<std::ptrdiff_t>(share * static_cast<double>(whole.size()));
      const Bytes image(whole.begin(), whole.begin() + length);
      ImageToHeights(image, size, read);
      LoadPlainly(image, size, expected);
      EXPECT_EQ(ListGround(0, [&](int i, int j) { return read[i][j].h - expected[i][j].h; }), "")
          << size << ", " << length << " bytes";
    }
    Bytes written(whole.size());
    HeightsToImage(read, size, written);
    EXPECT_EQ(written, whole) << size;
  }
}

TEST(HeightImage, HeightsAreTruncatedAndLimited) {
  VertexGrid heights = VertexGrid::Zeroed();
  const std::pair<float, int> cases[] = {{2.999f / 256, 2},
                                         {-1, 0},
                                         {256, 65535},
                                         {std::numeric_limits<float>::infinity(), 65535},
                                         {std::nanf(""), 0}};
  constexpr int kSize = 40;
  for (const auto& [height, stored] : cases) {
    for (int j = 0; j < kSize; ++j) heights[5][j].h = height;
    Bytes image(HeightImageBytes(kSize));
    HeightsToImage(heights, kSize, image);
    for (int j = 0; j < kSize; ++j) {
      const std::size_t at = HeightImageOffset(kSize, 5, j);
      EXPECT_EQ(image[at] + 256 * image[at + 1], stored) << height;
    }
  }
}

}  // namespace
}  // namespace mw
