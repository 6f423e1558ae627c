// Exchanged height maps of any length at each depth: what was imported is exported again.
#include <cstdint>
#include <filesystem>
#include <vector>

#include "core/editor_state.h"
#include "data/mod_config.h"
#include "fuzz/input_reader.h"
#include "fuzz/private_path.h"
#include "fuzz/require.h"
#include "platform/disk.h"
#include "platform/scripted/script.h"
#include "terrain/height_exchange.h"
#include "terrain/terrain.h"

namespace {

constexpr const char* kFile = "heightmap.raw";

// The exchange file lies in the working folder.
void EnterOwnFolder() {
  static const std::string folder = std::filesystem::path(PrivatePath("")).parent_path().string();
  std::filesystem::current_path(folder);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  EnterOwnFolder();
  if (!mw::terrain.grid) mw::CreateTerrain();
  InputReader input(data, size);
  mw::modConfig.MaterialSize = static_cast<int>(1 + input.Byte() % 16);
  mw::modConfig.WorldSize = mw::modConfig.MaterialSize * 4;
  const auto bits = static_cast<mw::SampleBits>(8 * (1 + input.Byte() % 3));
  const auto ask = [bits](const char*) { return bits; };
  const auto given = input.Bytes(size);
  std::vector<std::uint8_t> file(given.begin(), given.end());
  if (file.empty()) {
    std::filesystem::remove(kFile);
  } else {
    WriteFile(kFile, file);
  }

  mw::scripted::ResetScript();
  mw::editor.levelModified = false;
  mw::scripted::script.answers.assign(1, mw::PromptAnswer::Ok);
  mw::ImportHeightmap(ask);
  if (!mw::editor.levelModified) return 0;
  mw::scripted::script.answers = {mw::PromptAnswer::Yes, mw::PromptAnswer::Ok};
  mw::ExportHeightmap(ask);
  const std::size_t equalBytes = bits == mw::SampleBits::TwentyFour ? 3 : 1;
  for (std::size_t at = 0; at < file.size(); ++at) file[at] = file[at - at % equalBytes];
  Require(mw::ReadWholeFile(kFile) == file);
  return 0;
}
