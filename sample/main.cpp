// make_sample GAME WORK [--force]: writes the sample game into the folder GAME and the files that
// the editor needs for it into its working folder WORK.
#include <cstdio>
#include <cstring>

#include "sample/installation.h"

int main(int argc, char** argv) {
  using namespace mw::sample;
  const bool force = argc == 4 && std::strcmp(argv[3], "--force") == 0;
  if (argc != 3 && !force) {
    std::fprintf(stderr, "usage: make_sample <game folder> <working folder> [--force]\n");
    return 1;
  }
  std::error_code error;
  const Installation installation{std::filesystem::absolute(argv[1], error).lexically_normal(),
                                  std::filesystem::absolute(argv[2], error).lexically_normal()};
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
  return WriteInstallation(installation) ? 0 : 1;
}
