#include "terrain/height_exchange.h"

#include <gtest/gtest.h>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "support/archive_bytes.h"
#include "support/sandbox.h"
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

TEST_F(HeightExchangeTest, ExportAsksThenReportsWhatItWrote) {
  EXPECT_EQ(Export(SampleBits::Sixteen).size(), kSamples * 2);
  EXPECT_EQ(titles, std::vector<std::string>{"Select Export Bits"});
  ASSERT_EQ(scripted::script.prompts.size(), 2u);
  const scripted::Prompt &question = scripted::script.prompts[0],
                         &report = scripted::script.prompts[1];
  EXPECT_EQ(question.text,
            "This will overwrite your existing heightmap.raw file\nin your Mapwright directory.\n\n"
            "Do you wish to proceed?");
  EXPECT_EQ(question.caption, "Export Heightmap");
  EXPECT_EQ(question.buttons, PromptButtons::YesNo);
  EXPECT_EQ(report.text,
            "The heightmap was saved as 'heightmap.raw' in the\nMapwright directory as a 256x256, "
            "16 bit file.");
  EXPECT_EQ(report.caption, "Export Heightmap Complete");
  EXPECT_EQ(report.icon, PromptIcon::Information);
  EXPECT_EQ(scripted::script.waitCursorCount, 1);
  EXPECT_FALSE(editor.levelModified);
}

TEST_F(HeightExchangeTest, SamplesAreWrittenInTheLevelsOrderAtEachDepth) {
  Height(256, 0) = 1.5f;    // first sample
  Height(255, 0) = 127.9f;  // second
  Height(256, 1) = 256;     // first of the second row
  Height(1, 255) = -2;      // last
  const Bytes sixteen = Export(SampleBits::Sixteen);
  EXPECT_EQ(sixteen[0], 0x80) << "low byte first";
  EXPECT_EQ(sixteen[1], 1);
  EXPECT_EQ(sixteen[3], 127);
  EXPECT_EQ(sixteen[kSide * 2], 0xFF);
  EXPECT_EQ(sixteen[kSide * 2 + 1], 0xFF);
  EXPECT_EQ(sixteen.back(), 0);

  const Bytes eight = Export(SampleBits::Eight);
  ASSERT_EQ(eight.size(), kSamples);
  EXPECT_EQ(eight[0], 1);
  EXPECT_EQ(eight[1], 127);
  EXPECT_EQ(eight[kSide], 255);
  EXPECT_EQ(eight.back(), 0);

  const Bytes twentyFour = Export(SampleBits::TwentyFour);
  ASSERT_EQ(twentyFour.size(), kSamples * 3);
  EXPECT_EQ(Bytes(twentyFour.begin(), twentyFour.begin() + 6), (Bytes{1, 1, 1, 127, 127, 127}));
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
  int repaints = 0;
  hooks.invalidateMiniMap = [&] { ++repaints; };
  Import(SampleBits::Sixteen, file);
  EXPECT_EQ(titles.back(), "Select Import Bits");
  EXPECT_NEAR(Height(256, 0), first, 1.0 / 256);
  EXPECT_NEAR(Height(1, 255), last, 1.0 / 256);
  EXPECT_EQ(Export(SampleBits::Sixteen), file);
  EXPECT_TRUE(editor.levelModified);
  EXPECT_EQ(repaints, 1);
  EXPECT_EQ(terrain.miniMap.grey[(128 - 10) * kMiniMapSize + 128 - 100],
            static_cast<int>(Height(200, 21)));
}

TEST_F(HeightExchangeTest, EightBitsAreWholeHeightUnits) {
  Bytes file(kSamples, 90);
  file[1] = 255;
  Import(SampleBits::Eight, file);
  EXPECT_EQ(Height(256, 0), 90);
  EXPECT_EQ(Height(255, 0), 255);
  EXPECT_EQ(Height(1, 255), 90);
  EXPECT_EQ(Height(0, 0), 127) << "row 0 carries no data";
}

TEST_F(HeightExchangeTest, OfTwentyFourBitsTheFirstByteCounts) {
  Bytes file(kSamples * 3, 50);
  file[3] = 10, file[4] = 20, file[5] = 30;
  Import(SampleBits::TwentyFour, file);
  EXPECT_EQ(Height(256, 0), 50);
  EXPECT_EQ(Height(255, 0), 10);
}

TEST_F(HeightExchangeTest, AFileOfAnotherSizeIsRefused) {
  for (const std::size_t size :
       {std::size_t{0}, kSamples * 2 - 1, kSamples * 2 + 1, kSamples * 8}) {
    scripted::script.answers = {PromptAnswer::Ok};
    Import(SampleBits::Sixteen, Bytes(size, 3));
    const scripted::Prompt& problem = scripted::script.prompts.back();
    EXPECT_EQ(problem.text,
              "There was a problem loading this heightmap!  Please make sure\nthat the RAW file "
              "dimensions match with dimensions of the map.\nAlso make sure that the RAW file you "
              "are trying to load is in the\nsame bit format that you are selecting for "
              "import.\n\nPlease try again.\n");
    EXPECT_EQ(problem.caption, "Import Heightmap Problem");
    EXPECT_EQ(problem.icon, PromptIcon::Exclamation);
    ExpectNothingImported();
  }
}

TEST_F(HeightExchangeTest, AFileOfAnySizeIsRefusedWithoutReadingIt) {
  WriteBytes(File(), {});
  std::filesystem::resize_file(File(), std::uintmax_t{1} << 40);
  scripted::script.answers = {PromptAnswer::Ok};
  ImportHeightmap(Choose(SampleBits::Eight));
  ExpectNothingImported();
}

TEST_F(HeightExchangeTest, AMissingFileIsTold) {
  scripted::script.answers.assign(2, PromptAnswer::Ok);
  ImportHeightmap(Choose(SampleBits::Eight));
  std::filesystem::create_directory(File());
  ImportHeightmap(Choose(SampleBits::Eight));
  ASSERT_EQ(scripted::script.prompts.size(), 2u);
  for (const scripted::Prompt& prompt : scripted::script.prompts) {
    EXPECT_EQ(prompt.text, "No heightmap.raw was found in the Mapwright directory for import.");
    EXPECT_EQ(prompt.caption, "Import Heightmap Problem");
    EXPECT_EQ(prompt.icon, PromptIcon::Exclamation);
  }
  ExpectNothingImported();
}

TEST_F(HeightExchangeTest, WhoCancelsImportsNothing) {
  WriteBytes(File(), Bytes(kSamples, 3));
  ImportHeightmap(Choose(std::nullopt));
  ExpectNothingImported();
}

}  // namespace
}  // namespace mw
