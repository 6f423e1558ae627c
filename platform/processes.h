// Starting other programs, and opening documents with the user's usual program.
#pragma once

#include <string_view>

namespace mw {

// Starts `commandLine` (quoted parts are kept together) in `folder` and returns when it has ended;
// the program's windows stay alive meanwhile. The program's path can have `\` as separator; the
// arguments are handed on as they are. Away from Windows a program for Windows is run by Wine,
// where that is installed. False when it could not be started.
bool RunProcessAndWait(std::string_view commandLine, std::string_view folder);

enum class ProcessEnd { Ended, NotStarted, Cancelled };
// The same, but the user's input is ignored meanwhile, except in a small window: it has the title
// and says what is being done (`activity`), for how long, and has Cancel, which ends the program
// with all that it has started.
ProcessEnd RunCancellableProcess(std::string_view commandLine, std::string_view folder,
                                 std::string_view title, std::string_view activity);

// Whether a wait goes on that ignores the user's input: nothing else may begin.
bool IsInputIgnored();

// Opens a document or web page with the program that the user's desktop has for it. False when the
// document is not there or the desktop has no program for it.
bool OpenDocument(std::string_view path);

}  // namespace mw
