// The height map on its way between its file image and the grid.
#include <cstdlib>
#include <vector>

#include "bench/table/table.h"
#include "data/mod_config.h"
#include "terrain/terrain.h"

namespace mw::bench {
namespace {

constexpr int kSize = 1024;

void MakeGround() {
  modConfig = ModConfig{};
  modConfig.MaterialSize = kSize;
  modConfig.WorldSize = 4 * kSize;
  CreateTerrain();
  InitGrid();
  terrain.heightBuffer.resize(std::size_t{kSize} * kSize * 2);
  for (std::uint8_t& byte : terrain.heightBuffer) byte = static_cast<std::uint8_t>(std::rand());
}

// Sample after sample in the order of the file.
void LoadPlainly(std::vector<std::uint8_t>& file) {
  std::size_t at = 0;
  for (int r = 0; r < kSize; ++r) {
    for (int c = 0; c < kSize; ++c, at += 2) {
      terrain.grid[static_cast<std::size_t>(kSize - c)][static_cast<std::size_t>(r)].h =
          static_cast<float>(file[at] + 256 * file[at + 1]) / 256;
    }
  }
}

void StorePlainly(std::vector<std::uint8_t>& file) {
  std::size_t at = 0;
  for (int r = 0; r < kSize; ++r) {
    for (int c = 0; c < kSize; ++c, at += 2) {
      const float h =
          terrain.grid[static_cast<std::size_t>(kSize - c)][static_cast<std::size_t>(r)].h;
      const int stored = static_cast<int>(std::clamp(h * 256, 0.0f, 65535.0f));
      file[at] = static_cast<std::uint8_t>(stored & 0xFF);
      file[at + 1] = static_cast<std::uint8_t>(stored >> 8);
    }
  }
}

}  // namespace

void AddGroundRows() {
  MakeGround();
  std::vector<std::uint8_t> file = terrain.heightBuffer;
  LoadHeightsFromBuffer();
  AddTimes("height map of 1024 x 1024 out of the grid", "the plain double loop",
           Compare(
               15, [] { return Time(StoreHeightsInBuffer); },
               [&] { return Time([&] { StorePlainly(file); }); }),
           0.5);
  AddResult("its bytes", "", "the plain double loop", "", "the same", file == terrain.heightBuffer);
  AddTimes("height map of 1024 x 1024 into the grid", "the plain double loop",
           Compare(
               15, [] { return Time(LoadHeightsFromBuffer); },
               [&] { return Time([&] { LoadPlainly(file); }); }),
           0.6);
  DestroyTerrain();
}

}  // namespace mw::bench
