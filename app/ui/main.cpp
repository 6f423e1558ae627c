// The program's entry point.
#include <QApplication>
#include <clocale>

#include "app/ui/start_up_sequence.h"
#include "app/ui/view_widget.h"
#include "platform/qt/process_wait.h"
#include "platform/qt/status_labels.h"
#include "platform/qt/view_context.h"
#include "resources/pictures.h"

int main(int argc, char** argv) {
  QSurfaceFormat::setDefaultFormat(mw::ViewWidget::ContextFormat());
  QApplication application(argc, argv);
  // Numbers in the game's files have a decimal point in every country.
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setApplicationName("Mapwright");
  QApplication::setWindowIcon(mw::Icon("mapwright"));
  return mw::RunEditor({mw::UseStatusLabels, mw::UseViewContext, mw::ObserveProcessWaits});
}
