#include "data/level_place.h"

#include <array>
#include <system_error>
#include <vector>

#include "core/text.h"
#include "data/mod_config_parser.h"
#include "data/mod_files.h"
#include "data/mods.h"
#include "platform/disk.h"
#include "platform/prompts.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kModConfigExtension = ".cfg";

std::string ModConfigFile(const std::string& mod) { return mod + std::string(kModConfigExtension); }

// Whether `archive` is what the editor opens as the level of that name of the mod in this game.
bool IsLevelOf(const fs::path& archive, const std::string& gameFolder, std::string_view mod) {
  const std::string path = gameFolder + ModFolderOf(mod) + "Archives\\" +
                           std::string(kLevelsFolder) + archive.filename().string();
  std::error_code error;
  return fs::equivalent(NativePath(path), archive, error);
}

bool IsLevelOfMod(const fs::path& archive, const std::string& mod) {
  const auto bytes = ReadWholeFile(ModConfigFile(mod));
  if (!bytes) return false;
  const std::string game =
      GamePathIn({reinterpret_cast<const char*>(bytes->data()), bytes->size()});
  return !game.empty() && IsLevelOf(archive, game, mod);
}

bool IsFree(const std::string& mod) {
  return ModConfigFile(mod) != kModTemplateFile && !FileExists(ModConfigFile(mod));
}

std::optional<int> Refuse(const std::string& text) {
  ShowPrompt(text, "Error", PromptButtons::Ok, PromptIcon::Stop);
  return std::nullopt;
}

}  // namespace

std::optional<LevelPlace> PlaceOfLevel(const fs::path& archive) {
  constexpr std::array<std::string_view, 5> kFolders{"levels", "varnhold", "Archives", "", "Mods"};
  LevelPlace place;
  fs::path folder = archive.lexically_normal().parent_path();
  for (const std::string_view name : kFolders) {
    const std::string found = folder.filename().string();
    if (name.empty()) {
      place.mod = found;
    } else if (!EqualNoCase(found, name)) {
      return std::nullopt;
    }
    folder = folder.parent_path();
  }
  place.gameFolder = BackslashPath((folder / "").string());
  return place;
}

std::optional<int> ModOfLevel(const fs::path& archive, std::string_view preferred) {
  std::optional<int> found;
  for (std::size_t i = 0; i < modList.names.size(); ++i) {
    const std::string& name = modList.names[i];
    const bool isCurrent = static_cast<int>(i) == modList.current;
    const bool goesFirst = name == preferred || (isCurrent && preferred.empty());
    if ((found && !goesFirst) || !IsLevelOfMod(archive, name)) continue;
    found = static_cast<int>(i);
    if (goesFirst) break;
  }
  return found;
}

std::string NewModName(const LevelPlace& place) {
  // The folder's name ends at the last dot of the configuration's.
  const bool hasDot = place.mod.find('.') != place.mod.npos;
  if (!hasDot && IsFree(place.mod)) return place.mod;
  for (int number = 2;; ++number) {
    std::string name = place.mod + "." + std::to_string(number);
    if (IsFree(name)) return name;
  }
}

std::optional<int> MakeModOfLevel(const LevelPlace& place, const fs::path& archive) {
  const std::string name = NewModName(place), file = ModConfigFile(name);
  const std::string where = " in the folder " + WorkingFolder() + ":\n\n";
  if (modList.names.size() >= kMaxMods) {
    return Refuse(FormatText("There is no room for more than %zu mods.", kMaxMods));
  }
  std::string reason;
  const auto bytes = ReadWholeFile(kModTemplateFile, &reason);
  if (!bytes) return Refuse("Can't read " + std::string(kModTemplateFile) + where + reason);
  std::string text =
      WithGamePath({reinterpret_cast<const char*>(bytes->data()), bytes->size()}, place.gameFolder);
  const std::string held = GamePathIn(text);
  if (name.size() > kMaxModName || place.gameFolder.size() > kMaxSavedGamePath ||
      held != place.gameFolder || !IsLevelOf(archive, held, name)) {
    return Refuse(
        FormatText("The game's folder cannot be kept in a mod configuration: its path or its "
                   "mod's name is too long, or has a character that does not fit there.\n\n%s",
                   SystemPath(place.gameFolder).c_str()));
  }
  if (!WriteWholeFile(file, text, &reason)) return Refuse("Can't write " + file + where + reason);
  modList.names.push_back(name);
  return static_cast<int>(modList.names.size()) - 1;
}

}  // namespace mw
