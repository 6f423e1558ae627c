// Settings scripts of any content: they are read and written without harm, and what saving makes of
// them is read back and saved as the same bytes.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <string>

#include "core/editor_state.h"
#include "data/archive.h"
#include "data/game_file.h"
#include "data/level_settings.h"
#include "data/mod_config.h"
#include "platform/scripted/script.h"

namespace {

constexpr const char* kScripts[] = {"init.con", "init/terrain.con", "init/skyandsun.con"};

std::string Member(const char* script) { return std::string("varnhold/levels/Fuzz/") + script; }

mw::Archive& OpenLevel() {
  const auto path = std::filesystem::temp_directory_path() / "mapwright-settings-fuzzer.vra";
  mw::Archive* const level = mw::archives.CreateArchive(path.string());
  if (!level) std::abort();
  level->SetMode(mw::StorageMode::Stored);  // nothing here is about compression
  mw::editor.levelFolder = "varnhold\\levels\\Fuzz";
  return *level;
}

void ApplyConfiguration() {
  mw::modConfig = mw::ModConfig{};
  mw::modConfig.teamCount = 2;
  mw::modConfig.chosenTeam = {0, 1};
  mw::modConfig.teams[0] = {"a", "soldierA", "skinA", {"kitA"}};
  mw::modConfig.teams[1] = {"b", "soldierB", "skinB", {"kitB0", "kitB1"}};
}

std::string OpenAndSave(mw::Archive& level) {
  ApplyConfiguration();
  mw::scripted::ResetScript();
  mw::ReadLevelSettings();
  mw::WriteLevelSettings();
  std::string saved;
  for (const char* script : kScripts) {
    const auto bytes = level.ReadMember(Member(script));
    if (!bytes) std::abort();
    saved.append(bytes->begin(), bytes->end());
  }
  return saved;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static mw::Archive& level = OpenLevel();
  // Rolled back at the end, so that nothing is ever written to the disk.
  if (!level.BeginSave()) std::abort();
  for (const char* script : kScripts) {
    if (!level.WriteMember(Member(script), std::span(data, size))) std::abort();
  }
  const std::string saved = OpenAndSave(level);
  if (OpenAndSave(level) != saved || !mw::GameFileError().empty()) std::abort();
  level.RollbackSave();
  return 0;
}
