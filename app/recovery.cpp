#include "app/recovery.h"

#include <ctime>
#include <string>
#include <vector>

#include "app/level.h"
#include "app/level_parts.h"
#include "core/editor_state.h"
#include "data/game_file.h"
#include "data/mod_config.h"
#include "data/recovery_file.h"
#include "platform/file.h"
#include "platform/prompts.h"

namespace mw {

Recovery recovery;

namespace {

bool HasUnsavedEdits() { return editor.levelLoaded && editor.levelModified && LevelArchive(); }

std::string TimeText() {
  const std::time_t now = std::time(nullptr);
  char text[32] = "";
  if (const std::tm* const local = std::localtime(&now)) {
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", local);
  }
  return text;
}

void WriteRecovery() {
  const std::vector<GameMember> members = CaptureGameFiles(WriteEditedParts);
  ClearGameFileError();  // a part that cannot be written is reported when the level is saved
  const std::uint32_t checksum = ChecksumOf(members);
  if (recovery.written && checksum == recovery.checksum) return;
  const RecoveryInfo info{LevelMod(), modConfig.LevelName.String(), TimeText()};
  std::string error;
  if (!WriteRecoveryFile(kRecoveryFile, info, members, error)) {
    SetStatusText(1, "Could not write the recovery file: " + error);
    return;
  }
  recovery.written = true;
  recovery.checksum = checksum;
}

}  // namespace

void KeepRecovery(std::uint32_t now) {
  if (!HasUnsavedEdits()) {
    recovery.edited = false;
    return;
  }
  if (!recovery.edited) {
    recovery.edited = true;
    recovery.since = now;
  }
  if (editor.leftHeld || editor.rightHeld || now - recovery.since < recovery.interval) return;
  recovery.since = now;
  WriteRecovery();
}

void ForgetRecovery() {
  if (recovery.written) RemoveFile(kRecoveryFile);
  recovery.written = recovery.edited = false;
}

}  // namespace mw
