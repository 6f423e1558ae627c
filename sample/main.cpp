// make_sample GAME WORK [--force] [--progress]: writes the sample game into the folder GAME and the
// files that the editor needs for it into its working folder WORK. With --progress it prints lines
// of a percentage and the file that it is at, for a program that shows them.
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "platform/console.h"
#include "sample/installation.h"

namespace {

void PrintProgress(int percent, std::string_view file) {
  std::printf("%d %.*s\n", percent, static_cast<int>(file.size()), file.data());
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  using namespace mw::sample;
  const std::vector<std::string> words = mw::ConsoleWords(argc, argv);
  std::vector<std::string_view> folders;
  bool force = false, progress = false, wrong = false;
  for (std::size_t i = 1; i < words.size(); ++i) {
    const std::string_view word = words[i];
    if (word == "--force") {
      force = true;
    } else if (word == "--progress") {
      progress = true;
    } else {
      wrong |= word.starts_with("--");
      folders.push_back(word);
    }
  }
  if (wrong || folders.size() != 2) {
    std::fprintf(stderr,
                 "usage: make_sample <game folder> <working folder> [--force] [--progress]\n");
    return 1;
  }
  std::error_code error;
  const Installation installation{std::filesystem::absolute(folders[0], error).lexically_normal(),
                                  std::filesystem::absolute(folders[1], error).lexically_normal()};
  if (error) {
    std::fprintf(stderr, "The folders cannot be found: %s\n", error.message().c_str());
    return 1;
  }
  if (!force && IsEdited(installation)) {
    std::printf(
        "The sample game in %s has been edited and stays as it is; --force writes it anew.\n",
        installation.gameFolder.string().c_str());
    return 0;
  }
  const ShowProgress show = progress ? ShowProgress(PrintProgress) : [](int, std::string_view) {};
  return WriteInstallation(installation, show) ? 0 : 1;
}
