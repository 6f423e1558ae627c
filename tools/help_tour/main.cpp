// help_tour PAGE [PICTURES]: starts the editor in the current folder, does in it what a page of the
// help tells its reader to do, and takes the pictures that the page shows. It ends with 0 when
// every step could be done.
#include <QApplication>
#include <QFileInfo>
#include <cstdio>

#include "tools/help_tour/guided_editor.h"
#include "tools/help_tour/tour.h"

int main(int argc, char** argv) {
  mw::help::PrepareApplication();
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() != 2 && arguments.size() != 3) {
    std::fprintf(stderr, "usage: help_tour PAGE [PICTURES]\n");
    return EXIT_FAILURE;
  }
  QApplication::setCursorFlashTime(0);  // pictures do not depend on a blinking mark
  mw::help::Tour tour(QFileInfo(arguments[1]).absoluteFilePath(),
                      arguments.size() == 3 ? QFileInfo(arguments[2]).absoluteFilePath() : "");
  return mw::help::RunGuidedEditor(tour);
}
