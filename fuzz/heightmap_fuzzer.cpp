// Height maps of any length: what the file holds reaches the grid, and saving gives it back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "data/mod_config.h"
#include "terrain/terrain.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  if (!mw::terrain) mw::CreateTerrain();
  mw::modConfig.MaterialSize = data[0] % 4 == 0 ? data[0] : 64 << (data[0] % 4);
  mw::modConfig.WorldSize = mw::modConfig.MaterialSize * 4;
  mw::InitGrid();
  mw::heightBuffer.assign(data + 1, data + size);
  mw::heightBufferFilled = size - 1;
  mw::LoadHeightsFromBuffer();
  // No archive is open: the image is made and goes nowhere.
  const auto loaded = mw::heightBuffer;
  mw::SaveHeightmap();
  const std::size_t whole =
      (loaded.size() < mw::heightBuffer.size() ? loaded.size() : mw::heightBuffer.size()) &
      ~std::size_t{1};
  for (std::size_t at = 0; at < whole; ++at) {
    if (mw::heightBuffer[at] != loaded[at]) std::abort();
  }
  return 0;
}
