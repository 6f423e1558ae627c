// The command line of mapwright-archive.
#pragma once

namespace mw {

// Parses it and runs the command that it names. The exit code.
int RunArchiveCommand(int count, char** words);

}  // namespace mw
