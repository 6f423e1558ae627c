#include "app/level_skeleton.h"

#include <string_view>
#include <utility>
#include <vector>

#include "app/skeleton_scripts.h"
#include "core/text.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "data/script.h"
#include "platform/disk.h"

namespace mw {
namespace {

std::vector<std::string_view> InnerFolders(const GameRules& rules) {
  std::vector<std::string_view> folders = {
      "AI", "GameTypes", "Init", "Menu", "ObjectLightMaps", "Pathfinding", "Sounds", "Textures"};
  if (rules.singlePlayer) folders.emplace_back("SinglePlayer");
  if (rules.conquest) folders.emplace_back("Conquest");
  if (rules.teamDeathMatch) folders.emplace_back("TDM");
  if (rules.captureTheFlag) folders.emplace_back("Ctf");
  return folders;
}

// Appends `folder`, which ends with a separator, and those around it, from the game folder inwards.
void AddWithParents(const std::string& folder, std::vector<std::string>& paths) {
  std::size_t end = modConfig.GamePath.size();
  while ((end = folder.find('\\', end + 1)) != folder.npos) paths.push_back(folder.substr(0, end));
}

}  // namespace

std::optional<std::string> CreateLevelFolders(const GameRules& rules) {
  std::vector<std::string> paths;
  const std::string modFolder = modConfig.GamePath.String() + modConfig.modFolder.String();
  AddWithParents(modFolder + "Archives\\" + modConfig.levelsFolder.String(), paths);
  const std::string levelFolder = openLevel.folder.String();
  AddWithParents(levelFolder + "\\", paths);
  for (const std::string_view folder : InnerFolders(rules)) {
    paths.push_back(levelFolder + "\\" + std::string(folder));
  }
  for (const std::string& path : paths) {
    if (CreateFolder(path) == FolderResult::Failed) return path;
  }
  return std::nullopt;
}

bool WriteLevelScripts(const GameRules& rules) {
  return (!rules.singlePlayer || WriteSinglePlayerScripts()) &&
         (!rules.conquest || WriteConquestScripts()) &&
         (!rules.teamDeathMatch || WriteTeamDeathMatchScripts()) &&
         (!rules.captureTheFlag || WriteCaptureTheFlagScripts()) && WriteCommonScripts();
}

bool WriteNewScript(std::string_view path, std::string_view text) {
  auto file = GameFileOpen(openLevel.folder.String() + "\\" + std::string(path), "w");
  if (!file) return false;
  WriteScriptHeader(*file);
  GameFilePuts(text, *file);
  return GameFileClose(std::move(file));
}

std::string PositionText(int x, int y, int z) {
  return FormatText("%.2f/%.2f/%.2f", static_cast<double>(x), static_cast<double>(y),
                    static_cast<double>(z));
}

}  // namespace mw
