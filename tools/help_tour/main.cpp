// help_tour PAGE [PICTURES]: starts the editor in the current folder, does in it what a page of the
// help tells its reader to do, and takes the pictures that the page shows. It ends with 0 when
// every step could be done.
#include <QApplication>
#include <QFileInfo>
#include <clocale>
#include <cstdio>

#include "app/ui/start_up_sequence.h"
#include "app/ui/view_widget.h"
#include "platform/qt/process_wait.h"
#include "platform/qt/status_labels.h"
#include "platform/qt/view_context.h"
#include "resources/pictures.h"
#include "tools/help_tour/tour.h"

int main(int argc, char** argv) {
  QSurfaceFormat::setDefaultFormat(mw::ViewWidget::ContextFormat());
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() != 2 && arguments.size() != 3) {
    std::fprintf(stderr, "usage: help_tour PAGE [PICTURES]\n");
    return EXIT_FAILURE;
  }
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setApplicationName("Mapwright");
  QApplication::setWindowIcon(mw::Icon("mapwright"));
  QApplication::setCursorFlashTime(0);  // pictures do not depend on a blinking mark

  mw::help::Tour tour(QFileInfo(arguments[1]).absoluteFilePath(),
                      arguments.size() == 3 ? QFileInfo(arguments[2]).absoluteFilePath() : "");
  tour.start();
  const int exitCode =
      mw::RunEditor({mw::UseStatusLabels, mw::UseViewContext, mw::ObserveProcessWaits});
  if (tour.isFinished() || tour.wait(1000)) return exitCode;
  std::fprintf(stderr, "The editor ended before the tour.\n");
  std::_Exit(EXIT_FAILURE);
}
