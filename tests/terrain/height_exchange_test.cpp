#include "terrain/height_exchange.h"

#include <gtest/gtest.h>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "support/archive_bytes.h"
#include "support/sandbox.h"
#include "support/test.h"
#include "terrain/mini_map_picture.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr int kSide = 256;
constexpr std::size_t kSamples = kSide * kSide;

// A level of 256 samples; the user's choice in the dialog is `bits`.
class HeightExchangeTest : public SandboxTest {
 protected:
  HeightExchangeTest() {
    modConfig = ModConfig{};
    modConfig.MaterialSize = kSide;
    modConfig.WorldSize = 4 * kSide;
    CreateTerrain();
    InitGrid();
  }
  ~HeightExchangeTest() override {
    DestroyTerrain();
    modConfig = ModConfig{};
  }

  AskSampleBits Choose(std::optional<SampleBits> bits) {
    return [this, bits](const char* title) {
      titles.emplace_back(title);
      return bits;
    };
  }
  // Exports without anything going wrong.
  Bytes Export(SampleBits bits) {
    scripted::script.answers = {PromptAnswer::Yes, PromptAnswer::Ok};
    ExportHeightmap(Choose(bits));
    return ReadBytes(File());
  }
  void Import(SampleBits bits, const Bytes& file) {
    WriteBytes(File(), file);
    ImportHeightmap(Choose(bits));
  }
  std::filesystem::path File() const { return folder / "heightmap.raw"; }
  static float& Height(int i, int j) { return terrain.grid[i][j].h; }
  static void ExpectNothingImported() {
    EXPECT_EQ(Height(kSide, 0), 127);
    EXPECT_EQ(Height(1, kSide - 1), 127);
    EXPECT_FALSE(editor.levelModified);
  }

  std::vector<std::string> titles;
};

const scripted::Prompt kQuestion{
    "This will overwrite your existing heightmap.raw file\nin your Mapwright directory.\n\n"
    "Do you wish to proceed?",
    "Export Heightmap", PromptButtons::YesNo, PromptIcon::None};

scripted::Prompt Problem(const char* text) {
  return {text, "Import Heightmap Problem", PromptButtons::Ok, PromptIcon::Exclamation};
}

TEST_F(HeightExchangeTest, SamplesAreWrittenInTheLevelsOrderAtEachDepthAndTold) {
  Height(256, 0) = 1.5f;    // first sample
  Height(255, 0) = 127.9f;  // second
  Height(256, 1) = 256;     // first of the second row
  Height(1, 255) = -2;      // last
  const struct {
    SampleBits bits;
    const char* name;
    Bytes first, second, secondRow, last;
  } depths[] = {
      {SampleBits::Eight, "8", {1}, {127}, {255}, {0}},
      {SampleBits::Sixteen, "16", {0x80, 1}, {0xE6, 127}, {0xFF, 0xFF}, {0, 0}},
      {SampleBits::TwentyFour, "24", {1, 1, 1}, {127, 127, 127}, {255, 255, 255}, {0, 0, 0}}};
  for (const auto& depth : depths) {
    SCOPED_TRACE(depth.name);
    scripted::script.waitCursorCount = 0;
    const Bytes file = Export(depth.bits);
    const std::size_t width = depth.first.size();
    ASSERT_EQ(file.size(), kSamples * width);
    const auto sample = [&](std::size_t at) {
      return Bytes(&file[at * width], &file[at * width] + width);
    };
    EXPECT_EQ(sample(0), depth.first);
    EXPECT_EQ(sample(1), depth.second);
    EXPECT_EQ(sample(kSide), depth.secondRow);
    EXPECT_EQ(sample(kSamples - 1), depth.last);
    const std::string report =
        "The heightmap was saved as 'heightmap.raw' in the\nMapwright directory as a 256x256, " +
        std::string(depth.name) + " bit file.";
    ExpectBoxes(
        {kQuestion,
         {report, "Export Heightmap Complete", PromptButtons::Ok, PromptIcon::Information}});
    EXPECT_EQ(titles.back(), "Select Export Bits");
    EXPECT_EQ(scripted::script.waitCursorCount, 1);
  }
  EXPECT_FALSE(editor.levelModified);
}

TEST_F(HeightExchangeTest, WhoSaysNoOrCancelsExportsNothing) {
  scripted::script.answers = {PromptAnswer::No};
  ExportHeightmap(Choose(SampleBits::Eight));
  EXPECT_TRUE(titles.empty());
  scripted::script.answers = {PromptAnswer::Yes};
  ExportHeightmap(Choose(std::nullopt));
  EXPECT_FALSE(std::filesystem::exists(File()));
}

TEST_F(HeightExchangeTest, AnExportThatFailsGivesTheReasonAndLeavesNothingBehind) {
  std::filesystem::create_directories(File() / "in the way");
  scripted::script.answers = {PromptAnswer::Yes, PromptAnswer::Ok};
  ExportHeightmap(Choose(SampleBits::Eight));
  ASSERT_EQ(scripted::script.prompts.size(), 2u);
  EXPECT_EQ(scripted::script.prompts[1].text, "Is a directory");
  EXPECT_EQ(scripted::script.prompts[1].caption, "Error");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST_F(HeightExchangeTest, SixteenBitsComeBackAsTheyWere) {
  for (int i = 1; i <= kSide; ++i) {
    for (int j = 0; j < kSide; ++j) Height(i, j) = static_cast<float>(i * 37 + j * 11) * 0.0211f;
  }
  const float first = Height(256, 0), last = Height(1, 255);
  const Bytes file = Export(SampleBits::Sixteen);
  InitGrid();
  BeginLoadReport();
  NoteDamagedPart(LevelPart::HeightMap, "cut off");
  int repaints = 0;
  hooks.invalidateMiniMap = [&] { ++repaints; };
  Import(SampleBits::Sixteen, file);
  EXPECT_EQ(titles.back(), "Select Import Bits");
  EXPECT_NEAR(Height(256, 0), first, 1.0 / 256);
  EXPECT_NEAR(Height(1, 255), last, 1.0 / 256);
  EXPECT_EQ(Export(SampleBits::Sixteen), file);
  EXPECT_TRUE(editor.levelModified);
  EXPECT_TRUE(MayWrite(LevelPart::HeightMap)) << "the damaged one is replaced";
  ClearLoadReport();
  EXPECT_EQ(repaints, 1);
  EXPECT_EQ(terrain.miniMap.grey[(128 - 10) * kMiniMapSize + 128 - 100],
            static_cast<int>(Height(200, 21)));
}

TEST_F(HeightExchangeTest, TheShorterAndTheLongerDepthAreWholeHeightUnitsOfTheirFirstByte) {
  for (const auto& [bits, width] :
       {std::pair{SampleBits::Eight, 1}, std::pair{SampleBits::TwentyFour, 3}}) {
    InitGrid();
    const auto step = static_cast<std::size_t>(width);
    Bytes file(kSamples * step, 7);
    for (std::size_t at = 0; at < file.size(); at += step) file[at] = 90;
    file[step] = 255;
    Import(bits, file);
    EXPECT_EQ(Height(256, 0), 90);
    EXPECT_EQ(Height(255, 0), 255);
    EXPECT_EQ(Height(1, 255), 90);
    EXPECT_EQ(Height(0, 0), 127) << "row 0 carries no data";
  }
}

TEST_F(HeightExchangeTest, AFileOfAnotherSizeIsRefusedHoweverLargeItIs) {
  WriteBytes(File(), {});
  for (const std::uintmax_t size :
       {std::uintmax_t{0}, std::uintmax_t{kSamples * 2 - 1}, std::uintmax_t{kSamples * 2 + 1},
        std::uintmax_t{kSamples * 8}, std::uintmax_t{1} << 40}) {
    std::filesystem::resize_file(File(), size);
    scripted::script.answers = {PromptAnswer::Ok};
    ImportHeightmap(Choose(SampleBits::Sixteen));
    ExpectBoxes({Problem(
        "There was a problem loading this heightmap!  Please make sure\nthat the RAW file "
        "dimensions match with dimensions of the map.\nAlso make sure that the RAW file you "
        "are trying to load is in the\nsame bit format that you are selecting for "
        "import.\n\nPlease try again.\n")});
    ExpectNothingImported();
  }
}

TEST_F(HeightExchangeTest, AMissingFileIsTold) {
  const scripted::Prompt missing =
      Problem("No heightmap.raw was found in the Mapwright directory for import.");
  scripted::script.answers.assign(2, PromptAnswer::Ok);
  ImportHeightmap(Choose(SampleBits::Eight));
  std::filesystem::create_directory(File());
  ImportHeightmap(Choose(SampleBits::Eight));
  ExpectBoxes({missing, missing});
  ExpectNothingImported();
}

TEST_F(HeightExchangeTest, WhoCancelsImportsNothing) {
  WriteBytes(File(), Bytes(kSamples, 3));
  ImportHeightmap(Choose(std::nullopt));
  ExpectNothingImported();
}

}  // namespace
}  // namespace mw
