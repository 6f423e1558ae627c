#include "app/level_file.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "app/commands.h"
#include "app/level.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/game_path.h"
#include "data/level_place.h"
#include "data/mods.h"
#include "platform/disk.h"
#include "platform/processes.h"
#include "platform/prompts.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

// The path in the game's folders of a file that may have been reached by a link.
fs::path PathInGame(const std::string& path) {
  std::error_code error;
  fs::path absolute = fs::absolute(path, error).lexically_normal();
  if (PlaceOfLevel(absolute)) return absolute;
  fs::path real = fs::canonical(absolute, error);
  return error ? std::move(absolute) : std::move(real);
}

bool HoldsLevel(const Archive& archive) {
  const std::string folder = NormalMemberName(kLevelsFolder);
  for (const auto& [name, entry] : archive.Entries()) {
    if (StartsWithNoCase(name, folder)) return true;
  }
  return false;
}

// Why the file is no level; empty when it is one.
std::string WhyNoLevel(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status)) return "There is no such file.";
  if (fs::is_directory(status)) return "This is a folder.";
  if (!EqualNoCase(path.extension().string(), ".vra")) {
    return "This is no level: the archives of levels end in \".vra\".";
  }
  Archive archive;
  if (!archive.Open(path.string(), false)) return archive.Error() + ".";
  if (!HoldsLevel(archive)) return "This archive holds no level.";
  if (IsNumberedArchive(path.stem().string())) {
    return "Its name ends with an underscore and three digits: this is an addition to a level, "
           "which the editor does not open by itself.";
  }
  return {};
}

bool Refuse(const fs::path& path, const std::string& reason) {
  ShowPrompt(path.string() + "\n\ncannot be opened.\n\n" + reason, "Error", PromptButtons::Ok,
             PromptIcon::Stop);
  return false;
}

bool ConfirmNewMod(const LevelPlace& place, const fs::path& path) {
  return ShowPrompt(
             FormatText("No mod configuration names the game that the level %s belongs to:\n\n"
                        "%s\n\nWould you like to make the configuration %s for it?",
                        path.stem().string().c_str(), SystemPath(place.gameFolder).c_str(),
                        NewModName(place).c_str()),
             "New MOD Configuration", PromptButtons::YesNo,
             PromptIcon::Question) == PromptAnswer::Yes;
}

bool UseMod(int mod) {
  const bool isNew = mod != modList.current;
  if (!SelectMod(mod)) return false;
  if (isNew) WarnOfMissingContent();
  return true;
}

}  // namespace

bool OpenLevelFile(const std::string& file, std::string_view preferredMod) {
  const fs::path path = PathInGame(file);
  if (const std::string reason = WhyNoLevel(path); !reason.empty()) return Refuse(path, reason);
  std::optional<int> mod = ModOfLevel(path, preferredMod);
  const std::optional<LevelPlace> place = PlaceOfLevel(path);
  if (!mod && !place) {
    return Refuse(path,
                  "It does not lie in a game. The game's levels are in the folder "
                  "Mods/<mod>/Archives/varnhold/levels.");
  }
  if (!OfferToSave("before opening a new map")) return false;
  if (!mod && ConfirmNewMod(*place, path)) mod = MakeModOfLevel(*place, path);
  if (!mod) return false;
  const ModSnapshot before = TakeModSnapshot();
  if (!UseMod(*mod)) return false;
  ChooseLevel(path.stem().string());
  return OpenNamedLevel(before);
}

void OpenDroppedFiles(const std::vector<std::string>& paths) {
  if (paths.empty() || IsInputIgnored()) return;
  if (paths.size() == 1) {
    OpenLevelFile(paths.front());
  } else {
    ShowPrompt(FormatText("These are %zu files. One level can be open at a time: drop one of them.",
                          paths.size()),
               "Error", PromptButtons::Ok, PromptIcon::Exclamation);
  }
}

}  // namespace mw
