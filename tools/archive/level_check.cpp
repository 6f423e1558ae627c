#include "tools/archive/level_check.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>

#include "data/game_path.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "objects/level_files.h"
#include "terrain/material_map.h"

namespace mw {
namespace {

constexpr int kUnitsPerSample = 4;  // of a level that says nothing else

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
  if (const ArchiveEntry* const map = archive.Find(folder + "/heightmap.raw")) {
    config.MaterialSize = static_cast<int>(std::sqrt(map->size / 2));
    config.WorldSize = config.MaterialSize * kUnitsPerSample;
  }
  return config;
}

CheckedLevel CheckLevel(const Archive& archive, const std::string& folder, LevelCheck& check) {
  modConfig = SizedByHeightMap(archive, folder);
  openLevel.folder = folder;
  BeginLoadReport();
  const bool isRead = ReadLevelFiles();
  CheckedLevel level{folder, openLevel.loadReport.damage};
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

LevelCheck CheckLevels(const Archive& archive) {
  LevelCheck check;
  if (IsNumberedArchive(std::filesystem::path(archive.Path()).stem().string())) return check;
  CreateMaterialMapper();
  for (const std::string& folder : FindLevels(archive)) {
    check.levels.push_back(CheckLevel(archive, folder, check));
  }
  return check;
}

}  // namespace mw
