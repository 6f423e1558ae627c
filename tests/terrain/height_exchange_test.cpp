#include "terrain/height_exchange.h"

#include "data/load_report.h"
#include "support/archive_bytes.h"
#include "support/golden.h"
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
      listing += std::string("asked: ") + title + "\n";
      return bits;
    };
  }
  void List(const char* name) {
    listing += Told();
    for (const std::string& box : TakePrompts()) listing += "box: " + box + "\n";
    listing += FormatText("waited %i times\n== %s\n",
                          std::exchange(scripted::script.waitCursorCount, 0), name);
  }
  std::filesystem::path File() const { return folder / "heightmap.raw"; }

  std::string listing;
};

TEST_F(HeightExchangeTest, SamplesGoOutAndComeBackAsListed) {
  listing = "== exported\n";
  for (const SampleBits bits : {SampleBits::Eight, SampleBits::Sixteen, SampleBits::TwentyFour}) {
    StartFlat();
    Height(256, 0) = 1.5f;    // first sample
    Height(255, 0) = 127.9f;  // second
    Height(256, 1) = 256;     // first of the second row
    Height(1, 255) = -2;      // last
    Height(200, 21) = 90;     // shown by the Mini-Map
    Answer({PromptAnswer::Yes, PromptAnswer::Ok});
    ExportHeightmap(Choose(bits));
    Bytes file = ReadBytes(File());
    const std::size_t width = file.size() / kSamples;
    for (const std::size_t sample :
         {std::size_t{0}, std::size_t{1}, std::size_t{256}, kSamples - 1}) {
      listing += FormatText("sample %zu:", sample);
      for (std::size_t at = 0; at < width; ++at)
        listing += FormatText(" %02X", file[sample * width + at]);
      listing += '\n';
    }
    List("imported");
    if (width == 3) file[1] = file[2] = 200;  // the first byte counts
    WriteBytes(File(), file);
    StartFlat();
    BeginLoadReport();
    NoteDamagedPart(LevelPart::HeightMap, "cut off");
    ImportHeightmap(Choose(bits));
    EXPECT_TRUE(MayWrite(LevelPart::HeightMap)) << "the damaged one is replaced";
    ClearLoadReport();
    listing += Heights();
    List("exported");
  }
  ExpectGolden("terrain/height_exchange.txt", listing);
}

TEST_F(HeightExchangeTest, WhoDeclinesOrWhatFailsChangesNothingAndIsTold) {
  listing = "== declined\n";
  Answer({PromptAnswer::No});
  ExportHeightmap(Choose(SampleBits::Eight));
  List("cancelled");
  Answer({PromptAnswer::Yes});
  ExportHeightmap(Choose(std::nullopt));
  EXPECT_FALSE(std::filesystem::exists(File()));
  List("a folder in the way");
  std::filesystem::create_directories(File() / "in the way");
  Answer({PromptAnswer::Yes, PromptAnswer::Ok, PromptAnswer::Ok});
  ExportHeightmap(Choose(SampleBits::Eight));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
  ImportHeightmap(Choose(SampleBits::Eight));
  std::filesystem::remove_all(File());
  List("missing");
  Answer({PromptAnswer::Ok});
  ImportHeightmap(Choose(SampleBits::Eight));
  WriteBytes(File(), {});
  for (const std::uintmax_t size :
       {std::uintmax_t{0}, std::uintmax_t{kSamples * 2 - 1}, std::uintmax_t{kSamples * 2 + 1},
        std::uintmax_t{kSamples * 8}, std::uintmax_t{1} << 40}) {
    List("of another size");
    std::filesystem::resize_file(File(), size);
    Answer({PromptAnswer::Ok});
    ImportHeightmap(Choose(SampleBits::Sixteen));
  }
  List("cancelled");
  ImportHeightmap(Choose(std::nullopt));
  List("end");
  EXPECT_EQ(Heights(), "");
  ExpectGolden("terrain/height_exchange_problems.txt", listing);
}

}  // namespace
}  // namespace mw
