#include "data/mods.h"

#include <algorithm>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "core/text.h"
#include "data/content_archives.h"
#include "data/level_settings_lines.h"
#include "data/mod_files.h"
#include "data/open_level.h"
#include "data/textures.h"
#include "platform/disk.h"
#include "platform/prompts.h"

namespace mw {

namespace {

constexpr std::string_view kConfigExtension = ".cfg";

std::string ConfigFile(std::string_view modName) {
  return std::string(modName) + std::string(kConfigExtension);
}

int IndexOfMod(std::string_view name) {
  const auto found = std::find(modList.names.begin(), modList.names.end(), name);
  return found == modList.names.end() ? -1 : static_cast<int>(found - modList.names.begin());
}

bool IsListed(int index) {
  return index >= 0 && static_cast<std::size_t>(index) < modList.names.size();
}

// Makes `config` the editor's. The open level's files are named by the game folder that they lie
// in, so they follow it.
void AdoptConfig(const ModConfig& config) {
  const std::string_view level = openLevel.folder;
  const std::string_view oldGamePath = modConfig.GamePath;
  if (editor.levelLoaded && level.starts_with(oldGamePath)) {
    openLevel.folder = config.GamePath.String() + std::string(level.substr(oldGamePath.size()));
  }
  modConfig = config;
}

std::string Lines(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

// The user may choose a folder all the same, say of a disk that is not there at the moment.
bool MayUseContent(const ModConfig& config) {
  const ContentProblems problems = CheckContent(config);
  if (problems.empty()) return true;
  return ShowPrompt(
             "Content of the mod cannot be read in this game folder:\n\n" + Lines(problems) +
                 "\nObjects and textures from there will be missing. Do you want to use this "
                 "folder all the same?",
             "Warning", PromptButtons::YesNo, PromptIcon::Exclamation) == PromptAnswer::Yes;
}

bool SameContent(const ModConfig& a, const ModConfig& b) {
  return a.configurationName == b.configurationName.View() &&
         a.ObjectsList == b.ObjectsList.View() &&
         ContentArchivePathsOf(a) == ContentArchivePathsOf(b);
}

}  // namespace

void FindMods() {
  modList.names.clear();
  modList.current = modList.picked = -1;
  for (const std::string& file : ListFiles(".", kConfigExtension)) {
    if (file == kModTemplateFile) continue;
    if (modList.names.size() == kMaxMods) {
      ShowPrompt(FormatText("There are more than %zu mods, the others are not listed.", kMaxMods),
                 "Warning");
      return;
    }
    modList.names.push_back(file.substr(0, file.size() - kConfigExtension.size()));
  }
}

std::string CurrentModName() { return modConfig.configurationName.String(); }

void LoadModContent() {
  hooks.loadObjectCatalogue();
  ReopenContentArchives();
}

void WarnOfMissingContent() {
  ContentProblems problems = HeldContentProblems();
  const std::string index = TextureSetIndex("TextureSets/" + editor.textureSetName.String());
  std::string reason;
  if (!ReadWholeFile(index, &reason)) problems.push_back(index + ": " + reason);
  if (problems.empty()) return;
  ShowPrompt(
      "Not all content of the mod " + CurrentModName() + " can be read:\n\n" + Lines(problems) +
          "\nWhat is missing cannot be shown. \"Edit Current Mod Configuration\" in the File "
          "menu tells where the game is.",
      "Warning", PromptButtons::Ok, PromptIcon::Exclamation);
}

bool SelectMod(int index) {
  if (!IsListed(index)) return false;
  if (index == modList.current) return true;
  ModConfig config = modConfig;
  if (!ParseModConfig(modList.names[static_cast<std::size_t>(index)], config)) return false;
  modList.current = index;
  AdoptConfig(config);
  LoadModContent();
  return true;
}

bool ReloadModConfig() {
  ModConfig config;
  if (!ParseModConfig(CurrentModName(), config)) return false;
  config.LevelName = modConfig.LevelName;
  config.GamePath = modConfig.GamePath;
  config.ObjectsList = modConfig.ObjectsList;
  modConfig = config;
  return true;
}

std::string NameFromInput(std::string_view typed, std::size_t maxLength) {
  std::string name;
  for (const char c : typed) {
    if (name.size() == maxLength) break;
    const bool continuesCharacter = (static_cast<unsigned char>(c) & 0xC0) == 0x80;  // of UTF-8
    if (continuesCharacter) continue;
    const bool plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    name += plain ? c : '_';
  }
  return name;
}

std::string ModNameFromInput(std::string_view typed) { return NameFromInput(typed, kMaxModName); }

bool CreateMod(std::string_view typedName) {
  const std::string name = ModNameFromInput(typedName);
  const std::string file = ConfigFile(name);
  const std::string where = " in the folder " + WorkingFolder() + ":\n\n";
  std::string reason;
  if (name.empty()) {
    ShowPrompt("Please enter a name for the mod.", "Error");
  } else if (FileExists(file)) {
    ShowPrompt("A mod with this name exists already.", "Error");
  } else if (modList.names.size() >= kMaxMods) {
    ShowPrompt(FormatText("There is no room for more than %zu mods.", kMaxMods), "Error");
  } else if (const auto bytes = ReadWholeFile(kModTemplateFile, &reason); !bytes) {
    ShowPrompt("Can't read " + std::string(kModTemplateFile) + where + reason, "Error");
  } else if (!WriteWholeFile(file, *bytes, &reason)) {
    ShowPrompt("Can't write " + file + where + reason, "Error");
  } else {
    modList.names.push_back(name);
    return true;
  }
  return false;
}

bool UseLastMod() {
  if (modList.names.empty()) return false;
  ModConfig config = modConfig;
  if (!ParseModConfig(modList.names.back(), config)) return false;
  if (editor.levelLoaded) {
    config.LevelName = modConfig.LevelName;
    config.MaterialSize = modConfig.MaterialSize;
    config.WorldSize = modConfig.WorldSize;
  }
  modList.current = static_cast<int>(modList.names.size()) - 1;
  const ModConfig before = modConfig;
  AdoptConfig(config);
  AdoptSettingsDefaults(before);
  return true;
}

bool DeleteMod(int index) {
  if (modList.names.size() < 2) {
    ShowPrompt("You must always have at least one mod.", "Error");
    return false;
  }
  if (!IsListed(index)) return false;
  const std::string name = modList.names[static_cast<std::size_t>(index)];
  if (ShowPrompt("Are you sure you want to delete the Mod \"" + name + "\"?", "Warning",
                 PromptButtons::OkCancel) != PromptAnswer::Ok) {
    return false;
  }
  if (FileExists(ConfigFile(name)) && !DeleteDiskFile(ConfigFile(name))) {
    ShowPrompt("Can't delete " + ConfigFile(name), "Error");
    return false;
  }
  modList.names.erase(modList.names.begin() + index);
  if (index == modList.current) {
    modList.current = -1;
  } else if (index < modList.current) {
    --modList.current;
  }
  return true;
}

std::vector<std::string> ObjectListChoices() {
  std::vector<std::string> choices = ListFiles(".", ".lst");
  const std::string current = modConfig.ObjectsList.String();
  const bool elsewhere = current.find_first_of("\\/") != current.npos;
  if (elsewhere && FileExists(current)) choices.push_back(current);
  return choices;
}

std::string GamePathFromInput(std::string_view typed) {
  std::string path = BackslashPath(typed);
  if (!path.ends_with('\\')) path += '\\';
  return path;
}

bool ApplyModSettings(std::string_view typedGamePath, std::string_view objectsList) {
  const std::string gamePath = GamePathFromInput(typedGamePath);
  if (typedGamePath.empty()) {
    ShowPrompt("Please enter the game path.", "Error");
    return false;
  }
  if (gamePath.size() > kMaxSavedGamePath || gamePath.find_first_of("=\r\n") != gamePath.npos) {
    ShowPrompt(FormatText("This game path cannot be kept in a mod configuration: it may have at "
                          "most %zu characters, and no \"=\".",
                          kMaxSavedGamePath),
               "Error");
    return false;
  }
  ModConfig config = modConfig;
  config.GamePath = gamePath;
  if (!objectsList.empty()) config.ObjectsList = objectsList;
  if (!MayUseContent(config)) return false;
  AdoptConfig(config);
  CreateModFolders(CurrentModName(), modConfig.GamePath);
  SaveModGamePath(CurrentModName(), modConfig);
  hooks.loadObjectCatalogue();
  if (ContentArchivePathsOf(modConfig) != HeldContentArchives() || !HeldContentProblems().empty()) {
    ReopenContentArchives();
  }
  return true;
}

ModSnapshot TakeModSnapshot() { return {modConfig, openLevel.folder}; }

void RestoreMod(const ModSnapshot& snapshot) {
  const bool sameContent = SameContent(modConfig, snapshot.config);
  modConfig = snapshot.config;
  openLevel.folder = snapshot.levelFolder;
  modList.current = IndexOfMod(CurrentModName());
  if (!sameContent) LoadModContent();
}

}  // namespace mw
