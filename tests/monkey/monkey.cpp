// monkey [--seed S] [--events N] [--level NAME] [--patience SECONDS]: starts the editor in the
// current folder, a working folder with a sample game that may be spoilt, opens a level and sends
// the windows random events. After every 500 it looks whether anything is wrong; at the end it
// saves the level, opens it again and compares. The same seed makes the same choices, as far as the
// windows are the same. Each event is a line of the file events.log. It ends with 0 when nothing
// was wrong.
//
// Left out: the Exit command; what a file dialog does to files (renaming, deleting, new folders);
// documents are not opened by other programs.
#include <QApplication>
#include <QCommandLineParser>
#include <QDesktopServices>
#include <QFile>
#include <QMainWindow>
#include <QTextStream>
#include <QWindow>
#include <csignal>
#include <pthread.h>
#include <set>
#include <unistd.h>

#include "app/level.h"
#include "core/editor_state.h"
#include "core/game_random.h"
#include "data/mods.h"
#include "platform/processes.h"
#include "tests/monkey/acts.h"
#include "tests/monkey/editor_steps.h"
#include "tests/monkey/inputs.h"
#include "tests/monkey/invariants.h"
#include "tests/monkey/level_state.h"
#include "tools/help_tour/gui.h"
#include "tools/help_tour/guided_editor.h"
#include "tools/help_tour/hands.h"

// Crashes and hangs show where they happened.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() { return "handle_abort=1:detect_leaks=0"; }

namespace mw::monkey {
namespace {

constexpr int kCheckEvery = 500;
constexpr const char* kModFile = "varnhold.cfg";

pthread_t windows;  // their thread

void StopWindows(int) {
  constexpr std::string_view kText = "An event took too long.\n";
  if (write(STDERR_FILENO, kText.data(), kText.size()) < 0) return;
  pthread_kill(windows, SIGABRT);  // so that its stack is what a debugger or sanitizer shows
}

// Ends the program unless it is called again within its patience.
class Watchdog {
 public:
  // On the thread of the windows.
  explicit Watchdog(int seconds) : seconds_(static_cast<unsigned>(seconds)) {
    windows = pthread_self();
    std::signal(SIGALRM, StopWindows);
    Pat();
  }
  ~Watchdog() { alarm(0); }
  void Pat() const { alarm(seconds_); }

 private:
  const unsigned seconds_;
};

struct Order {
  std::uint64_t seed = 1;
  int events = 400;
  QString level = "Harbour_Point";
};

class Monkey : public QThread {
 public:
  Monkey(const Order& order, const Watchdog& watchdog)
      : order_(order), dice_(order.seed), watchdog_(watchdog), log_("events.log") {}
  bool Failed() const { return failed_; }

 protected:
  void run() override;

 private:
  void Play();
  void DoAct(const Act& act);
  void AwaitTracer();
  void Settle();
  void Check();
  void RepairMod();
  void SaveAndOpenAgain();
  void Log(const QString& line);
  void Fail(const std::vector<std::string>& reasons);

  const Order order_;
  Dice dice_;
  const Watchdog& watchdog_;
  QFile log_;
  QByteArray modFile_, gamePath_;
  int number_ = 0;
  std::set<std::string> told_;
  std::atomic<bool> failed_ = false;
};

void Monkey::run() {
  log_.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
  try {
    StartWithLevel(order_.level);
    Play();
    SaveAndOpenAgain();
    Log("exit");
    ExitByMenu();
  } catch (const std::exception& reason) {
    Fail({reason.what()});
  }
  QTextStream(stdout) << "seed " << order_.seed << ", " << number_
                      << " events: " << (failed_ ? "something was wrong" : "nothing was wrong")
                      << Qt::endl;
  if (failed_) std::_Exit(EXIT_FAILURE);  // some dialog may wait for an answer
}

constexpr unsigned long kPause = 20;  // milliseconds

// What is not on the screen yet cannot be clicked. A dialog of a minimised window never comes
// there.
void AwaitDialogOnScreen() {
  constexpr int kMostPauses = 50;
  const auto isComing = [] {
    const QWidget* const dialog = QApplication::activeModalWidget();
    return dialog && dialog->windowHandle() && !dialog->windowHandle()->isExposed();
  };
  for (int pauses = 0; pauses < kMostPauses && help::OnGui(isComing); ++pauses) {
    QThread::msleep(kPause);
  }
}

void Monkey::Play() {
  QFile mod(kModFile);
  if (mod.open(QIODevice::ReadOnly)) modFile_ = mod.readAll();
  help::OnGui([this] {
    SeedGameRandom(static_cast<std::uint32_t>(order_.seed));
    gamePath_ = modConfig.GamePath.c_str();
  });
  constexpr int kActsOnTracing = 10;  // all in vain
  int inVain = 0;
  while (number_ < order_.events) {
    inVain = help::OnGui(IsInputIgnored) ? inVain + 1 : 0;
    if (inVain > kActsOnTracing) AwaitTracer();
    AwaitDialogOnScreen();
    DoAct(help::OnGui([this] { return NextAct(dice_); }));
    if (++number_ % kCheckEvery == 0 || number_ == order_.events) Check();
  }
}

void Monkey::DoAct(const Act& act) {
  Log(act.text);
  for (const auto& input : act.inputs) help::Send(input);
  watchdog_.Pat();
}

// The windows take no input while the game computes light.
void Monkey::AwaitTracer() {
  constexpr int kMostPauses = 30000;
  for (int pauses = 0; help::OnGui(IsInputIgnored); ++pauses) {
    if (pauses == kMostPauses) throw help::TourError("the game traces without end");
    QThread::msleep(kPause);
    watchdog_.Pat();
  }
}

// What keeps the main window from being in front.
QString InTheWay() {
  const QWidget* const window = help::FindMainWindow();
  const QWidget* const active = QApplication::activeWindow();
  return QString("active is %1; the main window is %2, %3, %4")
      .arg(active ? NameOf(active) + " of '" + active->windowTitle() + "'" : "nothing",
           window->isVisible() ? "shown" : "hidden", window->isMinimized() ? "minimised" : "open",
           window->isEnabled() ? "enabled" : "disabled");
}

bool IsInFront(int attempt) {
  return help::BecomesActive(help::FindMainWindow(), attempt) && help::FindView();
}

// Lets go of everything and leaves every dialog, until the main window is in front.
void Monkey::Settle() {
  constexpr int kMostAttempts = 3000;
  for (int attempt = 0;; ++attempt) {
    AwaitTracer();
    AwaitDialogOnScreen();
    const Act act = help::OnGui([this] { return LeaveAct(dice_); });
    if (!act.inputs.empty()) {
      DoAct(act);
    } else if (help::OnGui([=] { return IsInFront(attempt); })) {
      break;
    } else {
      QThread::msleep(kPause);
    }
    if (attempt == kMostAttempts) throw help::TourError(help::OnGui(InTheWay));
  }
  QWidget* const view = help::OnGui(help::FindView);
  const Target at{view, QPoint(5, 200)};
  for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    help::Send([=] { ReleaseMouse(at, button); });
  }
  for (const int key : {Qt::Key_Control, Qt::Key_Shift}) help::Send([=] { ReleaseKey(key); });
  help::Send([=] { MoveMouse(at); });
  help::WaitForFrames(1);
}

void Monkey::Check() {
  Log("check");
  Settle();
  Fail(help::OnGui([] {
    CheckInvariants();
    constexpr int kMostBoxes = 40, kLongestStay = 120;
    Expect(dialogRecord.boxesInARow < kMostBoxes, "message boxes come without end");
    Expect(dialogRecord.longestStay < kLongestStay,
           "could hardly be left: " + dialogRecord.longestName.toStdString());
    return TakeBroken();
  }));
  RepairMod();
  watchdog_.Pat();
}

// The mod of the sample game can be deleted, and told that its game is elsewhere. A user would make
// it anew; the monkey goes on with it as it was.
void Monkey::RepairMod() {
  QFile mod(kModFile);
  if (mod.open(QIODevice::WriteOnly)) mod.write(modFile_);
  mod.close();
  help::OnGui([this] {
    auto& names = modList.names;
    if (std::ranges::find(names, kSampleMod) == names.end()) {
      if (names.size() == kMaxMods) names.pop_back();
      names.push_back(kSampleMod);
    }
    const bool moved = !(modConfig.GamePath == std::string_view(gamePath_.constData()));
    if (moved && CurrentModName() == kSampleMod) {
      ApplyModSettings(gamePath_.constData(), {});
    }
  });
}

// Not when there is none, and not when its mod was deleted meanwhile.
bool IsLevelToBeFound() {
  return editor.levelLoaded && std::ranges::find(modList.names, LevelMod()) != modList.names.end();
}

void Monkey::SaveAndOpenAgain() {
  Log("save and open again");
  if (!help::OnGui(IsLevelToBeFound)) OpenLevelByMenu(order_.level);
  SaveByMenu();
  watchdog_.Pat();
  const auto level = help::OnGui([] { return QString(modConfig.LevelName.c_str()); });
  const auto mod = help::OnGui([] { return QString::fromStdString(LevelMod()); });
  const LevelState saved = help::OnGui(TakeLevelState);
  if (help::OnGui([] { return editor.levelModified; }))
    Fail({"the level counts as modified after saving"});
  OpenLevelByMenu(level, mod);
  watchdog_.Pat();
  const LevelState read = help::OnGui(TakeLevelState);
  Fail(Differences(saved, read));
  // Opening drops templates that nothing uses any more, and a mod that was made meanwhile has given
  // its name to what the first save wrote. From the second on nothing changes.
  SaveByMenu();
  const LevelState again = help::OnGui(TakeLevelState);
  OpenLevelByMenu(level, mod);
  SaveByMenu();
  watchdog_.Pat();
  Fail(DifferentMembers(again, help::OnGui(TakeLevelState)));
}

void Monkey::Log(const QString& line) {
  log_.write(QString("%1 %2\n").arg(number_).arg(line).toUtf8());
}

void Monkey::Fail(const std::vector<std::string>& reasons) {
  for (const std::string& reason : reasons) {
    failed_ = true;
    if (!told_.insert(reason).second) continue;  // what is wrong may stay so
    Log("WRONG " + QString::fromStdString(reason));
    QTextStream(stderr) << "seed " << order_.seed << ", event " << number_ << ": "
                        << QString::fromStdString(reason) << Qt::endl;
  }
}

}  // namespace
}  // namespace mw::monkey

int main(int argc, char** argv) {
  using namespace mw::monkey;
  mw::help::PrepareApplication();
  QApplication application(argc, argv);
  QCommandLineParser parser;
  parser.addOptions({{"seed", "Of the random events.", "number", "1"},
                     {"events", "How many are sent.", "number", "400"},
                     {"level", "That is opened first.", "name", "Harbour_Point"},
                     {"patience", "For one event.", "seconds", "120"}});
  parser.addHelpOption();
  parser.process(application);
  const Order order{parser.value("seed").toULongLong(), parser.value("events").toInt(),
                    parser.value("level")};

  QObject nowhere;  // where documents go that are opened; it has no such method
  for (const char* scheme : {"file", "http", "https"}) {
    QDesktopServices::setUrlHandler(scheme, &nowhere, "open");
  }
  const Watchdog watchdog(parser.value("patience").toInt());
  Monkey monkey(order, watchdog);
  const int exitCode = mw::help::RunGuidedEditor(monkey);
  return monkey.Failed() ? EXIT_FAILURE : exitCode;
}
