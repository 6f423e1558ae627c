// What the program says to its user outside the dialogs: message boxes, the mouse cursor during
// long work, and the status bar. All texts are UTF-8.
#pragma once

#include <string_view>

namespace mw {

enum class PromptButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class PromptIcon { None, Information, Question, Exclamation, Stop };
enum class PromptAnswer { Ok, Cancel, Yes, No };

// Shows a modal message box over the active window and waits for the answer. Closing an Ok box
// answers Ok, closing a box with Cancel answers Cancel; a YesNo box can be neither escaped nor
// closed.
PromptAnswer ShowPrompt(std::string_view text, std::string_view caption,
                        PromptButtons buttons = PromptButtons::Ok,
                        PromptIcon icon = PromptIcon::None);

// Asks before what cannot be taken back, whose `text` tells what will be lost. True to go on.
inline bool ConfirmReplacing(std::string_view text) {
  return ShowPrompt(text, "WARNING", PromptButtons::OkCancel, PromptIcon::Exclamation) ==
         PromptAnswer::Ok;
}

// The wait cursor stays until the mouse next moves over the program, or until ShowArrowCursor.
void ShowWaitCursor();
void ShowArrowCursor();

inline constexpr int kProgressPart = 1;
// Two spaces and the text into part 1 (progress and results), part 2 (frame rate) or part 3 (what
// is under the cursor or being dragged) of the status bar; nothing is done where it stands already.
// Part 1 is repainted at once, to be read while long work goes on, unless the text before was just
// painted; then it comes with the next frame, as the others do, which change with each.
void SetStatusText(int part, std::string_view text);
// Empties the part, if this text still stands there.
void ClearStatusText(int part, std::string_view text);

}  // namespace mw
