#include "app/save_questions.h"

#include "core/text.h"
#include "data/archive.h"
#include "data/mod_config.h"
#include "platform/prompts.h"

namespace mw {
namespace {

bool Confirm(const std::string& question) {
  return ShowPrompt(question, "Save?", PromptButtons::YesNo, PromptIcon::Exclamation) ==
         PromptAnswer::Yes;
}

bool ShowRefusal(const std::string& reason) {
  ShowPrompt("The level could not be saved.\n\n" + reason, "Error", PromptButtons::Ok,
             PromptIcon::Stop);
  return false;
}

bool ConfirmTakingOn(ArchiveOnDisk state) {
  const char* const level = modConfig.LevelName.c_str();
  if (state == ArchiveOnDisk::Gone) {
    return Confirm(FormatText(
        "The archive of level %s is gone: another program has removed or renamed it.\n\n"
        "Would you like to save the level in its old place, with everything that it held?",
        level));
  }
  return Confirm(FormatText(
      "Another program has changed the archive of level %s since it was opened or last saved.\n\n"
      "Saving keeps what else is in the changed archive, but the level's terrain, settings, "
      "objects and entities there are replaced by those of the editor.\n\n"
      "Would you like to save into the changed archive?",
      level));
}

bool TakesOnChanges(Archive& archive) {
  const ArchiveOnDisk state = archive.OnDisk();
  if (state == ArchiveOnDisk::AsLeft) return true;
  if (!ConfirmTakingOn(state)) return false;
  if (archive.Reopen()) return true;
  return ShowRefusal(
      FormatText("The changed archive cannot be opened: %s\n\nIt was left as it is, and your "
                 "changes are still in the editor. Put a good copy of the archive in its place, "
                 "for example its backup, and save again.",
                 archive.Error().c_str()));
}

bool ClearsTheWay(Archive& archive) {
  const std::string journal = archive.StrayJournal();
  if (journal.empty()) return true;
  if (!Confirm(FormatText(
          "The file %s beside the level's archive is what an interrupted save of another state of "
          "the archive left. Nothing can be saved as long as it is there.\n\n"
          "Would you like to rename it, and save?",
          journal.c_str()))) {
    return false;
  }
  if (archive.SetStrayJournalAside()) return true;
  return ShowRefusal(
      FormatText("%s cannot be renamed: %s", journal.c_str(), archive.Error().c_str()));
}

bool IsBackedUp(Archive& archive) {
  return archive.BackUp() ||
         Confirm(FormatText("The backup of the level, %s, could not be made: %s\n\n"
                            "Would you like to save without a backup?",
                            archive.BackupName().c_str(), archive.Error().c_str()));
}

}  // namespace

bool MaySaveInto(Archive& archive) {
  return TakesOnChanges(archive) && ClearsTheWay(archive) && IsBackedUp(archive);
}

}  // namespace mw
