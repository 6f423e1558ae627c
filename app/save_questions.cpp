#include "app/save_questions.h"

#include "app/level.h"
#include "app/level_check.h"
#include "core/editor_state.h"
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

// What has happened to the archive, and whether to save all the same; `occasion` begins with a
// blank or is empty.
std::string ForeignChangeQuestion(ArchiveOnDisk state, const std::string& occasion) {
  const char* const level = modConfig.LevelName.c_str();
  if (state == ArchiveOnDisk::Gone) {
    return FormatText(
        "The archive of level %s is gone: another program has removed or renamed it.\n\n"
        "Would you like to save the level in its old place, with everything that it held%s?",
        level, occasion.c_str());
  }
  return FormatText(
      "Another program has changed the archive of level %s since it was opened or last saved.\n\n"
      "Saving keeps what else is in the changed archive, but the level's terrain, settings, "
      "objects and entities there are replaced by those of the editor.\n\n"
      "Would you like to save into the changed archive%s?",
      level, occasion.c_str());
}

bool IsWritable(Archive& archive) {
  if (archive.WriteProtection().empty() || archive.LiftWriteProtection()) return true;
  return ShowRefusal(WriteProtectionText(archive) + "\n\nYour changes are still in the editor.");
}

bool TakesOnChanges(Archive& archive, ForeignChange foreign) {
  const ArchiveOnDisk state = archive.OnDisk();
  if (state == ArchiveOnDisk::AsLeft) return true;
  if (foreign == ForeignChange::Ask && !Confirm(ForeignChangeQuestion(state, ""))) return false;
  std::string reason;
  if (state == ArchiveOnDisk::Changed) {
    reason = ReasonAgainstOpening(archive.Path(), modConfig.LevelName);
  }
  if (reason.empty() && archive.Reopen()) return true;
  return ShowRefusal(
      FormatText("The changed archive cannot be opened: %s\n\nIt was left as it is, and your "
                 "changes are still in the editor. Put a good copy of the archive in its place, "
                 "for example its backup, and save again.",
                 (reason.empty() ? archive.Error() : reason).c_str()));
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
  if (archive.BackUp()) return true;
  if (!Confirm(FormatText("The backup of the level, %s, could not be made: %s\n\n"
                          "Would you like to save without a backup?",
                          archive.BackupName().c_str(), archive.Error().c_str()))) {
    return false;
  }
  archive.WaiveBackup();
  return true;
}

}  // namespace

bool MaySaveInto(Archive& archive, ForeignChange foreign) {
  return IsWritable(archive) && TakesOnChanges(archive, foreign) && ClearsTheWay(archive) &&
         IsBackedUp(archive);
}

SavingQuestion QuestionBeforeClosing(const char* occasion) {
  if (!editor.levelLoaded) return {};
  const Archive* const archive = LevelArchive();
  // A write-protected archive is another's to change.
  const bool isOwn = archive && archive->WriteProtection().empty();
  const ArchiveOnDisk state = isOwn ? archive->OnDisk() : ArchiveOnDisk::AsLeft;
  if (state != ArchiveOnDisk::AsLeft) {
    return {ForeignChangeQuestion(state, std::string(" ") + occasion), ForeignChange::TakeOn};
  }
  if (!editor.levelModified) return {};
  return {FormatText("Would you like to save your changes %s?", occasion)};
}

}  // namespace mw
