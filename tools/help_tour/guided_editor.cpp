#include "tools/help_tour/guided_editor.h"

#include <QApplication>
#include <QThread>
#include <clocale>
#include <cstdio>

#include "app/ui/start_up_sequence.h"
#include "app/ui/view_widget.h"
#include "platform/qt/process_wait.h"
#include "platform/qt/status_labels.h"
#include "platform/qt/view_context.h"
#include "resources/pictures.h"

namespace mw::help {

void PrepareApplication() { QSurfaceFormat::setDefaultFormat(ViewWidget::ContextFormat()); }

int RunGuidedEditor(QThread& guide) {
  constexpr unsigned long kPatience = 1000;  // milliseconds
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setApplicationName("Mapwright");
  QApplication::setWindowIcon(Icon("mapwright"));
  guide.start();
  const int exitCode = RunEditor({UseStatusLabels, UseViewContext, ObserveProcessWaits}, {});
  if (guide.isFinished() || guide.wait(kPatience)) return exitCode;
  std::fprintf(stderr, "The editor ended before its guide.\n");
  std::_Exit(EXIT_FAILURE);
}

}  // namespace mw::help
