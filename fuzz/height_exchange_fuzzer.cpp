// Exchanged height maps of any length at each depth: what was imported is exported again.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "core/editor_state.h"
#include "data/mod_config.h"
#include "platform/disk.h"
#include "platform/scripted/script.h"
#include "private_path.h"
#include "terrain/height_exchange.h"
#include "terrain/terrain.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool prepared = [] {
    std::filesystem::current_path(std::filesystem::path(PrivatePath("")).parent_path());
    mw::CreateTerrain();
    return true;
  }();
  if (!prepared || size == 0) return 0;
  mw::modConfig.MaterialSize = 1 + data[0] % 16;
  mw::modConfig.WorldSize = mw::modConfig.MaterialSize * 4;
  const auto bits = static_cast<mw::SampleBits>(8 * (1 + data[0] / 16 % 3));
  const auto ask = [bits](const char*) { return bits; };
  std::vector<std::uint8_t> file(data + 1, data + size);
  if (!mw::WriteWholeFile("heightmap.raw", file)) std::abort();

  mw::scripted::ResetScript();
  mw::editor.levelModified = false;
  mw::scripted::script.answers.assign(1, mw::PromptAnswer::Ok);
  mw::ImportHeightmap(ask);
  if (!mw::editor.levelModified) return 0;
  mw::scripted::script.answers = {mw::PromptAnswer::Yes, mw::PromptAnswer::Ok};
  mw::ExportHeightmap(ask);
  const std::size_t equalBytes = bits == mw::SampleBits::TwentyFour ? 3 : 1;
  for (std::size_t at = 0; at < file.size(); ++at) file[at] = file[at - at % equalBytes];
  if (mw::ReadWholeFile("heightmap.raw") != file) std::abort();
  return 0;
}
