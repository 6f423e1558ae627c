// mapwright-archive: the game's archives from the command line.
#include <cstdio>
#include <exception>

#include "platform/console.h"
#include "tools/archive/arguments.h"
#include "tools/archive/commands.h"

int main(int count, char** words) {
  try {
    return mw::RunArchiveCommand(mw::ConsoleWords(count, words));
  } catch (const std::exception& error) {  // of the libraries and of memory
    std::fprintf(stderr, "mapwright-archive: %s\n", error.what());
    return mw::kUnreadable;
  }
}
