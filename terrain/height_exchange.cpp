#include "terrain/height_exchange.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "core/editor_state.h"
#include "core/history.h"
#include "core/text.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "platform/disk.h"
#include "platform/file.h"
#include "platform/prompts.h"
#include "terrain/ground_history.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr const char* kExchangeFile = "heightmap.raw";
constexpr std::size_t kStoredBytes = 2;  // of a sample in the height buffer, low byte first

std::size_t BytesPerSample(SampleBits bits) { return static_cast<std::size_t>(bits) / 8; }

std::size_t SampleCount() {
  const auto side = static_cast<std::size_t>(modConfig.MaterialSize);
  return side * side;
}

// The height buffer has the order of the exchange file; 8 and 24 bits take its high bytes.
std::vector<std::uint8_t> Encode(std::span<const std::uint8_t> stored, SampleBits bits) {
  if (bits == SampleBits::Sixteen) return {stored.begin(), stored.end()};
  std::vector<std::uint8_t> file;
  file.reserve(stored.size() / kStoredBytes * BytesPerSample(bits));
  for (std::size_t at = 1; at < stored.size(); at += kStoredBytes) {
    file.insert(file.end(), BytesPerSample(bits), stored[at]);
  }
  return file;
}

// Of three bytes the first counts.
std::vector<std::uint8_t> Decode(std::vector<std::uint8_t> file, SampleBits bits) {
  if (bits == SampleBits::Sixteen) return file;
  const std::size_t step = BytesPerSample(bits);
  std::vector<std::uint8_t> stored(file.size() / step * kStoredBytes);
  for (std::size_t sample = 0; sample < file.size() / step; ++sample) {
    stored[sample * kStoredBytes + 1] = file[sample * step];
  }
  return stored;
}

bool ConfirmOverwriting() {
  return ShowPrompt(
             "This will overwrite your existing heightmap.raw file\nin your Mapwright "
             "directory.\n\nDo you wish to proceed?",
             "Export Heightmap", PromptButtons::YesNo) == PromptAnswer::Yes;
}

void ShowSystemError(const std::string& reason) {
  ShowPrompt(reason, "Error", PromptButtons::Ok, PromptIcon::Stop);
}

void ShowImportProblem(const char* text) {
  ShowPrompt(text, "Import Heightmap Problem", PromptButtons::Ok, PromptIcon::Exclamation);
}

// The file's bytes when it has exactly as many as the level needs; else nothing, and the user was
// told. A file of another length is not read.
std::optional<std::vector<std::uint8_t>> ReadExchangeFile(SampleBits bits) {
  File file;
  if (!file.Open(NativePath(kExchangeFile), FileAccess::Read)) {
    ShowImportProblem("No heightmap.raw was found in the Mapwright directory for import.");
    return std::nullopt;
  }
  const std::size_t expected = SampleCount() * BytesPerSample(bits);
  const auto length = file.Size();
  if (length && *length != expected) {
    ShowImportProblem(
        "There was a problem loading this heightmap!  Please make sure\nthat the RAW file "
        "dimensions match with dimensions of the map.\nAlso make sure that the RAW file you are "
        "trying to load is in the\nsame bit format that you are selecting for import.\n\nPlease "
        "try again.\n");
    return std::nullopt;
  }
  std::vector<std::uint8_t> bytes(expected);
  if (!length || !file.ReadAt(0, bytes)) {
    ShowSystemError(file.Error());
    return std::nullopt;
  }
  return bytes;
}

}  // namespace

void ExportHeightmap(const AskSampleBits& ask) {
  if (!ConfirmOverwriting()) return;
  const auto bits = ask("Select Export Bits");
  if (!bits || !StoreHeightsInBuffer()) return;
  ShowWaitCursor();
  std::string reason;
  if (!WriteWholeFile(kExchangeFile, Encode(terrain.heightBuffer, *bits), &reason)) {
    ShowSystemError(reason);
    return;
  }
  ShowPrompt(FormatText("The heightmap was saved as 'heightmap.raw' in the\nMapwright directory as "
                        "a %ix%i, %i bit file.",
                        modConfig.MaterialSize, modConfig.MaterialSize, static_cast<int>(*bits)),
             "Export Heightmap Complete", PromptButtons::Ok, PromptIcon::Information);
}

void ImportHeightmap(const AskSampleBits& ask) {
  const auto bits = ask("Select Import Bits");
  if (!bits || !HasUsableTerrain()) return;
  ShowWaitCursor();
  auto file = ReadExchangeFile(*bits);
  if (!file || !MayReplaceGround()) return;
  const HistoryStep step("Import Heightmap");
  KeepAllHeights();
  KeepSetting(openLevel.loadReport.parts);
  terrain.heightBuffer = Decode(std::move(*file), *bits);
  LoadHeightsFromBuffer();
  SetReplaced(LevelPart::HeightMap);
  editor.levelModified = true;
}

}  // namespace mw
