// The editor with somebody at its mouse and keyboard.
#pragma once

class QThread;

namespace mw::help {

// Starts the editor in the current folder and `guide`, which sends it input, beside its windows.
// Needs the QApplication, made after PrepareApplication. Returns the exit code; a guide that the
// editor did not wait for ends the program with an error.
int RunGuidedEditor(QThread& guide);
// What must be set before the QApplication is made.
void PrepareApplication();

}  // namespace mw::help
