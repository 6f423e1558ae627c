#include "platform/processes.h"

#include <QDesktopServices>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <array>
#include <memory>
#include <optional>
#include <utility>

#include "platform/disk.h"
#include "platform/file.h"
#include "platform/qt/input_lock.h"
#include "platform/qt/process_wait.h"
#include "platform/qt/view_context.h"

namespace mw {
namespace {

ProcessWaitObserver processWaitObserver = [](bool) {};

QString FromPath(const std::filesystem::path& path) {
  return QString::fromStdString(path.string());
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

}  // namespace

void ObserveProcessWaits(ProcessWaitObserver observer) {
  processWaitObserver = std::move(observer);
}

bool RunProcessAndWait(std::string_view commandLine, std::string_view folder,
                       InputDuringWait input) {
  auto process = std::make_unique<QProcess>();
  if (!SetProgram(*process, QProcess::splitCommand(QString::fromUtf8(
                                commandLine.data(), static_cast<qsizetype>(commandLine.size()))))) {
    return false;
  }
  const ViewContextKeeper keeper;
  process->setWorkingDirectory(FromPath(NativePath(folder)));
  process->setProcessChannelMode(QProcess::ForwardedChannels);

  QEventLoop wait;
  QObject::connect(process.get(), &QProcess::finished, &wait, &QEventLoop::quit);
  QObject::connect(process.get(), &QProcess::errorOccurred, &wait,
                   [&](QProcess::ProcessError error) {
                     if (error == QProcess::FailedToStart) wait.quit();
                   });
  process->start(QIODevice::ReadOnly);
  // What could not be started says so during start() or from the loop.
  if (process->error() != QProcess::FailedToStart) {
    std::optional<InputLock> lock;
    if (input == InputDuringWait::Ignored) lock.emplace();
    processWaitObserver(true);
    wait.exec();
    processWaitObserver(false);
  }
  if (process->error() == QProcess::FailedToStart) return false;
  // The program ends while the process runs on: its object must not take it along.
  if (process->state() != QProcess::NotRunning) (void)process.release();
  return true;
}

bool IsInputIgnored() { return InputLock::IsHeld(); }

bool OpenDocument(std::string_view path) {
  const QString given = QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size()));
  const QUrl address(given);
  if (address.scheme() == "http" || address.scheme() == "https") {
    return QDesktopServices::openUrl(address);
  }
  const QFileInfo file(FromPath(NativePath(path)));
  return file.isFile() && QDesktopServices::openUrl(QUrl::fromLocalFile(file.absoluteFilePath()));
}

}  // namespace mw
