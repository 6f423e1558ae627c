#include "data/add_file.h"

#include <string>

#include "data/game_file.h"
#include "platform/prompts.h"

namespace mw {
namespace {

std::string_view LastPart(std::string_view path) {
  return path.substr(path.find_last_of("/\\") + 1);
}

}  // namespace

bool AddFileToArchive(std::string_view diskPath, std::string_view gameFolder) {
  const std::string gamePath = std::string(gameFolder) + "\\" + std::string(LastPart(diskPath));
  if (IsInWritableArchive(gamePath) &&
      !ConfirmReplacing("The level has this file already. It will be replaced:\n\n" + gamePath)) {
    return false;
  }
  const std::string failure = WriteAsOneChange([&] { return ImportDiskFile(diskPath, gamePath); });
  if (failure.empty()) return true;
  ShowPrompt(failure, "Error", PromptButtons::Ok, PromptIcon::Stop);
  return false;
}

}  // namespace mw
