// Material maps of any length: what the file holds reaches the grid, and saving gives it back.
#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "data/load_report.h"
#include "data/mod_config.h"
#include "fuzz/input_reader.h"
#include "fuzz/level_sandbox.h"
#include "fuzz/require.h"
#include "terrain/material_map.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (!mw::materialMapper) mw::CreateMaterialMapper();
  LevelSandbox level;
  InputReader input(data, size);
  const std::size_t side = 1 + input.Byte() % 64;
  mw::modConfig.MaterialSize = static_cast<int>(side);
  const bool fileExists = input.Flag();
  std::vector<std::uint8_t> expected;
  if (fileExists) {
    const auto file = input.Bytes(size);
    level.Put("materialmap.raw", file);
    expected.assign(file.begin(), file.end());
  }
  const bool fits = fileExists && expected.size() == side * side;
  expected.resize(side * side);

  mw::BeginLoadReport();
  mw::LoadMaterialMap();
  mw::EndLoadReport();
  Require(mw::MayWrite(mw::LevelPart::MaterialMap) == fits);
  const bool isSaved = mw::SaveMaterialMap();
  Require(isSaved && level.Read("materialmap.raw") == expected);
  return 0;
}
