#include "app/sample_game.h"

#include <filesystem>
#include <system_error>

#include "app/level_file.h"
#include "app/shell.h"
#include "app/start_up.h"
#include "data/mod_config_parser.h"
#include "data/mod_files.h"
#include "data/mods.h"
#include "platform/disk.h"
#include "platform/file.h"
#include "platform/prompts.h"
#include "platform/settings_store.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

constexpr const char* kConfig = "varnhold.cfg";
constexpr const char* kObjectList = "varnhold.lst";
constexpr const char* kGame = "game";
// Medium, the usual size of a level.
constexpr const char* kLevel = "Mods/varnhold/Archives/varnhold/levels/Stone_Ridge.vra";
constexpr const char* kVersionSetting = "INSTALLEDVERSION";
constexpr const char* kVersion = "1.04";  // of the sample game

bool Exists(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(path, ignored));
}

// What is written until all of it is there.
fs::path Aside() { return fs::path(WorkingFolder()) / "sample_game.unfinished"; }

fs::path FreeGameFolder() {
  fs::path folder = fs::path(WorkingFolder()) / kGame;
  for (int number = 2; Exists(folder); ++number) {
    folder.replace_filename(kGame + std::string("-") + std::to_string(number));
  }
  return folder;
}

void Remove(const fs::path& path) {
  std::error_code ignored;
  fs::remove_all(path, ignored);
}

// The configuration as written names the game's folder aside.
bool NameGameFolder(const fs::path& config, const fs::path& game, std::string* reason) {
  const auto bytes = ReadWholeFile(config.string(), reason);
  if (!bytes) return false;
  const std::string path = BackslashPath((game / "").string());
  const std::string text =
      WithGamePath({reinterpret_cast<const char*>(bytes->data()), bytes->size()}, path);
  if (path.size() > kMaxSavedGamePath || GamePathIn(text) != path) {
    *reason = game.string() +
              "\n\ncannot be kept in a mod configuration: the path is too long, or has a "
              "character that does not fit there.";
    return false;
  }
  return WriteWholeFile(config.string(), text, reason);
}

// Puts what lies aside in place, the configuration last: what nobody names is no mod yet. The
// reason when that fails, else an empty text.
std::string PutInPlace(const fs::path& game) {
  const fs::path work(WorkingFolder()), aside = Aside();
  const bool hasObjectList = Exists(work / kObjectList);
  std::string reason = "There is a mod already.";
  if (!Exists(work / kConfig) && NameGameFolder(aside / kConfig, game, &reason) &&
      RenameFile(aside / kGame, game, &reason)) {
    if ((hasObjectList || RenameFile(aside / kObjectList, work / kObjectList, &reason)) &&
        RenameFile(aside / kConfig, work / kConfig, &reason)) {
      return {};
    }
    if (!hasObjectList) Remove(work / kObjectList);
    Remove(game);
  }
  return reason;
}

// Where no game is known to be installed, this is the one.
void RegisterGame() {
  if (ReadGameSetting(kVersionSetting)) return;
  // Where it cannot be kept, what needs a new game says that this one is too old.
  static_cast<void>(WriteGameSetting(kVersionSetting, kVersion));
  ReadInstalledVersion();
}

}  // namespace

bool TrySampleGame() {
  const fs::path aside = Aside(), game = FreeGameFolder();
  Remove(aside);  // what an interrupted writing left
  const SampleGameWriting writing = shell.writeSampleGame((aside / kGame).string(), aside.string());
  const std::string failure = writing.complete ? PutInPlace(game) : writing.failure;
  Remove(aside);
  if (!failure.empty()) {
    ShowPrompt("The sample game could not be written.\n\n" + failure +
                   "\n\nNothing of it was left behind.",
               "Error", PromptButtons::Ok, PromptIcon::Stop);
  }
  if (!writing.complete || !failure.empty()) return false;
  RegisterGame();
  FindMods();
  return OpenLevelFile((game / kLevel).string());
}

}  // namespace mw
