// The command line of mapwright-archive.
#pragma once

#include <string>
#include <vector>

namespace mw {

// Parses it, the program's own name first, and runs the command that it names. The exit code.
int RunArchiveCommand(std::vector<std::string> words);

}  // namespace mw
