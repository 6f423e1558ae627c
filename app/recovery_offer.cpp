#include "app/recovery_offer.h"

#include <algorithm>
#include <optional>
#include <string>

#include "app/level.h"
#include "app/recovery.h"
#include "app/session.h"
#include "core/text.h"
#include "data/mods.h"
#include "data/recovery_file.h"
#include "platform/disk.h"
#include "platform/file.h"
#include "platform/prompts.h"

namespace mw {
namespace {

constexpr const char* kDeclined = ".old";
constexpr const char* kDamaged = ".damaged";

// Out of the way of the next recovery file. The name that it has then.
std::string SetAside(const char* suffix) {
  std::string aside = session.recovery.file + suffix;
  return RenameFile(session.recovery.file, aside) ? aside : session.recovery.file;
}

void ShowKept(const std::string& what, const std::string& name) {
  ShowPrompt(what + "\n\nIt is kept as " + name + " in the working folder.", "Warning",
             PromptButtons::Ok, PromptIcon::Exclamation);
}

bool Confirm(const RecoveryInfo& info) {
  return ShowPrompt(
             FormatText("Mapwright was not closed properly. There is unsaved work of %s on level "
                        "%s of mod %s.\n\nWould you like to go on with it? If not, it is kept as "
                        "%s in the working folder.",
                        info.time.c_str(), info.level.c_str(), info.mod.c_str(),
                        (session.recovery.file + kDeclined).c_str()),
             "Recover?", PromptButtons::YesNo, PromptIcon::Information) == PromptAnswer::Yes;
}

bool SelectModNamed(const std::string& name) {
  const auto found = std::ranges::find(modList.names, name);
  return found != modList.names.end() && SelectMod(static_cast<int>(found - modList.names.begin()));
}

bool Recover(const RecoveryInfo& info, std::string& reason) {
  const ModSnapshot before = TakeModSnapshot();
  reason = FormatText("Its mod %s cannot be read.", info.mod.c_str());
  if (SelectModNamed(info.mod) && info.level.find_first_of("/\\") == info.level.npos &&
      OpenRecoveredLevel(info.level, session.recovery.file, reason)) {
    session.recovery.written = true;  // until it is saved
    return true;
  }
  RestoreMod(before);
  return false;
}

// True when the level is open with the work of this editor's own file in it.
bool OfferOwnFile() {
  const std::optional<RecoveryInfo> info = ReadRecoveryInfo(session.recovery.file);
  if (!info) {
    ShowKept("The recovery file of an earlier session is damaged and cannot be used.",
             SetAside(kDamaged));
    return false;
  }
  if (!Confirm(*info)) {
    SetAside(kDeclined);
    return false;
  }
  std::string reason;
  if (Recover(*info, reason)) {
    SetStatusText(1, FormatText("Recovered level %s. The recovered work is not saved yet.",
                                info->level.c_str()));
    return true;
  }
  if (!reason.empty()) reason.insert(0, "\n\n");
  ShowKept(FormatText("The unsaved work on level %s cannot be opened.%s", info->level.c_str(),
                      reason.c_str()),
           SetAside(kDeclined));
  return false;
}

}  // namespace

bool OfferRecovery() {
  for (int number = 0; number < kMaxRecoveryFiles; ++number) {
    if (!FileExists(RecoveryFileName(number)) || !ClaimRecoveryFile(number)) continue;
    if (OfferOwnFile()) return true;
    ReleaseRecoveryFile();
  }
  return false;
}

}  // namespace mw
