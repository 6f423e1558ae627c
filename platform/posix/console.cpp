#include "platform/console.h"

namespace mw {

std::vector<std::string> ConsoleWords(int count, char** words) { return {words, words + count}; }

void PrintIntoConsole() {}

}  // namespace mw
