// A level with unsaved work, and what a restart makes of it.
#pragma once

#include "app/level_fixture.h"
#include "app/recovery.h"
#include "app/recovery_offer.h"
#include "app/session.h"
#include "core/history.h"
#include "support/archive_bytes.h"

namespace mw {

inline constexpr PromptAnswer kYes = PromptAnswer::Yes, kOk = PromptAnswer::Ok;

inline const std::string kRecoveryFile = RecoveryFileName(0);

class RecoveryTest : public LevelTest {
 protected:
  RecoveryTest() {
    Restart();
    Open("Island");
  }
  void EditAsStep(int mark) {
    const HistoryStep step("Mark");
    KeepSetting(modConfig);
    Mark(mark);
  }
};

}  // namespace mw
