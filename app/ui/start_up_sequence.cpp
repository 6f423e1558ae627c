#include "app/ui/start_up_sequence.h"

#include <QApplication>
#include <QTimer>
#include <QWindow>
#include <cstdio>

#include "app/frame.h"
#include "app/level.h"
#include "app/level_file.h"
#include "app/recovery_offer.h"
#include "app/shell.h"
#include "app/start_up.h"
#include "app/ui/frame_loop.h"
#include "app/ui/main_window.h"
#include "app/ui/picture_dialog.h"
#include "app/ui/recovery_timer.h"
#include "app/ui/shell_windows.h"
#include "app/ui/view_context_check.h"
#include "app/ui/view_widget.h"
#include "core/editor_state.h"
#include "core/hooks.h"
#include "data/archive.h"
#include "data/textures.h"
#include "data/ui/mod_dialogs.h"
#include "platform/gl_context.h"
#include "platform/prompts.h"
#include "platform/single_instance.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr int kExitCodeWithoutGl = 1, kExitCodeNotOpened = 1;

// Dialogs are centred over the window, so it must have its final place before the first of them
// opens.
void WaitUntilMaximized(const MainWindow& window) {
  constexpr int kPatience = 1000;  // milliseconds; some desktops do not maximise
  QTimer patience;
  patience.setSingleShot(true);
  patience.start(kPatience);
  const QSize firstSize = window.size();
  while (patience.isActive() &&
         (!window.windowHandle()->isExposed() || window.size() == firstSize)) {
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
  }
}

// The view's GL context comes with its first showing.
void ShowMainWindow(MainWindow& window) {
  window.showMaximized();
  WaitUntilMaximized(window);
  if (MakeViewContextCurrent()) CreateViewObjects();
  window.view()->setFocus();
  hooks.invalidateMiniMap();
}

void LoadDefaults() {
  SetInitialValues();
  hooks.invalidateMiniMap();
  LoadTextureSet("TextureSets/Default");
  SendStartCommands();
  shell.setLevelOpen(false);
  CentreCamera();
  shell.renderFrameNow();  // no more frames come until the first level is there
}

void ShutDown() {
  CloseLevelArchive();
  archives.Clear();
  if (MakeViewContextCurrent()) DestroyViewObjects();
}

// A second start ends without a word, but not with a level that somebody waits for.
int EndSecondStart(const std::string& level) {
  if (level.empty()) return 0;
  std::fprintf(stderr, "mapwright: Mapwright runs already; %s was not opened.\n", level.c_str());
  ShowPrompt("Mapwright runs already. This level was not opened:\n\n" + level +
                 "\n\nDrop it onto Mapwright's window, or use File > Open Level there.",
             "Mapwright", PromptButtons::Ok, PromptIcon::Information);
  return kExitCodeNotOpened;
}

// True when a level is open: recovered work, the one that was asked for, or what the user chooses.
bool OpenFirstLevel(const std::string& level) {
  const bool recovered = OfferRecovery();
  if (!level.empty() && OpenLevelFile(level)) return true;
  return recovered || RunWelcomeLoop();
}

int RunInWindow(MainWindow& window, FrameLoop& frames, const std::string& level) {
  ShowMainWindow(window);
  if (!editor.viewReady) return kExitCodeWithoutGl;
  if (!window.isVisible()) return 0;  // closed as soon as it was there
  // Its archive tells the mod.
  if (level.empty() ? !ListMods(&window) : !FindModsAtStart()) return 0;
  InitGrid();
  if (!LoadSharedTextures()) return kExitCodeWithoutGl;
  LoadDefaults();
  if (!OpenFirstLevel(level)) return 0;
  const RecoveryTimer recoveryTimer;
  frames.Start();
  return QApplication::exec();
}

}  // namespace

int RunEditor(const PlatformConnections& platform, const std::string& level) {
  ReadInstalledVersion();
  if (!ClaimSingleInstance("Mapwright")) return EndSecondStart(level);
  // Dialogs come and go before and beside the main window; the program ends with Exit only.
  QApplication::setQuitOnLastWindowClosed(false);
  if (!LoadPlugins()) return 0;
  SplashDialog(nullptr).exec();
  if (!CheckViewContext()) return kExitCodeWithoutGl;

  MainWindow window;
  platform.useStatusLabels(window.progressLabel(), window.frameRateLabel(), window.readingLabel());
  ViewWidget* const view = window.view();
  platform.useViewContext(view, [view] { return view->MakeCurrent(); });
  FrameLoop frames(&window, [view] { view->RequestFrame(); });
  platform.observeProcessWaits([&frames](bool waiting) { frames.Rest(waiting); });
  ConnectShell(window);
  ConnectHooks();
  const int exitCode = RunInWindow(window, frames, level);
  ShutDown();
  DisconnectShell();
  platform.observeProcessWaits([](bool) {});
  UnloadPlugins();
  return exitCode;
}

}  // namespace mw
