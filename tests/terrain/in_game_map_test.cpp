#include "terrain/in_game_map.h"

#include <algorithm>
#include <limits>

#include "core/bytes.h"
#include "data/dds.h"
#include "data/image.h"
#include "data/level_archive_test.h"
#include "platform/disk.h"
#include "support/bmp_file.h"
#include "support/dds_file.h"
#include "support/golden.h"
#include "support/test.h"
#include "terrain/dds_writer.h"
#include "terrain/flat_ground.h"
#include "terrain/level_textures.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

struct MapPicture {
  mw::Bytes rgb;
  // As 0xRRGGBB.
  int At(int row, int column) const {
    const std::size_t offset = (static_cast<std::size_t>(row) * kInGameMapSide + column) * 3;
    return rgb[offset] << 16 | rgb[offset + 1] << 8 | rgb[offset + 2];
  }
};

class InGameMapTest : public FlatGround<LevelArchiveTest> {
 protected:
  InGameMapTest() {
    levelTextures = {};
    Resize(512);
  }
  static void Resize(int size) {
    modConfig.MaterialSize = size;
    modConfig.WorldSize = 4 * size;
    InitGrid();
  }
  void PutTile(int row, int column, const mw::Bytes& dds) {
    Put(FormatText("Textures/Tx0%ix0%i.dds", row, column), Text(dds));
    levelTextures.SurfaceAssigned[row][column] = true;
  }
  // Red in its first rows, green in its first columns, so yellow at its first pixel.
  void PutMarkedTile(int row, int column, int side) {
    mw::Bytes rgb;
    for (int y = 0; y < side; ++y) {
      for (int x = 0; x < side; ++x)
        rgb.insert(rgb.end(),
                   {std::uint8_t(y < side / 2 ? 255 : 0), std::uint8_t(x < side / 2 ? 255 : 0), 0});
    }
    PutTile(row, column, EncodeDds(side, side, rgb, false));
  }
  // Glyph k is grey 100 + k; its top row is green, its left column transparent.
  static void WriteGlyphs(int width) {
    BmpFile font{width, 12};
    for (int row = 0; row < 12; ++row) {
      for (int x = 0; x < width; ++x) {
        const auto grey = static_cast<std::uint8_t>(100 + x / 8);
        mw::Bytes pixel = {grey, grey, grey};
        if (row == 8) pixel = {0, 255, 0};
        if (row > 8) pixel = {7, 7, 7};
        if (x % 8 == 0) pixel = {0, 0, 255};  // red
        font.pixels.insert(font.pixels.end(), pixel.begin(), pixel.end());
      }
    }
    CreateFolder("media");
    ASSERT_TRUE(WriteWholeFile("media/igmfont.bmp", font.Bytes()));
  }
  // The picture where it is not as `other`, its rows from the top.
  static std::string ListingBut(const MapPicture& other) {
    const MapPicture map{PaintInGameMap()};
    return ListGround(
        -1,
        [&](int i, int j) {
          return i < 512 && j < 512 && map.At(i, j) != other.At(i, j) ? map.At(i, j) : -1;
        },
        [](double colour) { return FormatText("%06X", static_cast<unsigned>(colour)); });
  }
};

TEST_F(InGameMapTest, EachMapIsPaintedAsListed) {
  const MapPicture empty{PaintInGameMap()};
  std::string listing = "== nothing\n" + ListingBut({mw::Bytes(std::size_t{3} * 512 * 512)});
  // Tile rows run to the right and tile columns upwards.
  PutMarkedTile(2, 1, 1024);
  PutMarkedTile(7, 7, 16);  // too small to fill its place
  PutMarkedTile(0, 0, 64);
  levelTextures.SurfaceAssigned[0][0] = false;
  PutTile(1, 0, DdsFile{64, 32, 1024, 1, "DXT1", UniformBlocks(128, 0xFFFF)}.Bytes());
  PutTile(2, 0, DdsFile{64, 64, 4096, 1, "DXT5", mw::Bytes(4096, 0xFF)}.Bytes());
  PutTile(3, 0, {'D', 'D', 'S'});
  PutTile(4, 0, DdsFile{64, 64, 2048, 1, "DXT1", {}}.Bytes());
  modConfig.WaterLevel = 50;
  const float depths[] = {0, 0.5f, 1, 30, 50};
  for (int k = 0; k < 5; ++k) SetHeight(492 - k, 482, (50 - depths[k]) * 2);
  for (const int size : {512, 256, 1024}) {
    if (size != 512) modConfig.WaterLevel = 0, Resize(size);
    listing += "== level of " + std::to_string(size) + " cells\n" + ListingBut(empty);
  }
  PutMarkedTile(3, 3, 1024);
  Resize(256);
  listing += "== tile 3x3 of it\n" + ListingBut(empty);
  levelTextures = {};
  WriteGlyphs(120);
  listing += "== font of another width\n" + ListingBut(empty);
  WriteGlyphs(128);
  listing += "== font\n" + ListingBut(empty);
  modConfig.MaterialSize = 300;
  listing += "== level of another size\n" + ListingBut(empty);
  ExpectGolden("terrain/in_game_map.txt", listing);
}

TEST_F(InGameMapTest, UnderTheDeepestWaterTheColourStays) {
  SetHeight(512 - 23, 512 - 30, 0.0f);
  for (const float flood : {1000.0f, 1e30f, std::numeric_limits<float>::infinity()}) {
    modConfig.WaterLevel = flood;
    EXPECT_EQ(MapPicture{PaintInGameMap()}.At(30, 23), 30 << 16 | 45 << 8 | 75);
  }
}

TEST_F(InGameMapTest, SampledPixelsAreThoseOfTheWholeDecodedTile) {
  for (const int side : {16, 64, 256, 1024}) {
    mw::Bytes noise(static_cast<std::size_t>(side) * side * 3);
    unsigned seed = 7;
    for (auto& byte : noise)
      byte = static_cast<std::uint8_t>((seed = seed * 1664525 + 1013904223) >> 24);
    PutTile(0, 0, EncodeDds(side, side, noise, false));
    const auto whole = DecodeDxt1(LoadDds(LevelPath("Textures/Tx00x00.dds"))->data, side, side);
    const MapPicture map{PaintInGameMap()};
    const int step = std::max(1, side / 64);
    for (int y = 1; y < 63; ++y) {
      for (int x = 1; x < 64; ++x) {
        const int row = y * step, column = x * step;
        const std::size_t at = (static_cast<std::size_t>(row) * side + column) * 4;
        const bool isTile = row < side && column < side;
        ASSERT_EQ(map.At(511 - y, x),
                  isTile ? whole[at] << 16 | whole[at + 1] << 8 | whole[at + 2] : 0)
            << side << ": " << y << ", " << x;
      }
    }
  }
}

TEST_F(InGameMapTest, TheMapGoesIntoTheLevelOrTheReasonIsTold) {
  PutMarkedTile(2, 1, 1024);
  GenerateInGameMap();
  EXPECT_TRUE(Get("Textures/ingamemap.dds") == Text(EncodeDds(512, 512, PaintInGameMap(), true)));
  EXPECT_THAT(scripted::script.status[1], ElementsAre("Generating In-Game Map...", ""));
  EXPECT_EQ(scripted::script.waitCursorCount, 1);
  archives.Clear();
  Answer({PromptAnswer::Ok});
  GenerateInGameMap();
  ExpectBoxes({{"No archive is open for writing.", "Error", PromptButtons::Ok, PromptIcon::Stop}});
}

}  // namespace
}  // namespace mw
