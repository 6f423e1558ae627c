#include "data/mod_files.h"

#include "data/script.h"
#include "platform/disk.h"
#include "platform/prompts.h"

namespace mw {
namespace {

std::string ModFolderName(std::string_view modName) {
  std::string folder = ModFolderOf(modName);
  folder.pop_back();
  return folder;
}

// Scripts on disk end their lines with carriage return and line feed.
std::string WithCarriageReturns(std::string_view text) {
  std::string stored;
  for (const char c : text) {
    if (c == '\n') stored += '\r';
    stored += c;
  }
  return stored;
}

}  // namespace

std::string ModInitScript(std::string_view modName) {
  const std::string name(modName);
  std::string script(ScriptHeader());
  script += "game.setCustomGameName " + name + "\n";
  script += "game.addModPath Mods/VARNHOLD/\n";
  script += "game.addModPath Mods/" + name + "\n";
  script += "game.setCustomGameVersion 1.0\n";
  script.append(kGameWebAddress).append("\n");
  script +=
      "Game.setMenuMusicFilename \"music/slaughter4.bik\"\n"
      "Game.setLoadMusicFilename \"music/vehicle4.bik\"\n"
      "Game.setWinMusicFilename \"music/vehicle3.bik\"\n"
      "Game.setLoseMusicFilename \"music/menu.bik\"\n"
      "Game.setCampaignLoseMusicFilename \"music/theme2.bik\"\n"
      "Game.setDebriefingMusicFilename \"music/briefing.bik\"\n";
  return script;
}

void CreateModFolders(std::string_view modName, std::string_view gameFolder) {
  const std::string folder = std::string(gameFolder) + ModFolderName(modName);
  if (CreateFolder(folder) == FolderResult::Failed) {
    ShowPrompt("Failed to create directory " + SystemPath(folder) +
                   ".  This will cause future problems.  Please check your Mod configuration",
               "Warning");
    return;
  }
  for (const char* inner : {"\\Archives", "\\Archives\\varnhold", "\\Archives\\varnhold\\levels"}) {
    CreateFolder(folder + inner);
  }
  const std::string script = folder + "\\Init.con";
  if (!FileExists(script) && !WriteWholeFile(script, WithCarriageReturns(ModInitScript(modName)))) {
    ShowPrompt("Can't write " + SystemPath(script), "Error");
  }
}

std::string WithGamePath(std::string_view text, std::string_view gamePath) {
  std::string result;
  while (!text.empty()) {
    const std::size_t lineFeed = text.find('\n');
    std::string_view line = text.substr(0, lineFeed);
    text.remove_prefix(lineFeed == text.npos ? text.size() : lineFeed + 1);
    if (line.starts_with(kGamePathKey)) {
      const bool hasCarriageReturn = line.ends_with('\r');
      result.append(kGamePathKey).append("=").append(gamePath);
      if (hasCarriageReturn) result += '\r';
    } else {
      result += line;
    }
    result += '\n';
  }
  return result;
}

bool SaveModGamePath(std::string_view modName, const ModConfig& config) {
  const std::string fileName = std::string(modName) + ".cfg";
  const auto bytes = ReadWholeFile(fileName);
  if (!bytes) {
    ShowPrompt("Can't read " + fileName, "Error");
    return false;
  }
  const std::string_view text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
  if (!WriteWholeFile(fileName, WithGamePath(text, config.GamePath))) {
    ShowPrompt("Can't write " + fileName, "Error");
    return false;
  }
  return true;
}

}  // namespace mw
