#include "terrain/height_exchange.h"

#include "data/load_report.h"
#include "support/archive_bytes.h"
#include "support/test.h"
#include "terrain/flat_ground.h"

namespace mw {
namespace {

constexpr std::size_t kSamples = 256 * 256;

class HeightExchangeTest : public FlatGround<SandboxTest> {
 protected:
  // The user's choice in the dialog.
  AskSampleBits Choose(std::optional<SampleBits> bits) {
    return [this, bits](const char* title) {
      titles.emplace_back(title);
      return bits;
    };
  }
  // Exports without anything going wrong.
  Bytes Export(SampleBits bits) {
    Answer({PromptAnswer::Yes, PromptAnswer::Ok});
    ExportHeightmap(Choose(bits));
    return ReadBytes(File());
  }
  void Import(SampleBits bits, const Bytes& file) {
    WriteBytes(File(), file);
    ImportHeightmap(Choose(bits));
  }
  std::filesystem::path File() const { return folder / "heightmap.raw"; }

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
    for (const auto& [at, expected] : {std::pair{std::size_t{0}, depth.first},
                                       {1, depth.second},
                                       {256, depth.secondRow},
                                       {kSamples - 1, depth.last}})
      EXPECT_EQ(Bytes(&file[at * width], &file[at * width] + width), expected) << at;
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

TEST_F(HeightExchangeTest, WhoSaysNoOrCancelsExportsAndImportsNothing) {
  Answer({PromptAnswer::No});
  ExportHeightmap(Choose(SampleBits::Eight));
  EXPECT_TRUE(titles.empty());
  Answer({PromptAnswer::Yes});
  ExportHeightmap(Choose(std::nullopt));
  EXPECT_FALSE(std::filesystem::exists(File()));
  WriteBytes(File(), Bytes(kSamples, 3));
  ImportHeightmap(Choose(std::nullopt));
  EXPECT_EQ(Heights(), "");
  EXPECT_FALSE(editor.levelModified);
}

TEST_F(HeightExchangeTest, AnExportThatFailsGivesTheReasonAndLeavesNothingBehind) {
  std::filesystem::create_directories(File() / "in the way");
  Answer({PromptAnswer::Yes, PromptAnswer::Ok});
  ExportHeightmap(Choose(SampleBits::Eight));
  ExpectBoxes({kQuestion, {"Is a directory", "Error", PromptButtons::Ok, PromptIcon::Stop}});
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST_F(HeightExchangeTest, SixteenBitsComeBackAsTheyWereAndReplaceADamagedMap) {
  for (int i = 1; i <= kSide; ++i) {
    for (int j = 0; j < kSide; ++j) Height(i, j) = static_cast<float>(i * 37 + j * 11) / 64;
  }
  const std::string before = Heights();
  const Bytes file = Export(SampleBits::Sixteen);
  StartFlat();
  BeginLoadReport();
  NoteDamagedPart(LevelPart::HeightMap, "cut off");
  Import(SampleBits::Sixteen, file);
  EXPECT_TRUE(Heights() == before);
  EXPECT_TRUE(MayWrite(LevelPart::HeightMap));
  ClearLoadReport();
  EXPECT_EQ(titles.back(), "Select Import Bits");
  EXPECT_TRUE(editor.levelModified);
  EXPECT_EQ(repaints, 1);
  EXPECT_EQ(terrain.miniMap.grey[(128 - 10) * kMiniMapSize + 128 - 100],
            static_cast<int>(Height(200, 21)));
}

TEST_F(HeightExchangeTest, TheShorterAndTheLongerDepthAreWholeHeightUnitsOfTheirFirstByte) {
  for (const auto& [bits, width] :
       {std::pair{SampleBits::Eight, std::size_t{1}}, {SampleBits::TwentyFour, 3}}) {
    StartFlat();
    Bytes file(kSamples * width, 7);
    for (std::size_t at = 0; at < file.size(); at += width) file[at] = 90;
    file[width] = 255;
    Import(bits, file);
    EXPECT_EQ(Heights(), "1-254: 0-255=90\n255: 0=255 1-255=90\n256: 0-255=90\n");
  }
}

TEST_F(HeightExchangeTest, AFileThatIsMissingOrOfAnotherSizeIsToldHoweverLargeItIs) {
  scripted::script.answers.assign(7, PromptAnswer::Ok);
  const auto missing = Problem("No heightmap.raw was found in the Mapwright directory for import.");
  ImportHeightmap(Choose(SampleBits::Eight));
  std::filesystem::create_directory(File());
  ImportHeightmap(Choose(SampleBits::Eight));
  ExpectBoxes({missing, missing});
  std::filesystem::remove(File());
  WriteBytes(File(), {});
  for (const std::uintmax_t size :
       {std::uintmax_t{0}, std::uintmax_t{kSamples * 2 - 1}, std::uintmax_t{kSamples * 2 + 1},
        std::uintmax_t{kSamples * 8}, std::uintmax_t{1} << 40}) {
    std::filesystem::resize_file(File(), size);
    ImportHeightmap(Choose(SampleBits::Sixteen));
    ExpectBoxes({Problem(
        "There was a problem loading this heightmap!  Please make sure\nthat the RAW file "
        "dimensions match with dimensions of the map.\nAlso make sure that the RAW file you "
        "are trying to load is in the\nsame bit format that you are selecting for "
        "import.\n\nPlease try again.\n")});
  }
  EXPECT_EQ(Heights(), "");
  EXPECT_FALSE(editor.levelModified);
}

}  // namespace
}  // namespace mw
