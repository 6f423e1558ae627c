// What the program is told when it is started, and where it then works.
#pragma once

#include <QString>
#include <optional>

namespace mw {

struct CommandLine {
  QString folder;  // to work in; empty: the program chooses
  QString level;   // the archive to open, an absolute path; empty: the user chooses
};

// Reads the words of the command line; before there is a QApplication. An exit code when the
// program is to end at once: 0 after --help and --version, 2 after a line on stderr that says what
// is wrong.
std::optional<int> ReadCommandLine(int argc, char** argv, CommandLine& line);

// Goes to the working folder: the one that was asked for, else the current one when it holds the
// template of mod configurations, else the program's own when that does and can be written to, as
// somebody unpacked it, else the user's own, which is made. What the program brings along
// and the working folder lacks is then read from the folder that it was installed with. False,
// after a line on stderr, when there is no such folder.
bool EnterWorkingFolder(const CommandLine& line);

// While a QApplication is made: without a display the program ends with a line on stderr and exit
// code 1.
class DisplayWatch {
 public:
  DisplayWatch();
  ~DisplayWatch();
  DisplayWatch(const DisplayWatch&) = delete;
  DisplayWatch& operator=(const DisplayWatch&) = delete;
};

}  // namespace mw
