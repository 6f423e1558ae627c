#include "terrain/level_textures.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <algorithm>

#include "bench/plain/gl_context.h"
#include "core/bytes.h"
#include "data/dds.h"
#include "data/image.h"
#include "data/level_archive_test.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "support/dds_file.h"
#include "support/test.h"
#include "terrain/dds_writer.h"
#include "terrain/flat_ground.h"

namespace mw {
namespace {

// The first half of the rows has one channel, the second half another.
mw::Bytes TwoColours(int side, std::size_t first, std::size_t second) {
  mw::Bytes rgb(static_cast<std::size_t>(side * side * 3));
  for (std::size_t at = 0; at < rgb.size(); at += 3)
    rgb[at + (at < rgb.size() / 2 ? first : second)] = 255;
  return rgb;
}
// Red over blue: the rows of a file come from the top, those of a texture set from the bottom.
mw::Bytes RedOverBlue(int side) { return TwoColours(side, 0, 2); }
SetTexture RedOverBlueOfSet(int side) {
  SetTexture picture;
  picture.width = picture.height = side;
  picture.rgb = TwoColours(side, 2, 0);
  picture.loaded = true;
  return picture;
}

class LevelTexturesTest : public FlatGround<LevelArchiveTest> {
 protected:
  LevelTexturesTest() {
    levelTextures = {};
    levelTextures.textureSetChosen = true;
    textureSet = {};
    modConfig.configurationName = "mymod";
  }

  static std::string Tile(std::size_t blocks = 1) {
    return Text(DdsFile{4, 4, 8, 1, "DXT1", UniformBlocks(blocks, 0xF800)}.Bytes());
  }
  // The decoded pixels of the top level of a file of the level.
  static mw::Bytes Decoded(std::string_view file, int side) {
    const auto image = LoadDds(LevelPath(file));
    if (!image || image->width != side || image->height != side) return {};
    return DecodeDxt1(image->data, side, side);
  }
};

TEST_F(LevelTexturesTest, OpeningFindsTheTilesAndTheDetailTextureAndTellsWhatIsDamaged) {
  if (!OpenTestGl(16, 16)) GTEST_SKIP() << TestGlError();
  Put("textures/Tx00x00.dds", Tile());
  Put("textures/Tx02x07.dds", Tile());
  Put("textures/detail.dds", Tile());
  Put("textures/Tx01x01.dds", "damaged");
  Put("textures/Tx01x02.dds", Tile(0));
  Put("heightmap.raw", std::string(256 * 256 * 2, '\x01'));
  levelTextures.SurfaceAssigned[5][5] = true;
  BeginLoadReport();
  LoadLevelTextures(LevelTextureLoad::Opening);
  EXPECT_THAT(
      openLevel.loadReport.lines,
      testing::ElementsAre("The texture Tx01x01.dds is damaged: it cannot be shown.",
                           "The texture Tx01x02.dds is damaged: it could be read in part."));
  ClearLoadReport();
  for (int row = 0; row < 8; ++row) {
    for (int column = 0; column < 8; ++column) {
      const bool whole = (row == 0 && column == 0) || (row == 2 && column == 7);
      EXPECT_EQ(levelTextures.tiles[row][column].hasTexture, whole) << row << ", " << column;
      EXPECT_EQ(levelTextures.SurfaceAssigned[row][column], whole || (row == 1 && column == 2));
    }
  }
  EXPECT_TRUE(levelTextures.hasDetail);
  EXPECT_EQ(terrain.heightBuffer.size(), 256u * 256 * 2) << "the height map comes with them";
  const unsigned tile = levelTextures.tiles[2][7].texture;
  const auto wrapOf = [](unsigned texture, GLenum axis) {
    glBindTexture(GL_TEXTURE_2D, texture);
    GLint wrap = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, axis, &wrap);
    return wrap;
  };
  for (const GLenum axis : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T}) {
    EXPECT_EQ(wrapOf(tile, axis), GL_CLAMP_TO_EDGE) << "no line between two tiles";
    EXPECT_EQ(wrapOf(levelTextures.detailTexture, axis), GL_REPEAT);
  }
  textureSet.detail = RedOverBlueOfSet(64);
  EXPECT_TRUE(WriteTextureSetToLevel());
  EXPECT_TRUE(Get("Textures/detail.dds") == Tile()) << "its own, until a set is chosen for it";
  EXPECT_EQ(Get("Textures/ENVMAP_G_.rcm"), "(none)");
  DeleteLevelTextures();
  EXPECT_FALSE(glIsTexture(tile));
  EXPECT_FALSE(levelTextures.tiles[2][7].hasTexture || levelTextures.hasDetail);
}

TEST_F(LevelTexturesTest, ReloadingLeavesTheAssignmentsToTheUser) {
  Put("heightmap.raw", "");
  Put("textures/Tx03x04.dds", Tile());
  levelTextures.SurfaceAssigned[5][5] = true;
  LoadLevelTextures(LevelTextureLoad::Reloading);
  EXPECT_FALSE(levelTextures.SurfaceAssigned[3][4]) << "un-assigned, its file is still there";
  EXPECT_TRUE(levelTextures.SurfaceAssigned[5][5]) << "still to be generated";
  EXPECT_TRUE(levelTextures.textureSetChosen);
}

// What stays as it was keeps a mark that nothing but reading it anew takes away.
TEST_F(LevelTexturesTest, ReloadingReadsWhatMayHaveChanged) {
  if (!OpenTestGl(16, 16)) GTEST_SKIP() << TestGlError();
  for (const char* file : {"Tx00x00", "Tx00x01", "Tx00x02", "Tx00x03", "detail"}) {
    Put("textures/" + std::string(file) + ".dds", Tile());
  }
  LoadLevelTextures(LevelTextureLoad::Opening);
  const auto& tiles = levelTextures.tiles[0];
  const auto mark = [] { glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST); };
  const auto isMarked = [](unsigned texture) {
    GLint filter = 0;
    glBindTexture(GL_TEXTURE_2D, texture);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, &filter);
    return filter == GL_NEAREST;
  };
  const auto reload = [&] {
    for (const auto& tile : tiles) glBindTexture(GL_TEXTURE_2D, tile.texture), mark();
    glBindTexture(GL_TEXTURE_2D, levelTextures.detailTexture);
    mark();
    LoadLevelTextures(LevelTextureLoad::Reloading);
  };
  const std::string other = Text(DdsFile{4, 4, 8, 1, "DXT1", UniformBlocks(1, 0x001F)}.Bytes());
  Put("textures/Tx00x00.dds", Tile());  // the same
  Put("textures/Tx00x01.dds", other);
  EXPECT_TRUE(RemoveGameFile(LevelPath("textures/Tx00x02.dds")));
  Put("textures/Tx00x04.dds", other);
  reload();
  EXPECT_TRUE(isMarked(tiles[0].texture) && isMarked(tiles[3].texture));
  EXPECT_TRUE(tiles[1].hasTexture && !isMarked(tiles[1].texture));
  EXPECT_FALSE(tiles[2].hasTexture);
  EXPECT_TRUE(tiles[4].hasTexture);
  EXPECT_TRUE(isMarked(levelTextures.detailTexture));

  Put("textures/detail.dds", other);
  reload();
  EXPECT_FALSE(isMarked(levelTextures.detailTexture));
  EXPECT_TRUE(isMarked(tiles[1].texture));

  // A change that is taken back has been read meanwhile.
  ASSERT_TRUE(level->BeginSave());
  Put("textures/Tx00x03.dds", other);
  reload();
  EXPECT_FALSE(isMarked(tiles[3].texture));
  level->RollbackSave();
  reload();
  EXPECT_FALSE(isMarked(tiles[3].texture)) << "what the archive holds is shown again";
}

TEST_F(LevelTexturesTest, TheTextureSetGoesIntoTheLevelUprightAndInTheGamesSizes) {
  textureSet.detail = RedOverBlueOfSet(64);
  textureSet.environment[1] = RedOverBlueOfSet(128);
  EXPECT_TRUE(WriteTextureSetToLevel());
  const mw::Bytes detail = Decoded("Textures/detail.dds", 512);
  ASSERT_FALSE(detail.empty());
  EXPECT_GT(detail[0], 200) << "the top row, which is red, comes first";
  EXPECT_LT(detail[2], 50);
  EXPECT_GT(detail[detail.size() - 2], 200) << "and blue last";
  EXPECT_EQ(LoadDds(LevelPath("Textures/detail.dds"))->mipCount, 10u);
  EXPECT_TRUE(Get("Textures/env_Island_02.dds") ==
              Text(EncodeDds(128, 128, RedOverBlue(128), false)));
  EXPECT_EQ(Get("Textures/env_Island_01.dds"), "(none)") << "not loaded, so not written";
  EXPECT_EQ(Get("Textures/ENVMAP_G_.rcm"),
            "[CubeMap]\r\n"
            "PositiveX = mymod\\levels\\Island\\Textures\\env_Island_04.dds\r\n"
            "NegativeX = mymod\\levels\\Island\\Textures\\env_Island_02.dds\r\n"
            "PositiveY = mymod\\levels\\Island\\Textures\\env_Island_05.dds\r\n"
            "NegativeY = mymod\\levels\\Island\\Textures\\env_Island_06.dds\r\n"
            "PositiveZ = mymod\\levels\\Island\\Textures\\env_Island_03.dds\r\n"
            "NegativeZ = mymod\\levels\\Island\\Textures\\env_Island_01.dds\r\n");
  std::ranges::fill(textureSet.detail.rgb, 0);
  EXPECT_TRUE(WriteTextureSetToLevel());
  EXPECT_EQ(Decoded("Textures/detail.dds", 512)[0], 0) << "a changed picture is encoded again";
}

TEST_F(LevelTexturesTest, AMergedTileComesBackFromItsTga) {
  const mw::Bytes rgb = RedOverBlue(8);
  ASSERT_TRUE(WriteTga("Tx01x02.tga", 8, 8, rgb));
  EXPECT_EQ(ConvertTgaTileToDds("Tx01x02", 8, 8, 1, 2), TileTaken::Yes);
  EXPECT_EQ(Get("Textures/Tx01x02.dds"), Text(EncodeDds(8, 8, rgb, true)));
  EXPECT_EQ(ConvertTgaTileToDds("missing", 8, 8, 1, 3), TileTaken::Missing);
  EXPECT_EQ(ConvertTgaTileToDds("Tx01x02", 16, 8, 1, 3), TileTaken::Missing) << "it is smaller";
  EXPECT_EQ(Get("Textures/Tx01x03.dds"), "(none)");
  archives.Clear();
  EXPECT_EQ(ConvertTgaTileToDds("Tx01x02", 8, 8, 1, 2), TileTaken::NotWritten);
}

}  // namespace
}  // namespace mw
