#include "platform/console.h"

#include <cstdio>
// The second needs the first.
// clang-format off
#include <windows.h>
#include <shellapi.h>
// clang-format on

#include "platform/windows/wide_path.h"

namespace mw {

std::vector<std::string> ConsoleWords(int count, char** words) {
  SetConsoleOutputCP(CP_UTF8);
  int found = 0;
  wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &found);
  if (!wide) return {words, words + count};
  std::vector<std::string> all;
  for (int i = 0; i < found; ++i) all.push_back(Utf8Text(wide[i]));
  LocalFree(wide);
  return all;
}

void PrintIntoConsole() {
  // Output that goes to a file or another program is left there.
  if (GetFileType(GetStdHandle(STD_ERROR_HANDLE)) != FILE_TYPE_UNKNOWN) return;
  if (!AttachConsole(ATTACH_PARENT_PROCESS)) return;
  SetConsoleOutputCP(CP_UTF8);
  std::freopen("CONOUT$", "w", stdout);
  std::freopen("CONOUT$", "w", stderr);
}

}  // namespace mw
