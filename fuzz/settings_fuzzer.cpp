// A settings script of any content: it is read and written without harm, and what saving makes of
// it is read back and saved as the same bytes.
#include <cstdint>
#include <span>
#include <string>

#include "data/level_settings.h"
#include "data/mod_config.h"
#include "fuzz/level_sandbox.h"
#include "fuzz/require.h"
#include "platform/scripted/script.h"

namespace {

// Those that are not there are passed over.
constexpr const char* kScripts[] = {"init.con", "init/terrain.con", "init/skyandsun.con"};

void ApplyConfiguration() {
  mw::modConfig = mw::ModConfig{};
  mw::modConfig.teamCount = 2;
  mw::modConfig.chosenTeam = {0, 1};
  mw::modConfig.teams[0] = {"a", "soldierA", "skinA", {"kitA"}};
  mw::modConfig.teams[1] = {"b", "soldierB", "skinB", {"kitB0", "kitB1"}};
}

std::string SavedSettings(LevelSandbox& level) {
  ApplyConfiguration();
  mw::scripted::ResetScript();
  mw::ReadLevelSettings();
  Require(mw::WriteLevelSettings());
  return level.Everything();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  LevelSandbox level;
  level.Put(kScripts[size % 3], std::span(data, size));
  const std::string saved = SavedSettings(level);
  Require(SavedSettings(level) == saved);
  return 0;
}
