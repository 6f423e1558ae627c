#include "app/commands.h"

#include "app/command_table.h"
#include "app/level.h"
#include "app/save_questions.h"
#include "app/shell.h"
#include "platform/processes.h"
#include "platform/prompts.h"

namespace mw {
namespace {

void CheckGroupButton(const CommandSpec& spec) {
  for (const CommandId member : GroupMembers(spec.group)) {
    shell.setCommandChecked(member, member == spec.id);
  }
}

}  // namespace

bool OfferToSave(const char* occasion) {
  const SavingQuestion question = QuestionBeforeClosing(occasion);
  if (question.text.empty()) return true;
  switch (ShowPrompt(question.text, "Save?", PromptButtons::YesNoCancel, PromptIcon::Information)) {
    case PromptAnswer::Yes:
      return SaveLevel(question.foreign);
    case PromptAnswer::No:
      return true;
    default:
      return false;
  }
}

bool ConfirmExit() { return OfferToSave("before exiting"); }

void RunCommand(CommandId id) {
  const CommandSpec* const spec = FindCommand(id);
  if (!spec) return;
  // Not every way to a command is an input: a screen reader's is not. Switches and the commands of
  // groups change only what is shown and which tool is next.
  if (IsInputIgnored() && spec->group == CommandGroup::None && !spec->isSwitch) return;
  if (NeedsLevel(id) && !editor.levelLoaded) return;
  CheckGroupButton(*spec);
  spec->deed();
}

}  // namespace mw
