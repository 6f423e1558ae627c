// make_media writes the pictures that the editor needs at run time and those that are built into
// it.
#include <QGuiApplication>
#include <QString>
#include <cstdio>
#include <cstring>

#include "assets/media_files.h"

int main(int argc, char** argv) {
  const auto argument = [&](int i) { return QString::fromLocal8Bit(argv[i]); };
  if (argc == 3 && std::strcmp(argv[1], "media") == 0) {
    return mw::WriteWorkingFolderMedia(argument(2)) ? 0 : 1;
  }
  if (argc == 4 && std::strcmp(argv[1], "pictures") == 0) {
    const QGuiApplication application(argc, argv);
    return mw::WriteProgramPictures(argument(2), argument(3)) ? 0 : 1;
  }
  if (argc == 4 && std::strcmp(argv[1], "icons") == 0) {
    const QGuiApplication application(argc, argv);
    return mw::WriteDesktopIcons(argument(2), argument(3)) ? 0 : 1;
  }
  if (argc == 4 && std::strcmp(argv[1], "windows") == 0) {
    const QGuiApplication application(argc, argv);
    return mw::WriteWindowsIcons(argument(2), argument(3)) ? 0 : 1;
  }
  std::fprintf(stderr,
               "usage: make_media media <working folder>\n"
               "       make_media pictures <icon folder> <output folder>\n"
               "       make_media icons <icon folder> <output folder>\n"
               "       make_media windows <icon folder> <output folder>\n");
  return 2;
}
