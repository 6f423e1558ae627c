#include "platform/processes.h"

#include <QDesktopServices>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>
#include <array>
#include <csignal>
#include <memory>
#include <unistd.h>
#include <utility>

#include "platform/disk.h"
#include "platform/file.h"
#include "platform/qt/box_owner.h"
#include "platform/qt/desktop.h"
#include "platform/qt/input_lock.h"
#include "platform/qt/process_wait.h"
#include "platform/qt/process_window.h"
#include "platform/qt/view_context.h"

namespace mw {
namespace {

QString FromPath(const std::filesystem::path& path) {
  return QString::fromStdString(path.string());
}

QString FromUtf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

enum class ProgramKind { Native, Windows, None };

// By the first bytes of the file: an ELF program, a script that names its interpreter, or a program
// for Windows.
ProgramKind KindOf(const std::filesystem::path& path) {
  File file;
  std::array<std::uint8_t, 4> start{};
  if (!file.Open(path, FileAccess::Read)) return ProgramKind::None;
  file.ReadAt(0, start);  // a shorter file leaves zeros
  if (start[0] == 0x7F && start[1] == 'E' && start[2] == 'L' && start[3] == 'F') {
    return ProgramKind::Native;
  }
  if (start[0] == '#' && start[1] == '!') return ProgramKind::Native;
  if (start[0] == 'M' && start[1] == 'Z') return ProgramKind::Windows;
  return ProgramKind::None;
}

// Gives the process its program, the first of the words, and the others as its arguments. A program
// for Windows is run by Wine. False when there is nothing that could be started.
bool SetProgram(QProcess& process, QStringList words) {
  if (words.isEmpty()) return false;
  const std::filesystem::path path = NativePath(words.takeFirst().toStdString());
  switch (KindOf(path)) {
    case ProgramKind::Native:
      process.setProgram(FromPath(path));
      break;
    case ProgramKind::Windows: {
      const QString wine = QStandardPaths::findExecutable("wine");
      if (wine.isEmpty()) return false;
      process.setProgram(wine);
      words.prepend(FromPath(path));
      break;
    }
    case ProgramKind::None:
      return false;
  }
  process.setArguments(words);
  return true;
}

using ProcessPointer = std::unique_ptr<QProcess>;

// A process that is started and may have failed to. Null when there is nothing to start.
ProcessPointer Start(std::string_view commandLine, std::string_view folder) {
  auto process = std::make_unique<QProcess>();
  if (!SetProgram(*process, QProcess::splitCommand(FromUtf8(commandLine)))) return nullptr;
  process->setWorkingDirectory(FromPath(NativePath(folder)));
  process->setProcessChannelMode(QProcess::ForwardedChannels);
  // It leads a group of its own, so that what it starts can be ended with it.
  process->setChildProcessModifier([] { setpgid(0, 0); });
  process->start(QIODevice::ReadOnly);
  return process;
}

// Returns when the process has ended; false when it could not be started.
bool WaitForEnd(ProcessPointer process) {
  QEventLoop wait;
  QObject::connect(process.get(), &QProcess::finished, &wait, &QEventLoop::quit);
  QObject::connect(process.get(), &QProcess::errorOccurred, &wait,
                   [&](QProcess::ProcessError error) {
                     if (error == QProcess::FailedToStart) wait.quit();
                   });
  // What could not be started says so already, or from the loop.
  if (process->state() != QProcess::NotRunning) {
    desktop.processWaitObserver(true);
    wait.exec();
    desktop.processWaitObserver(false);
  }
  if (process->error() == QProcess::FailedToStart) return false;
  // The program ends while the process runs on: its object must not take it along.
  if (process->state() != QProcess::NotRunning) (void)process.release();
  return true;
}

// Ends all processes of a group: asks them to, and does not wait long for an answer.
class GroupEnd {
 public:
  explicit GroupEnd(qint64 group) : group_(static_cast<pid_t>(group)) {
    insist_.setSingleShot(true);
    QObject::connect(&insist_, &QTimer::timeout, [this] { Send(SIGKILL); });
  }
  // When the first of them has ended, nothing is left for the others to do.
  ~GroupEnd() {
    if (asked_) Send(SIGKILL);
  }
  void Ask() {
    asked_ = true;
    Send(SIGTERM);
    insist_.start(kPatience);
  }
  bool IsAsked() const { return asked_; }

 private:
  static constexpr int kPatience = 2000;  // milliseconds

  void Send(int signal) const {
    if (group_ > 0) kill(-group_, signal);  // 0 would be this program's own group
  }

  pid_t group_;
  QTimer insist_;
  bool asked_ = false;
};

}  // namespace

void ObserveProcessWaits(ProcessWaitObserver observer) {
  desktop.processWaitObserver = std::move(observer);
}

bool RunProcessAndWait(std::string_view commandLine, std::string_view folder) {
  const ViewContextKeeper keeper;
  ProcessPointer process = Start(commandLine, folder);
  return process && WaitForEnd(std::move(process));
}

ProcessEnd RunCancellableProcess(std::string_view commandLine, std::string_view folder,
                                 std::string_view title, std::string_view activity) {
  const ViewContextKeeper keeper;
  ProcessPointer process = Start(commandLine, folder);
  if (!process || process->error() == QProcess::FailedToStart) return ProcessEnd::NotStarted;
  GroupEnd end(process->processId());
  ProcessWindow window(BoxOwner(), FromUtf8(title), FromUtf8(activity), [&end] { end.Ask(); });
  const InputLock lock(&window);
  window.show();
  if (!WaitForEnd(std::move(process))) return ProcessEnd::NotStarted;
  return end.IsAsked() ? ProcessEnd::Cancelled : ProcessEnd::Ended;
}

bool IsInputIgnored() { return InputLock::IsHeld(); }

bool OpenDocument(std::string_view path) {
  const QUrl address(FromUtf8(path));
  if (address.scheme() == "http" || address.scheme() == "https") {
    return QDesktopServices::openUrl(address);
  }
  const QFileInfo file(FromPath(NativePath(path)));
  return file.isFile() && QDesktopServices::openUrl(QUrl::fromLocalFile(file.absoluteFilePath()));
}

}  // namespace mw
