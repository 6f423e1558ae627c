#include "terrain/in_game_map.h"

#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "data/dds.h"
#include "data/image.h"
#include "data/level_archive_test.h"
#include "platform/disk.h"
#include "support/bmp_file.h"
#include "support/dds_file.h"
#include "terrain/dds_writer.h"
#include "terrain/level_textures.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ByteVector = std::vector<std::uint8_t>;
using Colour = std::array<int, 3>;

constexpr Colour kBlack = {0, 0, 0}, kWhite = {255, 255, 255};

struct Picture {
  ByteVector rgb;
  Colour At(int row, int column) const {
    const std::size_t offset = (static_cast<std::size_t>(row) * kInGameMapSide + column) * 3;
    return {rgb[offset], rgb[offset + 1], rgb[offset + 2]};
  }
};

// Noise that compresses into blocks of many colours.
ByteVector NoisyTile(int side, unsigned seed) {
  ByteVector rgb(static_cast<std::size_t>(side) * side * 3);
  for (auto& byte : rgb)
    byte = static_cast<std::uint8_t>((seed = seed * 1664525 + 1013904223) >> 24);
  return rgb;
}

class InGameMapTest : public LevelArchiveTest {
 protected:
  InGameMapTest() {
    levelTextures = {};
    modConfig.MaterialSize = 512;
    modConfig.WorldSize = 2048;
    modConfig.HeightScale = 0.5f;
    modConfig.WaterLevel = 0;
    CreateTerrain();
    InitGrid();
  }
  ~InGameMapTest() override { DestroyTerrain(); }

  void PutTile(int row, int column, const ByteVector& dds) {
    Put("Textures/Tx0" + std::to_string(row) + "x0" + std::to_string(column) + ".dds", Text(dds));
    levelTextures.SurfaceAssigned[row][column] = true;
  }
  // Red in its first rows, green in its first columns, so yellow at its first pixel.
  void PutMarkedTile(int row, int column, int side) {
    ByteVector rgb;
    for (int y = 0; y < side; ++y) {
      for (int x = 0; x < side; ++x) {
        const bool red = y < side / 2, green = x < side / 2;
        rgb.insert(rgb.end(), {std::uint8_t(red ? 255 : 0), std::uint8_t(green ? 255 : 0), 0});
      }
    }
    PutTile(row, column, EncodeDds(side, side, rgb, false));
  }
};

TEST_F(InGameMapTest, TileRowsRunToTheRightAndTileColumnsUpwards) {
  PutMarkedTile(2, 1, 1024);
  const Picture map{PaintInGameMap()};
  // Columns 128 to 191; from row 447 up to row 384.
  EXPECT_EQ(map.At(447, 129), (Colour{248, 252, 0})) << "the tile's first row is the lowest";
  EXPECT_EQ(map.At(447, 190), (Colour{248, 0, 0}));
  EXPECT_EQ(map.At(385, 129), (Colour{0, 252, 0}));
  EXPECT_EQ(map.At(385, 190), kBlack);
  EXPECT_EQ(map.At(447, 127), kBlack) << "left of it";
  EXPECT_EQ(map.At(449, 129), kBlack) << "below it";
}

TEST_F(InGameMapTest, TheSizeOfATileInTheMapFollowsTheLevels) {
  PutMarkedTile(3, 3, 1024);
  modConfig.MaterialSize = 256;
  EXPECT_EQ(Picture{PaintInGameMap()}.At(127, 385), (Colour{248, 252, 0}));
  PutMarkedTile(7, 7, 1024);
  modConfig.MaterialSize = 1024;
  const Picture map{PaintInGameMap()};
  EXPECT_EQ(map.At(287, 225), (Colour{248, 252, 0})) << "a quarter of the picture";
  EXPECT_EQ(map.At(255, 225), kBlack);
}

TEST_F(InGameMapTest, SampledPixelsAreThoseOfTheWholeDecodedTile) {
  for (const int side : {16, 64, 256, 1024}) {
    PutTile(0, 0, EncodeDds(side, side, NoisyTile(side, 7), false));
    const auto image = LoadDds(LevelPath("Textures/Tx00x00.dds"));
    const ByteVector whole = DecodeDxt1(image->data, side, side);
    const Picture map{PaintInGameMap()};
    const int step = std::max(1, side / 64);
    for (int y = 1; y < 63; ++y) {
      for (int x = 1; x < 64; ++x) {
        const auto at = [&](int channel) -> int {
          const int row = y * step, column = x * step;
          if (row >= side || column >= side) return 0;
          return whole[(static_cast<std::size_t>(row) * side + column) * 4 + channel];
        };
        ASSERT_EQ(map.At(511 - y, x), (Colour{at(0), at(1), at(2)}))
            << side << ": " << y << ", " << x;
      }
    }
  }
}

TEST_F(InGameMapTest, TilesThatCannotBeUsedStayBlack) {
  PutMarkedTile(0, 0, 64);
  levelTextures.SurfaceAssigned[0][0] = false;
  PutTile(1, 0, DdsFile{64, 32, 1024, 1, "DXT1", UniformBlocks(128, 0xFFFF)}.Bytes());
  PutTile(2, 0, DdsFile{64, 64, 4096, 1, "DXT5", ByteVector(4096, 0xFF)}.Bytes());
  PutTile(3, 0, {'D', 'D', 'S'});
  PutTile(4, 0, DdsFile{64, 64, 2048, 1, "DXT1", {}}.Bytes());
  const Picture map{PaintInGameMap()};
  for (int tile = 0; tile < 5; ++tile) EXPECT_EQ(map.At(490, 64 * tile + 20), kBlack) << tile;
}

TEST_F(InGameMapTest, WaterIsDarkerTheDeeperItIs) {
  modConfig.WaterLevel = 50;
  SetHeight(512 - 20, 512 - 30, 100.0f);  // just at the water's level
  SetHeight(512 - 21, 512 - 30, 99.0f);   // half a unit deep
  SetHeight(512 - 22, 512 - 30, 40.0f);   // 30 units
  SetHeight(512 - 23, 512 - 30, 0.0f);    // 50 units
  const Picture map{PaintInGameMap()};
  EXPECT_EQ(map.At(30, 20), (Colour{99, 114, 144}));
  EXPECT_EQ(map.At(30, 21), (Colour{99, 114, 144}));
  EXPECT_EQ(map.At(30, 22), (Colour{69, 84, 114}));
  EXPECT_EQ(map.At(30, 23), (Colour{49, 64, 94}));
  EXPECT_EQ(map.At(30, 24), kBlack) << "land";

  modConfig.WaterLevel = 1000;
  EXPECT_EQ(Picture{PaintInGameMap()}.At(30, 23), (Colour{30, 45, 75})) << "the deepest";
  for (const float flood : {1e30f, std::numeric_limits<float>::infinity()}) {
    modConfig.WaterLevel = flood;
    EXPECT_EQ(Picture{PaintInGameMap()}.At(30, 23), (Colour{30, 45, 75}));
  }
}

TEST_F(InGameMapTest, GridLinesAreWhite) {
  const Picture map{PaintInGameMap()};
  for (const int line : {0, 64, 448, 511}) {
    EXPECT_EQ(map.At(line, 100), kWhite);
    EXPECT_EQ(map.At(100, line), kWhite);
  }
  EXPECT_EQ(map.At(63, 100), kBlack);
  EXPECT_EQ(map.At(510, 100), kBlack);
}

TEST_F(InGameMapTest, LabelsStandUprightAlongTheTopAndTheLeftEdge) {
  // Glyph k: grey 100 + k; its top row is green, its left column transparent.
  ByteVector rgb(std::size_t{128} * 12 * 3, 7);
  for (int storedRow = 0; storedRow < 9; ++storedRow) {
    for (int x = 0; x < 128; ++x) {
      const auto grey = static_cast<std::uint8_t>(100 + x / 8);
      std::array<std::uint8_t, 3> pixel = {grey, grey, grey};
      if (storedRow == 8) pixel = {0, 255, 0};
      if (x % 8 == 0) pixel = {255, 0, 0};
      std::ranges::copy(pixel, rgb.begin() + (storedRow * 128 + x) * 3);
    }
  }
  SwapRedAndBlue(rgb);
  CreateFolder("media");
  ASSERT_TRUE(WriteWholeFile("media/igmfont.bmp",
                             BmpFile{.width = 128, .height = 12, .pixels = rgb}.Bytes()));
  const Picture map{PaintInGameMap()};
  for (int k = 0; k < 8; ++k) {
    const int along = 28 + 64 * k;
    EXPECT_EQ(map.At(5, along + 1), (Colour{0, 255, 0})) << "top of glyph " << k;
    EXPECT_EQ(map.At(5, along), kBlack) << "transparent";
    EXPECT_EQ(map.At(13, along + 7), (Colour{100 + k, 100 + k, 100 + k}));
    EXPECT_EQ(map.At(14, along + 7), kBlack) << "nine rows";
    EXPECT_EQ(map.At(along, 6), (Colour{0, 255, 0}));
    EXPECT_EQ(map.At(along + 8, 12), (Colour{108 + k, 108 + k, 108 + k}));
  }
}

TEST_F(InGameMapTest, TheMapGoesIntoTheLevel) {
  PutMarkedTile(2, 1, 1024);
  GenerateInGameMap();
  EXPECT_EQ(Get("Textures/ingamemap.dds"), Text(EncodeDds(512, 512, PaintInGameMap(), true)));
  EXPECT_THAT(scripted::script.status[1], ElementsAre("Generating In-Game Map...", ""));
  EXPECT_EQ(scripted::script.waitCursorCount, 1);
}

TEST_F(InGameMapTest, WithoutAnArchiveToWriteToTheReasonIsTold) {
  archives.Clear();
  scripted::script.answers = {PromptAnswer::Ok};
  GenerateInGameMap();
  ASSERT_EQ(scripted::script.prompts.size(), 1u);
  EXPECT_EQ(scripted::script.prompts[0].text, "No archive is open for writing.");
}

}  // namespace
}  // namespace mw
