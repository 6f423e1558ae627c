#include "data/image.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/disk.h"
#include "support/bmp_file.h"
#include "support/sandbox.h"

namespace mw {
namespace {

using Bytes = std::vector<std::uint8_t>;
using ::testing::ElementsAre;

constexpr std::uint32_t kRle8 = 1, kRle4 = 2, kBitFields = 3;
constexpr char kUnknownFormat[] = "Unknown DIB file format.";
constexpr char kConversionError[] = "Image file conversion error.";

// "r", "b" and "k" (red, blue, black) as RGB pixels.
Bytes Pixels(std::string_view colours) {
  Bytes rgb;
  for (const char c : colours) {
    const auto level = [&](char channel) {
      return static_cast<std::uint8_t>(c == channel ? 255 : 0);
    };
    rgb.insert(rgb.end(), {level('r'), 0, level('b')});
  }
  return rgb;
}

const Bytes kRedAndBlue = {0, 0, 255, 0, 255, 0, 0, 0};  // a colour table, blue green red reserved

// The same picture in every encoding: bottom row "rbr", top row "bbr".
const Bytes kPicture = Pixels("rbrbbr");
std::vector<std::pair<const char*, BmpFile>> AllEncodings() {
  return {
      {"1 bit", {3, 2, 1, 0, 2, kRedAndBlue, {0b01000000, 0, 0, 0, 0b11000000, 0, 0, 0}}},
      {"4 bits", {3, 2, 4, 0, 2, kRedAndBlue, {0x01, 0x00, 0, 0, 0x11, 0x00, 0, 0}}},
      {"8 bits", {3, 2, 8, 0, 2, kRedAndBlue, {0, 1, 0, 9, 1, 1, 0, 9}}},
      {"8 bits, rows from the top", {3, -2, 8, 0, 2, kRedAndBlue, {1, 1, 0, 9, 0, 1, 0, 9}}},
      {"16 bits", {3, 2, 16, 0, 0, {}, {0, 0x7C, 31, 0, 0, 0x7C, 9, 9, 31, 0, 31, 0, 0, 0x7C}}},
      {"16 bits with fields",
       {3,
        2,
        16,
        kBitFields,
        0,
        {0, 0xF8, 0, 0, 0xE0, 7, 0, 0, 31, 0, 0, 0},
        {0, 0xF8, 31, 0, 0, 0xF8, 9, 9, 31, 0, 31, 0, 0, 0xF8, 9, 9}}},
      {"24 bits", {3, 2, 24, 0, 0, {}, {0, 0,   255, 255, 0,   0, 0, 0, 255, 9,  9,
                                        9, 255, 0,   0,   255, 0, 0, 0, 0,   255}}},
      {"32 bits", {3, 2, 32, 0, 0, {}, {0,   0, 255, 9, 255, 0, 0, 9, 0, 0, 255, 9,
                                        255, 0, 0,   9, 255, 0, 0, 9, 0, 0, 255, 9}}},
      {"32 bits with fields",
       {3, 2, 32, kBitFields, 0, {0, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0}, {9,   0,   0,   255, 9,
                                                                              255, 0,   0,   9,   0,
                                                                              0,   255, 9,   255, 0,
                                                                              0,   9,   255, 0,   0,
                                                                              9,   0,   0,   255}}},
      {"RLE8", {3, 2, 8, kRle8, 2, kRedAndBlue, {0, 3, 0, 1, 0, 9, 0, 0, 2, 1, 1, 0, 0, 1}}},
      {"RLE4", {3, 2, 4, kRle4, 2, kRedAndBlue, {3, 0x01, 0, 0, 0, 3, 0x11, 0x00, 0, 1}}},
      {"core header",
       {3, 2, 8, 0, 0, {0, 0, 255, 255, 0, 0}, {0, 1, 0, 9, 1, 1, 0, 9}, true, true}},
      {"no file header", {3, 2, 8, 0, 2, kRedAndBlue, {0, 1, 0, 9, 1, 1, 0, 9}, false}},
  };
}

std::string ErrorOf(const Bytes& file) {
  std::string error;
  return DecodeBmp(file, &error) ? "decoded" : error;
}

TEST(Bmp, EveryEncodingGivesTheSamePicture) {
  for (const auto& [name, file] : AllEncodings()) {
    const auto image = DecodeBmp(file.Bytes());
    ASSERT_TRUE(image) << name;
    EXPECT_EQ(image->width, 3) << name;
    EXPECT_EQ(image->height, 2) << name;
    EXPECT_EQ(image->rgb, kPicture) << name;
  }
}

TEST(Bmp, FileCutAnywhereNeverShowsPixelsThatItLacks) {
  for (const auto& [name, file] : AllEncodings()) {
    const Bytes whole = file.Bytes();
    for (std::size_t size = 0; size + 4 < whole.size(); ++size) {
      const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
      std::string error;
      const auto image = DecodeBmp(cut, &error);
      const bool isRle = file.compression == kRle8 || file.compression == kRle4;
      EXPECT_TRUE(isRle || !image) << name << " cut at " << size;
      EXPECT_TRUE(image || error == kUnknownFormat || error == kConversionError) << error;
    }
  }
}

TEST(Bmp, RowPaddingOfTheLastRowMayBeMissing) {
  BmpFile file{1, 1};
  file.pixels = {30, 20, 10};
  EXPECT_THAT(DecodeBmp(file.Bytes())->rgb, ElementsAre(10, 20, 30));
}

TEST(Bmp, PixelsThatRunsSkipAreBlackAndRunsEndAtTheEdge) {
  // One blue pixel, then one right and one up, then a run that is longer than the row.
  const BmpFile file{3, 2, 8, kRle8, 2, kRedAndBlue, {1, 1, 0, 2, 1, 1, 200, 0}};
  const auto image = DecodeBmp(file.Bytes());
  ASSERT_TRUE(image) << "the end mark may be missing";
  EXPECT_EQ(image->rgb, Pixels("bkkkkr"));
}

TEST(Bmp, RunsThatEndWithinACodeAreDamaged) {
  BmpFile file{3, 2, 8, kRle8, 2, kRedAndBlue, {0, 3, 0, 1}};
  EXPECT_EQ(ErrorOf(file.Bytes()), kConversionError);
  file.pixels = {0, 2, 1};
  EXPECT_EQ(ErrorOf(file.Bytes()), kConversionError);
}

TEST(Bmp, ColoursThatTheTableLacksAreBlack) {
  const BmpFile file{4, 1, 8, 0, 2, kRedAndBlue, {0, 1, 2, 255}};
  EXPECT_EQ(DecodeBmp(file.Bytes())->rgb, Pixels("rbkk"));
  const BmpFile claimsMany{1, 1, 8, 0, 0xFFFFFFFF, kRedAndBlue, {1, 0, 0, 0}};
  EXPECT_EQ(DecodeBmp(claimsMany.Bytes())->rgb, Pixels("b"));
}

TEST(Bmp, ImpossibleSizesAndKindsAreRefused) {
  const Bytes none;
  EXPECT_EQ(ErrorOf(none), kUnknownFormat);
  Bytes newerHeader = UniformBmp(1, 1, 0, 0, 0);
  newerHeader[14] = 108;
  EXPECT_EQ(ErrorOf(newerHeader), kUnknownFormat);
  const std::pair<std::int32_t, std::int32_t> sizes[] = {
      {0, 1}, {1, 0}, {-1, 1}, {kMaxImageSide + 1, 1}, {1, kMaxImageSide + 1}, {1, INT32_MIN}};
  for (const auto& [width, height] : sizes) {
    EXPECT_EQ(ErrorOf(BmpFile{width, height, 24, 0, 0, {}, Bytes(64)}.Bytes()), kConversionError)
        << width << " x " << height;
  }
  EXPECT_EQ(ErrorOf(BmpFile{1, 1, 2, 0, 0, {}, Bytes(64)}.Bytes()), kConversionError);
  EXPECT_EQ(ErrorOf(BmpFile{1, 1, 24, kRle8, 0, {}, Bytes(64)}.Bytes()), kConversionError);
  EXPECT_EQ(ErrorOf(BmpFile{1, 1, 24, 5, 0, {}, Bytes(64)}.Bytes()), kConversionError)
      << "an embedded picture of another kind";
}

class ImageFileTest : public SandboxTest {};

TEST_F(ImageFileTest, MissingBitmapIsNoErrorAndADamagedOneIsShown) {
  EXPECT_FALSE(LoadBmp("missing.bmp"));
  EXPECT_TRUE(scripted::script.prompts.empty());

  scripted::script.answers.assign(2, PromptAnswer::Ok);
  WriteWholeFile("damaged.bmp", "BM and something else");
  EXPECT_FALSE(LoadBmp("damaged.bmp"));
  WriteWholeFile("empty.bmp", "");
  EXPECT_FALSE(LoadBmp("empty.bmp"));
  ASSERT_EQ(scripted::script.prompts.size(), 2u);
  EXPECT_EQ(scripted::script.prompts[0].text, kUnknownFormat);
  EXPECT_EQ(scripted::script.prompts[0].caption, "Error");
  EXPECT_EQ(scripted::script.prompts[1].text, "Failed to open DIB file empty.bmp.\n");
}

TEST_F(ImageFileTest, BitmapIsFoundUnderAGamePathInAnyCase) {
  CreateFolder("media");
  WriteWholeFile("media/grass.bmp", UniformBmp(2, 1, 1, 2, 3));
  const auto image = LoadBmp("Media\\GRASS.bmp");
  ASSERT_TRUE(image);
  EXPECT_THAT(image->rgb, ElementsAre(1, 2, 3, 1, 2, 3));
}

TEST_F(ImageFileTest, PlainBitmapKeepsHeaderAndPadding) {
  WriteWholeFile("font.bmp", BmpFile{1, 2, 24, 0, 0, {}, {3, 2, 1, 77, 6, 5, 4, 88}}.Bytes());
  const auto bmp = LoadBmp24("font.bmp");
  ASSERT_TRUE(bmp);
  EXPECT_EQ(bmp->information[0], 40);
  EXPECT_EQ(bmp->information[8], 2) << "the height";
  EXPECT_THAT(bmp->pixels, ElementsAre(1, 2, 3, 77, 4, 5, 6, 88));
}

TEST_F(ImageFileTest, PlainBitmapMustHoldItsRows) {
  EXPECT_FALSE(LoadBmp24("missing.bmp"));
  WriteWholeFile("short.bmp", BmpFile{1, 2, 24, 0, 0, {}, {3, 2, 1, 0}}.Bytes());
  EXPECT_FALSE(LoadBmp24("short.bmp"));
  WriteWholeFile("indexed.bmp", BmpFile{1, 1, 8, 0, 2, kRedAndBlue, Bytes(64)}.Bytes());
  EXPECT_FALSE(LoadBmp24("indexed.bmp"));
}

TEST_F(ImageFileTest, TgaHasRowsFromTheBottomInBlueGreenRed) {
  const Bytes rowsFromTop = {1, 2, 3, 4, 5, 6};
  ASSERT_TRUE(WriteTga("tile.tga", 1, 2, rowsFromTop));
  EXPECT_THAT(*ReadWholeFile("tile.tga"),
              ElementsAre(0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 2, 0, 24, 0, 6, 5, 4, 3, 2, 1));
  EXPECT_FALSE(WriteTga("tile.tga", 2, 2, rowsFromTop)) << "too few pixels";
}

TEST(ResampleRgb, KeepsColoursAndDirections) {
  const Bytes redOverBlue = Pixels("rrbb");
  const Bytes larger = ResampleRgb(redOverBlue, 2, 2, 8, 8);
  ASSERT_EQ(larger.size(), 8u * 8 * 3);
  EXPECT_THAT(Bytes(larger.begin(), larger.begin() + 3), ElementsAre(255, 0, 0));
  EXPECT_THAT(Bytes(larger.end() - 3, larger.end()), ElementsAre(0, 0, 255));
  const Bytes one = ResampleRgb(larger, 8, 8, 1, 1);
  ASSERT_EQ(one.size(), 3u);
  EXPECT_NEAR(one[0], 127, 1);
  EXPECT_NEAR(one[2], 127, 1);
  EXPECT_TRUE(ResampleRgb(redOverBlue, 4, 2, 8, 8).empty()) << "too few pixels";
}

}  // namespace
}  // namespace mw
