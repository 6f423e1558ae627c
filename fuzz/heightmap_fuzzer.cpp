// Height maps of any length: what the file holds reaches the grid, and saving gives it back;
// heights that the file lacks stay as they were.
#include <algorithm>
#include <cstdint>
#include <span>

#include "data/load_report.h"
#include "data/mod_config.h"
#include "fuzz/input_reader.h"
#include "fuzz/level_sandbox.h"
#include "fuzz/require.h"
#include "terrain/terrain.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (!mw::terrain.grid) mw::CreateTerrain();
  LevelSandbox level;
  InputReader input(data, size);
  // The smallest side that the Mini-Map shows, or a small one.
  const std::size_t choice = input.Byte();
  const std::size_t side = choice == 0xFF ? 128 : 1 + choice % 32;
  mw::modConfig.MaterialSize = static_cast<int>(side);
  mw::modConfig.WorldSize = mw::modConfig.MaterialSize * 4;
  const bool fileExists = input.Flag();
  const auto file = input.Bytes(size);
  if (fileExists) level.Put("heightmap.raw", file);

  mw::BeginLoadReport();
  Require(mw::LoadHeightBuffer() == fileExists);
  mw::EndLoadReport();
  const bool fits = fileExists && file.size() == side * side * 2;
  Require(mw::MayWrite(mw::LevelPart::HeightMap) == fits);
  mw::LoadHeightsFromBuffer();
  const bool isSaved = mw::SaveHeightmap();
  const auto saved = level.Read("heightmap.raw");
  Require(isSaved && saved && saved->size() == side * side * 2);
  const std::size_t whole = fileExists ? std::min(file.size(), saved->size()) / 2 * 2 : 0;
  Require(
      std::equal(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(whole), saved->begin()));
  return 0;
}
