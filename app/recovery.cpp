#include "app/recovery.h"

#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include "app/level.h"
#include "app/level_parts.h"
#include "app/session.h"
#include "core/editor_state.h"
#include "core/text.h"
#include "data/game_file.h"
#include "data/mod_config.h"
#include "data/recovery_file.h"
#include "platform/disk.h"
#include "platform/file.h"
#include "platform/prompts.h"

namespace mw {

namespace {

constexpr const char* kClaimSuffix = "-lock";

bool HasUnsavedEdits() { return editor.levelLoaded && editor.levelModified && LevelArchive(); }

std::string TimeText() {
  const std::time_t now = std::time(nullptr);
  char text[32] = "";
  if (const std::tm* const local = std::localtime(&now)) {
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", local);
  }
  return text;
}

// A file that is there already is what a killed editor left; the next start offers it.
bool HasRecoveryFile() {
  for (int number = 0; session.recovery.file.empty() && number < kMaxRecoveryFiles; ++number) {
    if (!FileExists(RecoveryFileName(number))) ClaimRecoveryFile(number);
  }
  return !session.recovery.file.empty();
}

void WriteRecovery() {
  // A part that cannot be written is reported when the level is saved.
  const std::vector<GameMember> members = CaptureGameFiles(WriteEditedParts);
  const std::uint32_t checksum = ChecksumOf(members);
  if (session.recovery.written && checksum == session.recovery.checksum) return;
  const RecoveryInfo info{LevelMod(), modConfig.LevelName.String(), TimeText()};
  std::string error = "there are too many of them";
  if (!HasRecoveryFile() || !WriteRecoveryFile(session.recovery.file, info, members, error)) {
    SetStatusText(1, "Could not write the recovery file: " + error);
    return;
  }
  session.recovery.written = true;
  session.recovery.checksum = checksum;
}

}  // namespace

void KeepRecovery(std::uint32_t now) {
  if (!HasUnsavedEdits()) {
    session.recovery.edited = false;
    return;
  }
  if (!session.recovery.edited) {
    session.recovery.edited = true;
    session.recovery.since = now;
  }
  if (editor.leftHeld || editor.rightHeld ||
      now - session.recovery.since < session.recovery.interval)
    return;
  session.recovery.since = now;
  WriteRecovery();
}

void ForgetRecovery() {
  if (session.recovery.written) RemoveFile(session.recovery.file);
  ReleaseRecoveryFile();
  session.recovery.written = session.recovery.edited = false;
}

std::string RecoveryFileName(int number) {
  return number == 0 ? "mapwright.recovery" : FormatText("mapwright-%i.recovery", number + 1);
}

bool ClaimRecoveryFile(int number) {
  const std::string name = RecoveryFileName(number);
  const std::string beside = name + kClaimSuffix;
  File claim;
  do {
    const bool open =
        claim.Open(beside, FileAccess::Create) || claim.Open(beside, FileAccess::Read);
    if (!open) break;  // where no claim can be made nobody has one
    if (!claim.Claim()) return false;
  } while (!claim.IsAt(beside));
  session.recovery.file = name;
  session.recovery.claim = std::move(claim);
  return true;
}

void ReleaseRecoveryFile() {
  if (session.recovery.claim.IsOpen()) RemoveFile(session.recovery.file + kClaimSuffix);
  session.recovery.claim.Close();
  session.recovery.file.clear();
}

}  // namespace mw
