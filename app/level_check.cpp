#include "app/level_check.h"

#include "core/editor_state.h"
#include "core/text.h"
#include "data/archive.h"
#include "data/mod_config.h"
#include "platform/disk.h"
#include "platform/prompts.h"

namespace mw {
namespace {

// The level that a member belongs to; empty when it belongs to none.
std::string_view LevelOfMember(std::string_view member, std::string_view levelsFolder) {
  if (!StartsWithNoCase(member, levelsFolder)) return {};
  member.remove_prefix(levelsFolder.size());
  const std::size_t end = member.find('/');
  return end == member.npos ? std::string_view() : member.substr(0, end);
}

// The name of the level in the archive when that is another one than `level`.
std::string OtherLevel(const Archive& archive, std::string_view level) {
  const std::string folder = NormalMemberName(modConfig.levelsFolder);
  std::string_view other;
  for (const auto& [name, entry] : archive.Entries()) {
    const std::string_view found = LevelOfMember(name, folder);
    if (found.empty()) continue;
    if (EqualNoCase(found, level)) return {};
    other = found;
  }
  return std::string(other);
}

}  // namespace

std::string ReasonAgainstOpening(const std::string& path, std::string_view level) {
  Archive archive;
  if (!archive.Open(path, false)) return SystemPath(path) + ": " + archive.Error() + ".";
  const std::string other = OtherLevel(archive, level);
  if (other.empty()) return {};
  return FormatText(
      "This archive holds the level %s, not %s. Give the file its own name back to open it.",
      other.c_str(), std::string(level).c_str());
}

void ShowLevelNotOpened(const std::string& level, const std::string& reason) {
  const std::string open =
      editor.levelLoaded
          ? FormatText("The level %s is still open, as you left it.", modConfig.LevelName.c_str())
          : "No level is open.";
  ShowArrowCursor();
  ShowPrompt(FormatText("The level %s could not be opened.\n\n%s\n\nThe level on disk is as it was "
                        "after the last save. %s",
                        level.c_str(), reason.c_str(), open.c_str()),
             "Error", PromptButtons::Ok, PromptIcon::Stop);
}

std::string WriteProtectionText(const Archive& archive) {
  return FormatText("The level %s is write-protected.\n\n%s: %s.", modConfig.LevelName.c_str(),
                    SystemPath(archive.Path()).c_str(), archive.WriteProtection().c_str());
}

void ShowWriteProtection(const Archive& archive) {
  if (archive.WriteProtection().empty()) return;
  ShowArrowCursor();
  ShowPrompt(WriteProtectionText(archive) +
                 "\n\nIt is open for looking: what you change cannot be saved as long as it is so.",
             "Warning", PromptButtons::Ok, PromptIcon::Exclamation);
}

}  // namespace mw
