// What the shell's logic asks of the windows. The window library fills the record in at start-up; a
// test fills in what it wants to see. Every function has a harmless default.
#pragma once

#include <functional>

#include "app/command_ids.h"
#include "core/editor_state.h"

namespace mw {

// How the welcome dialog ended.
enum class WelcomeChoice : int { OpenLevel = 1, NewLevel = 2, Close = 8 };

struct Shell {
  // Buttons and windows.
  std::function<void(CommandId, bool)> setCommandChecked = [](CommandId, bool) {};
  std::function<void(CommandId, bool)> setCommandEnabled = [](CommandId, bool) {};
  // Enables what works on a level.
  std::function<void(bool)> setLevelOpen = [](bool) {};
  std::function<void(EditMode)> showModeToolbar = [](EditMode) {};
  std::function<bool()> mainWindowActive = [] { return true; };
  std::function<bool()> viewHasFocus = [] { return true; };
  std::function<void()> focusView = [] {};
  std::function<void()> focusTreePanel = [] {};
  std::function<void()> closeMainWindow = [] {};
  // Draws one frame at once.
  std::function<void()> renderFrameNow = [] {};

  // Dialogs; true when they ended with OK.
  std::function<bool(bool cancelAllowed)> selectMod = [](bool) { return false; };
  std::function<bool(bool cancelAllowed)> newModConfig = [](bool) { return false; };
  std::function<bool(bool cancelAllowed)> editModSettings = [](bool) { return false; };
  // Sets LevelName and levelFolder on OK.
  std::function<bool()> loadLevelDialog = [] { return false; };
  std::function<bool()> createRoadDialog = [] { return false; };
  std::function<void()> addFileDialog = [] {};
  std::function<void()> aboutDialog = [] {};
  std::function<void()> creditsDialog = [] {};
  std::function<WelcomeChoice()> welcomeDialog = [] { return WelcomeChoice::Close; };
};

extern Shell shell;

}  // namespace mw
