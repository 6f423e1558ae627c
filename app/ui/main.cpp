// The program's entry point.
#include <QApplication>
#include <clocale>
#include <optional>

#include "app/ui/command_line.h"
#include "app/ui/start_up_sequence.h"
#include "app/ui/view_widget.h"
#include "platform/console.h"
#include "platform/qt/process_wait.h"
#include "platform/qt/status_labels.h"
#include "platform/qt/view_context.h"
#include "resources/pictures.h"

int main(int argc, char** argv) {
  mw::PrintIntoConsole();
  mw::CommandLine words;
  if (const auto exitCode = mw::ReadCommandLine(argc, argv, words)) return *exitCode;
  QSurfaceFormat::setDefaultFormat(mw::ViewWidget::ContextFormat());
  std::optional<mw::DisplayWatch> watch(std::in_place);
  const QApplication application(argc, argv);
  watch.reset();
  if (!mw::EnterWorkingFolder(words)) return 1;
  // Numbers in the game's files have a decimal point in every country.
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setApplicationName("Mapwright");
  QApplication::setWindowIcon(mw::Icon("mapwright"));
  return mw::RunEditor({mw::UseStatusLabels, mw::UseViewContext, mw::ObserveProcessWaits},
                       words.level.toStdString());
}
