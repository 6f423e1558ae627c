// make_media writes the pictures that the editor needs at run time and those that are built into
// it.
#include <QString>
#include <cstdio>
#include <cstring>

#include "assets/media_files.h"

int main(int argc, char** argv) {
  if (argc == 3 && std::strcmp(argv[1], "media") == 0) {
    return mw::WriteWorkingFolderMedia(QString::fromLocal8Bit(argv[2])) ? 0 : 1;
  }
  std::fprintf(stderr, "usage: make_media media <working folder>\n");
  return 2;
}
