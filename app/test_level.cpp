#include "app/test_level.h"

#include <string>

#include "app/undo.h"
#include "core/editor_state.h"
#include "core/text.h"
#include "data/mod_config.h"
#include "data/mods.h"
#include "platform/disk.h"
#include "platform/processes.h"
#include "platform/prompts.h"

namespace mw {
namespace {

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

bool WriteMapList() {
  const std::string folder =
      modConfig.GamePath.String() + modConfig.modFolder.String() + "Settings";
  CreateFolder(folder);  // a mod that has never been played has none
  const std::string path = folder + "\\maplist.con";
  const std::string level = UpperCase(modConfig.LevelName);
  if (WriteWholeFile(path, "game.addLevel " + level + "\r\ngame.setCurrentLevel " + level + "\r\n"))
    return true;
  ShowPrompt("Error writing to maplist.con", "Error", PromptButtons::Ok, PromptIcon::Stop);
  return false;
}

}  // namespace

void TestLevel() {
  if (!WriteMapList()) return;
  // Copies: while the game runs the user may open another level.
  const std::string level = modConfig.LevelName.String(), game = modConfig.GamePath.String();
  SetStatusText(1, FormatText(editor.levelModified
                                  ? "Testing level %s as it was last saved, without later changes"
                                  : "Testing level %s",
                              level.c_str()));
  const UndoPause pause;
  const bool started =
      RunProcessAndWait(FormatText("\"%svarnhold.exe\" +game %s +restart 1 +hostServer 1",
                                   game.c_str(), CurrentModName().c_str()),
                        game);
  SetStatusText(
      1, started ? FormatText("Tested level %s", level.c_str()) : "The game could not be started.");
}

}  // namespace mw
