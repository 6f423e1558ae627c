// Starting other programs, and opening documents with the user's usual program.
#pragma once

#include <string_view>

namespace mw {

// What becomes of the user's input while the program waits for another.
enum class InputDuringWait { Handled, Ignored };

// Starts `commandLine` (quoted parts are kept together) in `folder` and returns when it has ended;
// the program's windows stay alive meanwhile. The program's path can have `\` as separator; the
// arguments are handed on as they are. Away from Windows a program for Windows is run by Wine,
// where that is installed. False when it could not be started.
bool RunProcessAndWait(std::string_view commandLine, std::string_view folder,
                       InputDuringWait input);

// Whether a wait goes on that ignores the user's input: nothing else may begin.
bool IsInputIgnored();

// Opens a document or web page with the program that the user's desktop has for it. False when the
// document is not there or the desktop has no program for it.
bool OpenDocument(std::string_view path);

}  // namespace mw
