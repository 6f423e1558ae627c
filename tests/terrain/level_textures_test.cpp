#include "terrain/level_textures.h"

#include <GL/gl.h>
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/plain/gl_context.h"
#include "data/dds.h"
#include "data/image.h"
#include "data/level_archive_test.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "support/dds_file.h"
#include "terrain/dds_writer.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

using ByteVector = std::vector<std::uint8_t>;

constexpr std::uint16_t kRed = 0xF800;
constexpr std::array<std::uint8_t, 3> kRedPixel = {255, 0, 0}, kBluePixel = {0, 0, 255};

// Two colours, one over the other, as a texture set holds them: rows from the bottom.
SetTexture TwoColours(int side) {
  SetTexture picture;
  picture.width = picture.height = side;
  for (int row = 0; row < side; ++row) {
    const auto& pixel = row < side / 2 ? kBluePixel : kRedPixel;
    for (int x = 0; x < side; ++x)
      picture.rgb.insert(picture.rgb.end(), pixel.begin(), pixel.end());
  }
  picture.loaded = true;
  return picture;
}

class LevelTexturesTest : public LevelArchiveTest {
 protected:
  LevelTexturesTest() {
    levelTextures = {};
    levelTextures.textureSetChosen = true;
    textureSet = {};
    modConfig.MaterialSize = 256;
    modConfig.WorldSize = 1024;
    modConfig.configurationName = "mymod";
  }

  void PutTile(const std::string& file) {
    Put(file, Text(DdsFile{4, 4, 8, 1, "DXT1", UniformBlocks(1, kRed)}.Bytes()));
  }
  // The decoded pixels of the top level of a file of the level.
  ByteVector Decoded(std::string_view file, int side) const {
    const auto image = LoadDds(LevelPath(file));
    if (!image || image->width != side || image->height != side) return {};
    return DecodeDxt1(image->data, side, side);
  }
};

TEST_F(LevelTexturesTest, OpeningFindsTheTilesAndTheDetailTexture) {
  if (!OpenTestGl(16, 16)) GTEST_SKIP() << TestGlError();
  PutTile("textures/Tx00x00.dds");
  PutTile("textures/Tx02x07.dds");
  PutTile("textures/detail.dds");
  Put("textures/Tx01x01.dds", "damaged");
  Put("heightmap.raw", std::string(256 * 256 * 2, '\x01'));
  levelTextures.SurfaceAssigned[5][5] = true;

  LoadLevelTextures(LevelTextureLoad::Opening);
  EXPECT_TRUE(levelTextures.tiles[0][0].hasTexture);
  EXPECT_TRUE(levelTextures.tiles[2][7].hasTexture) << "row 2, column 7";
  EXPECT_FALSE(levelTextures.tiles[7][2].hasTexture);
  EXPECT_FALSE(levelTextures.tiles[1][1].hasTexture);
  EXPECT_TRUE(levelTextures.hasDetail);
  EXPECT_EQ(terrain.heightBuffer.size(), 256u * 256 * 2) << "the height map comes with them";
  EXPECT_TRUE(levelTextures.SurfaceAssigned[2][7]);
  EXPECT_FALSE(levelTextures.SurfaceAssigned[5][5]);

  const unsigned tile = levelTextures.tiles[2][7].texture;
  DeleteLevelTextures();
  EXPECT_FALSE(glIsTexture(tile));
  EXPECT_FALSE(levelTextures.tiles[2][7].hasTexture);
  EXPECT_FALSE(levelTextures.hasDetail);
}

TEST_F(LevelTexturesTest, ReloadingLeavesTheAssignmentsToTheUser) {
  Put("heightmap.raw", "");
  PutTile("textures/Tx03x04.dds");
  levelTextures.SurfaceAssigned[5][5] = true;
  BeginLoadReport();
  LoadLevelTextures(LevelTextureLoad::Reloading);
  ASSERT_FALSE(openLevel.loadReport.lines.empty());
  EXPECT_EQ(openLevel.loadReport.lines.back(),
            "The level has no detail texture (textures/detail.dds).");
  ClearLoadReport();
  EXPECT_FALSE(levelTextures.SurfaceAssigned[3][4]) << "un-assigned, its file is still there";
  EXPECT_TRUE(levelTextures.SurfaceAssigned[5][5]) << "still to be generated";
}

TEST_F(LevelTexturesTest, ALevelKeepsItsTexturesUntilASetIsChosenForIt) {
  Put("Textures/detail.dds", "its own");
  textureSet.detail = TwoColours(64);
  levelTextures.textureSetChosen = true;  // for the level before
  LoadLevelTextures(LevelTextureLoad::Opening);
  EXPECT_TRUE(WriteTextureSetToLevel());
  EXPECT_EQ(Get("Textures/detail.dds"), "its own");
  EXPECT_EQ(Get("Textures/ENVMAP_G_.rcm"), "(none)");
}

TEST_F(LevelTexturesTest, TextureSetGoesIntoTheLevelUprightAndInTheGamesSizes) {
  textureSet.detail = TwoColours(64);
  textureSet.environment[1] = TwoColours(128);
  EXPECT_TRUE(WriteTextureSetToLevel());

  const ByteVector detail = Decoded("Textures/detail.dds", 512);
  ASSERT_FALSE(detail.empty());
  EXPECT_GT(detail[0], 200) << "the top row, which is red, comes first";
  EXPECT_LT(detail[2], 50);
  EXPECT_GT(detail[detail.size() - 2], 200) << "and blue last";
  EXPECT_EQ(LoadDds(LevelPath("Textures/detail.dds"))->mipCount, 10u);
  EXPECT_GT(Decoded("Textures/env_Island_02.dds", 128)[0], 200);
  EXPECT_EQ(LoadDds(LevelPath("Textures/env_Island_02.dds"))->mipCount, 0u);
  EXPECT_EQ(Get("Textures/env_Island_01.dds"), "(none)") << "not loaded, so not written";
}

TEST_F(LevelTexturesTest, ChangedPictureIsEncodedAgain) {
  textureSet.detail = TwoColours(64);
  EXPECT_TRUE(WriteTextureSetToLevel());
  std::ranges::fill(textureSet.detail.rgb, 0);
  EXPECT_TRUE(WriteTextureSetToLevel());
  EXPECT_EQ(Decoded("Textures/detail.dds", 512)[0], 0);
}

TEST_F(LevelTexturesTest, CubeMapDescriptionNamesItsSixFaces) {
  EXPECT_TRUE(WriteTextureSetToLevel());
  EXPECT_EQ(Get("Textures/ENVMAP_G_.rcm"),
            "[CubeMap]\r\n"
            "PositiveX = mymod\\levels\\Island\\Textures\\env_Island_04.dds\r\n"
            "NegativeX = mymod\\levels\\Island\\Textures\\env_Island_02.dds\r\n"
            "PositiveY = mymod\\levels\\Island\\Textures\\env_Island_05.dds\r\n"
            "NegativeY = mymod\\levels\\Island\\Textures\\env_Island_06.dds\r\n"
            "PositiveZ = mymod\\levels\\Island\\Textures\\env_Island_03.dds\r\n"
            "NegativeZ = mymod\\levels\\Island\\Textures\\env_Island_01.dds\r\n");
}

TEST_F(LevelTexturesTest, MergedTileComesBackFromItsTga) {
  ByteVector rgb;  // rows from the top: red over blue
  for (int row = 0; row < 8; ++row) {
    for (int x = 0; x < 8; ++x) {
      const auto& pixel = row < 4 ? kRedPixel : kBluePixel;
      rgb.insert(rgb.end(), pixel.begin(), pixel.end());
    }
  }
  ASSERT_TRUE(WriteTga("Tx01x02.tga", 8, 8, rgb));
  EXPECT_EQ(ConvertTgaTileToDds("Tx01x02", 8, 8, 1, 2), TileTaken::Yes);
  EXPECT_EQ(Get("Textures/Tx01x02.dds"), Text(EncodeDds(8, 8, rgb, true)));

  EXPECT_EQ(ConvertTgaTileToDds("missing", 8, 8, 1, 3), TileTaken::Missing);
  EXPECT_EQ(ConvertTgaTileToDds("Tx01x02", 16, 8, 1, 3), TileTaken::Missing)
      << "the file is smaller";
  EXPECT_EQ(Get("Textures/Tx01x03.dds"), "(none)");
}

}  // namespace
}  // namespace mw
