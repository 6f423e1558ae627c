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

constexpr std::uint16_t kRed = 0xF800, kBlue = 0x001F;

// 256 x 256 with all of its levels, the top one red and the others blue.
DdsFile FullChain() {
  DdsFile file{256, 256, 32768, 9, "DXT1", UniformBlocks(4096, kRed)};
  const ByteVector smaller = UniformBlocks((8192 + 2048 + 512 + 128 + 32 + 8 + 8 + 8) / 8, kBlue);
  file.data.insert(file.data.end(), smaller.begin(), smaller.end());
  return file;
}

TEST(Dds, HeaderGivesTheImageAndDataIsWhatTheHeaderSaysAndTheFileHas) {
  const struct {
    std::uint32_t width, height, linearSize, mipCount;
    const char* kind;
    std::size_t dataSize;
    std::uint32_t format;
    int components;
  } kRows[] = {{8, 4, 32, 1, "DXT5", 32, GL_COMPRESSED_RGBA_S3TC_DXT5_EXT, 4},
               {1, 1, 8, 1, "DXT1", 8, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT, 3},
               {4096, 4096, 8, 2, "DXT1", 16, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT, 3},
               {4, 4, 8, 3, "DXT3", 32, GL_COMPRESSED_RGBA_S3TC_DXT3_EXT, 4},
               {4, 4, 0xFFFFFFFF, 3, "DXT3", 100, GL_COMPRESSED_RGBA_S3TC_DXT3_EXT, 4}};
  ByteVector data(100, 7);
  for (const auto& row : kRows) {
    const auto image = DecodeDds(
        DdsFile{row.width, row.height, row.linearSize, row.mipCount, row.kind, data}.Bytes());
    ASSERT_TRUE(image) << row.kind;
    EXPECT_EQ(image->width, static_cast<int>(row.width));
    EXPECT_EQ(image->height, static_cast<int>(row.height));
    EXPECT_EQ(image->components, row.components);
    EXPECT_EQ(image->format, row.format);
    EXPECT_EQ(ByteVector(image->data.begin(), image->data.end()), ByteVector(row.dataSize, 7))
        << row.kind;
  }
}

TEST(Dds, DamagedHeadersAndOtherKindsAreRefused) {
  const ByteVector whole = DdsFile{}.Bytes();
  EXPECT_TRUE(DecodeDds(whole));
  EXPECT_FALSE(DecodeDds({whole.begin(), whole.begin() + 127}));
  for (const char* kind : {"DXT2", "DXT4", "dxt1", "DX10"}) {
    EXPECT_FALSE(DecodeDds(DdsFile{4, 4, 8, 1, kind}.Bytes())) << kind;
  }
  ByteVector other = whole;
  other[3] = '2';
  EXPECT_FALSE(DecodeDds(other)) << "not a DDS file";
  for (const std::uint32_t side : {0u, 4097u, 0xFFFFFFFFu}) {
    EXPECT_FALSE(DecodeDds(DdsFile{side, 4}.Bytes())) << side;
    EXPECT_FALSE(DecodeDds(DdsFile{4, side}.Bytes())) << side;
  }
}

// A block and the pixels that its four choices give, in their order.
TEST(DecodeDxt1, MixesFourColoursWhenTheFirstIsLargerElseThreeAndTransparentCyan) {
  const std::pair<ByteVector, ByteVector> kBlocks[] = {
      {{0x00, 0xF8, 0x1F, 0x00, 0xE4, 0xE4, 0xE4, 0xE4},
       {248, 0, 0, 255, 0, 0, 248, 255, 165, 0, 82, 255, 82, 0, 165, 255}},
      {{0xE0, 0x07, 0xE0, 0x07, 0xE4, 0xE4, 0xE4, 0xE4},
       {0, 252, 0, 255, 0, 252, 0, 255, 0, 252, 0, 255, 0, 255, 255, 0}},
      {{0x1F, 0x00, 0x00, 0xF8, 0xE4, 0xE4, 0xE4, 0xE4},
       {0, 0, 248, 255, 248, 0, 0, 255, 124, 0, 124, 255, 0, 255, 255, 0}}};
  for (const auto& [block, row] : kBlocks) {
    const ByteVector rgba = DecodeDxt1(block, 4, 4);
    ASSERT_EQ(rgba.size(), 64u);
    EXPECT_EQ(ByteVector(rgba.begin() + 16, rgba.begin() + 32), row);
    for (int x = 0; x < 4; ++x) {
      const auto pixel = DecodeDxt1Pixel(block, 4, x, 1);
      EXPECT_TRUE(std::equal(pixel.begin(), pixel.end(), row.begin() + 4 * x)) << x;
    }
  }
}

TEST(DecodeDxt1, BlocksFillRowsAndTheMissingOnesAreZero) {
  ByteVector blocks = UniformBlocks(2, kRed);
  const ByteVector rgba = DecodeDxt1(blocks, 6, 5);
  ASSERT_EQ(rgba.size(), 6u * 5 * 4);
  EXPECT_EQ(rgba[5 * 4], 248) << "the second block, cut at the right edge";
  EXPECT_EQ(rgba[4 * 6 * 4], 0) << "the fifth row belongs to the third block";
  EXPECT_EQ(DecodeDxt1Pixel(blocks, 6, 5, 3)[0], 248);
  EXPECT_EQ(DecodeDxt1Pixel(blocks, 6, 0, 4)[3], 0);
  for (const auto& [width, height] : {std::pair{0, 4}, {4, 0}, {4097, 4}, {4, 4097}}) {
    EXPECT_TRUE(DecodeDxt1(blocks, width, height).empty()) << width << " x " << height;
  }
}

class DdsTextureTest : public LevelArchiveTest {
 protected:
  void SetUp() override {
    if (!OpenTestGl(16, 16)) GTEST_SKIP() << TestGlError();
  }
  void TearDown() override { glDeleteTextures(1, &texture); }

  // Bytes of each level of the texture.
  static std::vector<int> LevelSizes() {
    std::vector<int> sizes;
    for (int mip = 0; mip < 14; ++mip) {
      GLint width = 0, size = 0;
      glGetTexLevelParameteriv(GL_TEXTURE_2D, mip, GL_TEXTURE_WIDTH, &width);
      if (width == 0) break;
      glGetTexLevelParameteriv(GL_TEXTURE_2D, mip, GL_TEXTURE_COMPRESSED_IMAGE_SIZE, &size);
      sizes.push_back(size);
    }
    return sizes;
  }
  // The colour of the middle of the view after the texture was drawn over all of it, much smaller.
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

  unsigned texture = 0;
};

TEST_F(DdsTextureTest, EveryLevelThatTheFileHasIsUploaded) {
  DdsFile cut = FullChain(), single{256, 256, 32768, 0, "DXT1", UniformBlocks(4096, kRed)};
  cut.data.resize(32768 + 8192 + 2047);
  DdsFile none = cut;
  none.data.resize(32767);
  const struct {
    DdsFile file;
    std::vector<int> levels;
    ByteVector drawn;
    int filter = GL_LINEAR;
  } kRows[] = {
      {FullChain(),
       {32768, 8192, 2048, 512, 128, 32, 8, 8, 8},
       {0, 0, 255},
       GL_LINEAR_MIPMAP_LINEAR},
      {cut, {32768, 8192}, {0, 0, 255}, GL_LINEAR_MIPMAP_LINEAR},  // complete all the same
      {single, {32768}, {255, 0, 0}},                              // a count of none is one level
      {{4, 2, 8, 8, "DXT1", UniformBlocks(2, kBlue)}, {8, 8}, {0, 0, 255}},
      {{4, 2, 64, 8, "DXT1", UniformBlocks(16, kBlue)}, {8, 8, 8}, {0, 0, 255}},  // to 1 x 1
      {none, {}, {}}};
  for (const auto& row : kRows) {
    Put("wall.dds", Text(row.file.Bytes()));
    EXPECT_EQ(LoadDdsTexture(LevelPath("wall.dds"), texture), !row.levels.empty());
    if (row.levels.empty()) continue;
    EXPECT_EQ(LevelSizes(), row.levels);
    EXPECT_EQ(DrawnColour(), row.drawn) << row.levels.size();
    GLint filter = 0, wrap = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &filter);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, &wrap);
    EXPECT_EQ(filter, row.filter) << row.levels.size();
    EXPECT_EQ(wrap, GL_REPEAT);
    glDeleteTextures(1, &texture);
  }
  Put("damaged.dds", "DDS ");
  for (const char* file : {"damaged.dds", "missing.dds"}) {
    EXPECT_FALSE(LoadDdsTexture(LevelPath(file), texture)) << file;
    EXPECT_EQ(texture, 0u);
  }
}

}  // namespace
}  // namespace mw
