#include "data/dds.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/plain/gl_context.h"
#include "data/level_archive_test.h"
#include "support/dds_file.h"

namespace mw {
namespace {

using ByteVector = std::vector<std::uint8_t>;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

constexpr std::uint16_t kRed = 0xF800, kBlue = 0x001F;

// 256 x 256 with all of its levels, the top one red and the others blue.
DdsFile FullChain() {
  DdsFile file{256, 256, 32768, 9};
  file.data = UniformBlocks(4096, kRed);
  const ByteVector smaller = UniformBlocks((8192 + 2048 + 512 + 128 + 32 + 8 + 8 + 8) / 8, kBlue);
  file.data.insert(file.data.end(), smaller.begin(), smaller.end());
  return file;
}

TEST(Dds, HeaderGivesTheImage) {
  DdsFile file{8, 4, 32, 1, "DXT5", ByteVector(32, 7)};
  const auto image = DecodeDds(file.Bytes());
  ASSERT_TRUE(image);
  EXPECT_EQ(image->width, 8);
  EXPECT_EQ(image->height, 4);
  EXPECT_EQ(image->components, 4);
  EXPECT_EQ(image->format, static_cast<std::uint32_t>(GL_COMPRESSED_RGBA_S3TC_DXT5_EXT));
  EXPECT_EQ(image->data, file.data);
}

TEST(Dds, OnlyTheThreeKindsOfTheGameAreRead) {
  for (const char* kind : {"DXT1", "DXT3", "DXT5"}) {
    EXPECT_TRUE(DecodeDds(DdsFile{4, 4, 8, 1, kind}.Bytes())) << kind;
  }
  for (const char* kind : {"DXT2", "DXT4", "dxt1", "DX10"}) {
    EXPECT_FALSE(DecodeDds(DdsFile{4, 4, 8, 1, kind}.Bytes())) << kind;
  }
}

TEST(Dds, DamagedHeadersAreRefused) {
  const ByteVector whole = DdsFile{}.Bytes();
  EXPECT_FALSE(DecodeDds(std::span(whole).first(127)));
  EXPECT_FALSE(DecodeDds({}));
  ByteVector other = whole;
  other[3] = '2';
  EXPECT_FALSE(DecodeDds(other)) << "not a DDS file";
  for (const std::uint32_t side : {0u, 8193u, 0xFFFFFFFFu}) {
    EXPECT_FALSE(DecodeDds(DdsFile{side, 4}.Bytes())) << side;
    EXPECT_FALSE(DecodeDds(DdsFile{4, side}.Bytes())) << side;
  }
}

TEST(Dds, DataIsWhatTheHeaderSaysAndTheFileHas) {
  DdsFile file{4, 4, 8, 1, "DXT1", ByteVector(100)};
  EXPECT_EQ(DecodeDds(file.Bytes())->data.size(), 8u);
  file.mipCount = 3;
  EXPECT_EQ(DecodeDds(file.Bytes())->data.size(), 16u) << "twice the top level for all levels";
  file.fourCc = "DXT3";
  EXPECT_EQ(DecodeDds(file.Bytes())->data.size(), 32u);
  file.linearSize = 0xFFFFFFFF;
  EXPECT_EQ(DecodeDds(file.Bytes())->data.size(), 100u);
}

TEST(DecodeDxt1, MixesFourColoursWhenTheFirstIsLarger) {
  // Each row of the block: colours 0, 1, 2, 3 from the left.
  const ByteVector block = {0x00, 0xF8, 0x1F, 0x00, 0xE4, 0xE4, 0xE4, 0xE4};
  const ByteVector rgba = DecodeDxt1(block, 4, 4);
  ASSERT_EQ(rgba.size(), 64u);
  EXPECT_THAT(ByteVector(rgba.begin(), rgba.begin() + 16),
              ElementsAre(248, 0, 0, 255, 0, 0, 248, 255, 165, 0, 82, 255, 82, 0, 165, 255));
}

TEST(DecodeDxt1, EqualColoursMakeTheFourthTransparentCyan) {
  const ByteVector block = {0xE0, 0x07, 0xE0, 0x07, 0x02, 0xFF, 0, 0};
  const ByteVector rgba = DecodeDxt1(block, 4, 4);
  EXPECT_THAT(ByteVector(rgba.begin(), rgba.begin() + 4), ElementsAre(0, 252, 0, 255))
      << "the mean";
  EXPECT_THAT(ByteVector(rgba.begin() + 16, rgba.begin() + 20), ElementsAre(0, 255, 255, 0));
}

TEST(DecodeDxt1, BlocksFillRowsAndTheMissingOnesAreZero) {
  ByteVector blocks = UniformBlocks(2, kRed);
  const ByteVector rgba = DecodeDxt1(blocks, 6, 5);
  ASSERT_EQ(rgba.size(), 6u * 5 * 4);
  EXPECT_EQ(rgba[5 * 4], 248) << "the second block, cut at the right edge";
  EXPECT_EQ(rgba[4 * 6 * 4], 0) << "the fifth row belongs to the third block";
  EXPECT_TRUE(DecodeDxt1(blocks, 0, 4).empty());
  EXPECT_TRUE(DecodeDxt1(blocks, 4, 1 << 30).empty());
}

class DdsTextureTest : public LevelArchiveTest {
 protected:
  void SetUp() override {
    if (!OpenTestGl(16, 16)) GTEST_SKIP() << TestGlError();
    glGenTextures(1, &texture_);
    glBindTexture(GL_TEXTURE_2D, texture_);
  }
  void TearDown() override { glDeleteTextures(1, &texture_); }

  // ByteVector of each level of the bound texture.
  static std::vector<int> LevelSizes() {
    std::vector<int> sizes;
    for (int level = 0; level < 14; ++level) {
      GLint width = 0, size = 0;
      glGetTexLevelParameteriv(GL_TEXTURE_2D, level, GL_TEXTURE_WIDTH, &width);
      if (width == 0) break;
      glGetTexLevelParameteriv(GL_TEXTURE_2D, level, GL_TEXTURE_COMPRESSED_IMAGE_SIZE, &size);
      sizes.push_back(size);
    }
    return sizes;
  }

  // The colour of the middle of the view after the bound texture was drawn over all of it.
  static ByteVector DrawnColour() {
    glClearColor(0, 1, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glColor3f(1, 1, 1);
    glEnable(GL_TEXTURE_2D);
    glBegin(GL_QUADS);
    for (const auto& [x, y] : {std::pair(-1, -1), {1, -1}, {1, 1}, {-1, 1}}) {
      glTexCoord2i((x + 1) / 2, (y + 1) / 2);
      glVertex2i(x, y);
    }
    glEnd();
    glDisable(GL_TEXTURE_2D);
    const DrawnPicture picture = ReadPicture();
    const auto middle = picture.rgb.begin() + (8 * 16 + 8) * 3;
    return {middle, middle + 3};
  }

 private:
  unsigned texture_ = 0;
};

TEST_F(DdsTextureTest, EveryLevelIsUploadedWithItsSize) {
  EXPECT_EQ(UploadCompressed(*DecodeDds(FullChain().Bytes())), 9);
  EXPECT_THAT(LevelSizes(), ElementsAre(32768, 8192, 2048, 512, 128, 32, 8, 8, 8));
  EXPECT_THAT(DrawnColour(), ElementsAre(0, 0, 255)) << "small in the view: a lower level";
}

TEST_F(DdsTextureTest, LevelsThatTheFileLacksAreLeftOut) {
  DdsFile cut = FullChain();
  cut.data.resize(32768 + 8192 + 2047);
  EXPECT_EQ(UploadCompressed(*DecodeDds(cut.Bytes())), 2);
  EXPECT_THAT(LevelSizes(), ElementsAre(32768, 8192));
  EXPECT_THAT(DrawnColour(), ElementsAre(0, 0, 255)) << "the texture is complete all the same";

  cut.data.resize(32767);
  EXPECT_EQ(UploadCompressed(*DecodeDds(cut.Bytes())), 0);
}

TEST_F(DdsTextureTest, MipCountOfNoneIsOneLevel) {
  DdsFile single{256, 256, 32768, 0, "DXT1", UniformBlocks(4096, kRed)};
  EXPECT_EQ(UploadCompressed(*DecodeDds(single.Bytes())), 1);
  EXPECT_THAT(DrawnColour(), ElementsAre(255, 0, 0));
}

TEST_F(DdsTextureTest, HugeMipCountEndsAtOnePixel) {
  DdsFile file{4, 2, 8, 0xFFFFFFFF, "DXT1", UniformBlocks(2, kBlue)};
  EXPECT_EQ(UploadCompressed(*DecodeDds(file.Bytes())), 2) << "only two blocks are in the file";
  file.linearSize = 64;
  file.data = UniformBlocks(16, kBlue);
  EXPECT_EQ(UploadCompressed(*DecodeDds(file.Bytes())), 3) << "4 x 2, 2 x 1 and 1 x 1";
}

TEST_F(DdsTextureTest, ObjectTextureComesFromAnArchive) {
  Put("wall.dds", Text(FullChain().Bytes()));
  unsigned texture = 0;
  ASSERT_TRUE(LoadDdsTexture(LevelPath("wall.dds"), texture));
  GLint filter = 0, wrap = 0;
  glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &filter);
  glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, &wrap);
  EXPECT_EQ(filter, GL_LINEAR_MIPMAP_LINEAR);
  EXPECT_EQ(wrap, GL_REPEAT);
  glDeleteTextures(1, &texture);

  Put("small.dds", Text(DdsFile{4, 4, 8, 3, "DXT1", UniformBlocks(3, kRed)}.Bytes()));
  ASSERT_TRUE(LoadDdsTexture(LevelPath("small.dds"), texture));
  glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &filter);
  EXPECT_EQ(filter, GL_LINEAR) << "fewer than 9 levels";
  glDeleteTextures(1, &texture);

  Put("damaged.dds", "DDS ");
  EXPECT_FALSE(LoadDdsTexture(LevelPath("damaged.dds"), texture));
  EXPECT_FALSE(LoadDdsTexture(LevelPath("missing.dds"), texture));
  EXPECT_EQ(texture, 0u);
}

}  // namespace
}  // namespace mw
