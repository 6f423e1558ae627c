#include "tools/archive/level_check.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>

#include "data/game_path.h"
#include "data/load_report.h"
#include "data/mod_config_parser.h"
#include "data/open_level.h"
#include "objects/level_files.h"
#include "objects/level_tree.h"
#include "objects/object_catalogue.h"
#include "platform/disk.h"
#include "terrain/material_map.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

// Of a level that says nothing else.
constexpr int kUnitsPerSample = 4;
constexpr float kHeightScale = 0.6f;  // world units per height unit

// The level's folder when the member is one of those that make a folder below "levels" a level,
// else empty.
std::string_view LevelFolderOf(std::string_view member) {
  constexpr std::array<std::string_view, 4> kFiles{"init.con", "heightmap.raw", "materialmap.raw",
                                                   "StaticObjects.con"};
  const std::size_t end = member.rfind('/');
  if (end == member.npos) return {};
  const std::string_view file = member.substr(end + 1), folder = member.substr(0, end);
  if (std::ranges::none_of(kFiles, [&](auto name) { return EqualNoCase(name, file); })) return {};
  const std::string_view parent = folder.substr(0, folder.rfind('/') + 1);
  constexpr std::string_view kLevels = "levels/";
  const bool isBelow = parent.size() >= kLevels.size() &&
                       EqualNoCase(parent.substr(parent.size() - kLevels.size()), kLevels);
  const bool isWhole = parent.size() == kLevels.size() ||
                       (isBelow && parent[parent.size() - kLevels.size() - 1] == '/');
  return isBelow && isWhole ? folder : std::string_view();
}

std::vector<std::string> FindLevels(const Archive& archive) {
  std::set<std::string, LessNoCase> folders;
  for (const auto& [name, entry] : archive.Entries()) {
    if (const auto folder = LevelFolderOf(name); !folder.empty()) folders.emplace(folder);
  }
  return {folders.begin(), folders.end()};
}

// What no script says, the mod does, which is not at hand: a size that the height map fits.
ModConfig SizedByHeightMap(const Archive& archive, const std::string& folder) {
  ModConfig config;
  config.HeightScale = kHeightScale;
  if (const ArchiveEntry* const map = archive.Find(folder + "/heightmap.raw")) {
    config.MaterialSize = static_cast<int>(std::sqrt(map->size / 2));
    config.WorldSize = config.MaterialSize * kUnitsPerSample;
  }
  return config;
}

CheckedLevel CheckLevel(const Archive& archive, const std::string& folder,
                        const std::optional<ModConfig>& mod, LevelCheck& check) {
  modConfig = mod ? *mod : SizedByHeightMap(archive, folder);
  openLevel.folder = folder;
  BuildTree();
  BeginLoadReport();
  const bool isRead = ReadLevelFiles();
  CheckedLevel level{folder, openLevel.loadReport.damage, {}};
  if (isRead) level.finds = CheckRules();
  if (!isRead) {
    level.damage.push_back(
        FormatText("The terrain size, %i samples over %i units, is not supported: the level cannot "
                   "be opened.",
                   modConfig.MaterialSize, modConfig.WorldSize));
  }
  for (const auto& [name, whole] : openLevel.loadReport.filesRead) {
    if (whole) check.membersReadWhole.insert(name);
  }
  EndLoadReport();
  return level;
}

}  // namespace

std::optional<ModConfig> ReadModForCheck(const std::string& file) {
  const auto bytes = ReadWholeFile(file);
  if (!bytes) return std::nullopt;
  const std::filesystem::path path(file);
  ModConfig mod;
  mod.configurationName = path.stem().string();
  ApplyModConfigText({reinterpret_cast<const char*>(bytes->data()), bytes->size()}, file, mod);
  // Its object list lies beside it.
  if (!mod.ObjectsList.empty()) {
    mod.ObjectsList = (path.parent_path() / NativePath(mod.ObjectsList.View())).string();
  }
  return mod;
}

LevelCheck CheckLevels(const Archive& archive, const std::optional<ModConfig>& mod) {
  LevelCheck check;
  if (IsNumberedArchive(std::filesystem::path(archive.Path()).stem().string())) return check;
  const std::vector<std::string> folders = FindLevels(archive);
  if (folders.empty()) return check;  // without the room that a level needs
  CreateTerrain();
  CreateMaterialMapper();
  if (mod) {
    modConfig = *mod;
    LoadObjectCatalogue();
  }
  for (const std::string& folder : folders) {
    check.levels.push_back(CheckLevel(archive, folder, mod, check));
  }
  return check;
}

}  // namespace mw
