// Keeps the unsaved edits of the open level in a recovery file in the working folder, so that a
// crash or a kill loses little. The level's archive is never touched. app/recovery_offer.h offers
// the work back at the next start.
//
// Several editors may run in one working folder, on displays of their own: each writes a file of
// its own. Whose it is, running or not, is told by the claim (File::Claim) on a file beside it.
#pragma once

#include <cstdint>
#include <string>

#include "platform/file.h"

namespace mw {

inline constexpr int kMaxRecoveryFiles = 8;
// The name of a recovery file, counted from 0: "mapwright.recovery", "mapwright-2.recovery" ...
std::string RecoveryFileName(int number);
// Milliseconds from the first edit since the last writing to the next.
inline constexpr std::uint32_t kRecoveryInterval = 60'000;

struct Recovery {
  std::uint32_t interval = kRecoveryInterval;
  bool edited = false;         // when last looked
  std::uint32_t since = 0;     // the time of the first edit, or of the last writing
  bool written = false;        // the file holds edits of the open level
  std::uint32_t checksum = 0;  // of what was written last
  std::string file;            // this editor's own; empty as long as it has none
  File claim;                  // the file beside it
};

// To be called every few seconds, while no dialog is open, with the milliseconds that a clock
// shows. Writes the file when it is time, no mouse button is held and there is something new to
// write. A failure shows in the status bar.
void KeepRecovery(std::uint32_t now);
// The edits are saved, or the user has given them up: removes the file.
void ForgetRecovery();

// Makes that recovery file this editor's own. False when it is that of another running editor.
bool ClaimRecoveryFile(int number);
// The file is nobody's; it stays where it is.
void ReleaseRecoveryFile();

}  // namespace mw
