// What the shell's logic asks of the windows. The window library fills the whole record in at
// start-up; a test fills in what it wants to see.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/command_ids.h"
#include "app/new_level.h"
#include "app/recent_levels.h"
#include "app/sample_game.h"
#include "core/editor_state.h"
#include "terrain/height_exchange.h"
#include "terrain/random_terrain.h"

namespace mw {

// Says that a window is missing which the logic needs: a fault of the program.
void ShowMissingWindow();

struct NotConnected {};

// A function of the windows. While it is not connected, a call shows a message and gives the answer
// of a user who cancels, so that nothing counts as done.
template <typename Signature>
class WindowFunction;

template <typename Result, typename... Args>
class WindowFunction<Result(Args...)> {
 public:
  WindowFunction(NotConnected) {}
  template <typename Function>
  WindowFunction(Function function) : function_(std::move(function)) {}

  Result operator()(Args... args) const {
    if (function_) return function_(args...);
    ShowMissingWindow();
    return Result();
  }

 private:
  std::function<Result(Args...)> function_;
};

// How the welcome dialog ended. The recent levels that it shows follow the first one, in their
// order.
enum class WelcomeChoice : int {
  Close = 0,
  OpenLevel = 1,
  NewLevel = 2,
  SampleGame = 3,
  FirstRecentLevel = 10
};

// None has a default: a record in which one is left out does not compile.
struct Shell {
  // Buttons and windows.
  WindowFunction<void(CommandId, bool)> setCommandChecked;
  WindowFunction<void(CommandId, bool)> setCommandEnabled;
  // The names of the steps that Undo and Redo would take, empty for none, and whether they may now.
  WindowFunction<void(const std::string& undo, const std::string& redo, bool usable)> showUndoSteps;
  // Enables what works on a level.
  WindowFunction<void(bool)> setLevelOpen;
  // With the mode's tools and their settings as they are now.
  WindowFunction<void(EditMode)> showModeToolbar;
  // As session.miniMapLook says.
  WindowFunction<void()> showMiniMap;
  WindowFunction<bool()> mainWindowActive;
  WindowFunction<bool()> viewHasFocus;
  WindowFunction<void()> focusView;
  WindowFunction<void()> focusTreePanel;
  // The field that filters the level tree.
  WindowFunction<void()> focusFindField;
  WindowFunction<void()> closeMainWindow;
  // Draws one frame at once.
  WindowFunction<void()> renderFrameNow;

  // Dialogs; true when they ended with OK.
  WindowFunction<bool(bool cancelAllowed)> selectMod;
  WindowFunction<bool(bool cancelAllowed)> newModConfig;
  WindowFunction<bool(bool cancelAllowed)> editModSettings;
  // Sets LevelName and levelFolder on OK.
  WindowFunction<bool()> loadLevelDialog;
  WindowFunction<bool()> createRoadDialog;
  WindowFunction<bool()> terrainShadowsDialog;
  // Dialogs that ask for something; nothing when the user cancels.
  WindowFunction<std::optional<NewLevelChoices>()> newLevelDialog;
  WindowFunction<std::optional<RandomTerrainParameters>()> randomTerrainDialog;
  WindowFunction<std::optional<SampleBits>(const char* title)> sampleBitsDialog;
  // A catalogue entry.
  WindowFunction<std::optional<int>()> replaceDialog;
  WindowFunction<WelcomeChoice(const std::vector<RecentLevel>& recent)> welcomeDialog;
  // Writes the sample game into two new folders, one for the game and one for what the editor needs
  // of it, and shows how far that is.
  WindowFunction<SampleGameWriting(const std::string& game, const std::string& work)>
      writeSampleGame;
  // Dialogs that do by themselves what they are for.
  WindowFunction<void()> addFileDialog;
  WindowFunction<void()> savePictureDialog;
  WindowFunction<void()> levelStatisticsDialog;
  WindowFunction<void()> checkLevelDialog;
  WindowFunction<void()> surfaceAssignmentsDialog;
  WindowFunction<void()> lightSettingsDialog;
  WindowFunction<void()> fogSettingsDialog;
  WindowFunction<void()> shadowSettingsDialog;
  WindowFunction<void()> waterSettingsDialog;
  WindowFunction<void()> teamSelectionDialog;
  WindowFunction<void()> objectBrowserDialog;
  WindowFunction<void()> aboutDialog;
  WindowFunction<void()> creditsDialog;
};

// Nothing of it is connected.
Shell ShellWithoutWindows();

extern Shell shell;

}  // namespace mw
