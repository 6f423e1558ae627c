#include "data/image.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tuple>

#include "core/editor_state.h"
#include "core/text.h"
#include "platform/disk.h"
#include "support/archive_bytes.h"
#include "support/bmp_file.h"
#include "support/golden.h"
#include "support/prompts.h"
#include "support/sandbox.h"

namespace mw {
namespace {

using ::testing::ElementsAre;

constexpr char kUnknownFormat[] = "Unknown DIB file format.";
constexpr char kConversionError[] = "Image file conversion error.";

// Size and pixels of a bitmap: "r", "b" and "k" for red, blue and black, else their numbers; or why
// it cannot be read.
std::string Told(const Bytes& file) {
  std::string error;
  const auto image = DecodeBmp(file, &error);
  if (!image) return error;
  std::string text = std::to_string(image->width) + " x " + std::to_string(image->height) + " ";
  for (std::size_t i = 0; i < std::min<std::size_t>(image->rgb.size(), 30); i += 3) {
    const auto [r, g, b] = std::tuple(image->rgb[i], image->rgb[i + 1], image->rgb[i + 2]);
    const bool plain = g == 0 && (r % 255 == 0 && b % 255 == 0);
    text += !plain ? FormatText("(%i %i %i)", r, g, b) : r ? "r" : b ? "b" : "k";
  }
  return text;
}

// Every encoding, and damaged files, each as a file: those named "same" are the same picture.
TEST(Bmp, EveryFileGivesItsPictureOrItsError) {
  std::string told;
  for (const std::string& name : GoldenFiles("bmp")) {
    told += name + ": " + Told(TextBytes(GoldenText(name))) + "\n";
  }
  ExpectGolden("data/bmp.txt", told);
}

TEST(Bmp, FileCutAnywhereNeverShowsPixelsThatItLacks) {
  for (const std::string& name : GoldenFiles("bmp")) {
    if (name.find("same") == name.npos) continue;
    const Bytes whole = TextBytes(GoldenText(name));
    for (std::size_t size = 0; size + 4 < whole.size(); ++size) {
      const std::string told = Told({whole.begin(), whole.begin() + std::ptrdiff_t(size)});
      const bool failed = told == kUnknownFormat || told == kConversionError;
      EXPECT_TRUE(failed || name.find("RLE") != name.npos) << name << " cut at " << size;
    }
  }
}

struct ImageFileTest : SandboxTest {};

TEST_F(ImageFileTest, MissingBitmapIsNoErrorAndADamagedOneIsShown) {
  EXPECT_FALSE(LoadBmp("missing.bmp"));
  ExpectPrompts({});
  Answer({PromptAnswer::Ok, PromptAnswer::Ok});
  WriteBytes("damaged.bmp", TextBytes("BM and something else"));
  WriteBytes("empty.bmp", {});
  for (const char* name : {"damaged.bmp", "empty.bmp"}) EXPECT_FALSE(LoadBmp(name));
  ExpectPrompts({std::string("Error: ") + kUnknownFormat + " (Stop)",
                 "Error: Failed to open DIB file empty.bmp.\n (Stop)"});
  CreateFolder("media");
  WriteBytes("media/grass.bmp", UniformBmp(2, 1, 1, 2, 3));
  EXPECT_THAT(LoadBmp("Media\\GRASS.bmp")->rgb, ElementsAre(1, 2, 3, 1, 2, 3));
}

TEST_F(ImageFileTest, BitmapIsFoundAmongWhatTheProgramBringsAlong) {
  std::filesystem::create_directories("shared/media");
  WriteBytes("shared/media/grass.bmp", UniformBmp(1, 1, 1, 2, 3));
  editor.sharedFolder = (folder / "shared").string();
  const auto grass = LoadBmp("media/grass.bmp");
  ASSERT_TRUE(grass);
  EXPECT_THAT(grass->rgb, ElementsAre(1, 2, 3));
}

TEST_F(ImageFileTest, PlainBitmapKeepsHeaderAndPaddingAndMustHoldItsRows) {
  const BmpFile file{1, 2, 24, 0, 0, {}, {3, 2, 1, 77, 6, 5, 4, 88}};
  WriteBytes("font.bmp", file.Bytes());
  const auto bmp = LoadBmp24("font.bmp");
  ASSERT_TRUE(bmp);
  EXPECT_EQ(bmp->information[0], 40);
  EXPECT_EQ(bmp->information[8], 2) << "the height";
  EXPECT_THAT(bmp->pixels, ElementsAre(1, 2, 3, 77, 4, 5, 6, 88));
  Bytes cut = file.Bytes(), noBitmap = cut;
  cut.pop_back();
  noBitmap[1] = 'P';
  for (const Bytes& other : {cut, noBitmap, BmpFile{1, 1, 8, 0, 2, {}, Bytes(64)}.Bytes(),
                             BmpFile{0, 1, 24, 0, 0, {}, Bytes(64)}.Bytes()}) {
    WriteBytes("other.bmp", other);
    EXPECT_FALSE(LoadBmp24("other.bmp")) << other.size();
  }
  EXPECT_FALSE(LoadBmp24("missing.bmp"));
}

TEST_F(ImageFileTest, TgaHasRowsFromTheBottomInBlueGreenRed) {
  const Bytes rowsFromTop = {1, 2, 3, 4, 5, 6};
  ASSERT_TRUE(WriteTga("tile.tga", 1, 2, rowsFromTop));
  const Bytes file = ReadBytes("tile.tga");
  EXPECT_THAT(file,
              ElementsAre(0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 2, 0, 24, 0, 6, 5, 4, 3, 2, 1));
  EXPECT_EQ(DecodeTga(file, 1, 2), rowsFromTop);
  for (const auto& [width, height] : {std::pair{2, 2}, {0, 2}, {1, 0}, {65536, 1}}) {
    EXPECT_FALSE(WriteTga("tile.tga", width, height, rowsFromTop)) << width << " x " << height;
    EXPECT_FALSE(DecodeTga(file, width, height)) << width << " x " << height;
  }
}

TEST(ResampleRgb, KeepsColoursAndDirections) {
  const Bytes redOverBlue = {255, 0, 0, 255, 0, 0, 0, 0, 255, 0, 0, 255};
  const Bytes larger = ResampleRgb(redOverBlue, 2, 2, 8, 8);
  ASSERT_EQ(larger.size(), 8u * 8 * 3);
  EXPECT_THAT(Bytes(larger.begin(), larger.begin() + 3), ElementsAre(255, 0, 0));
  EXPECT_THAT(Bytes(larger.end() - 3, larger.end()), ElementsAre(0, 0, 255));
  const Bytes one = ResampleRgb(larger, 8, 8, 1, 1);
  ASSERT_EQ(one.size(), 3u);
  EXPECT_NEAR(one[0], 127, 1);
  EXPECT_NEAR(one[2], 127, 1);
  EXPECT_TRUE(ResampleRgb(redOverBlue, 4, 2, 8, 8).empty()) << "too few pixels";
  EXPECT_TRUE(ResampleRgb(redOverBlue, 2, 2, 4097, 8).empty()) << "too large";
}

}  // namespace
}  // namespace mw
