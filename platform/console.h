// What a program that is started in a console needs there; posix/ and windows/ each have their own.
#pragma once

#include <string>
#include <vector>

namespace mw {

// The words of the command line in UTF-8, the program's own name first; what is printed from then
// on is UTF-8 for the console, too.
std::vector<std::string> ConsoleWords(int count, char** words);

// Lets a program with windows print into the console that it was started in, if it was.
void PrintIntoConsole();

}  // namespace mw
