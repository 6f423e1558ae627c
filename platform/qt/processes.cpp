#include "platform/processes.h"

#include <QDesktopServices>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>
#include <memory>
#include <utility>

#include "platform/disk.h"
#include "platform/qt/box_owner.h"
#include "platform/qt/child_process.h"
#include "platform/qt/desktop.h"
#include "platform/qt/input_lock.h"
#include "platform/qt/process_wait.h"
#include "platform/qt/process_window.h"

namespace mw {
namespace {

QString FromPath(const std::filesystem::path& path) {
  return QString::fromStdString(path.string());
}

QString FromUtf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Gives the process its program, the first of the words, and the others as its arguments. False
// when there is nothing that could be started.
bool SetProgram(QProcess& process, QStringList words) {
  if (words.isEmpty()) return false;
  const QString path = FromPath(NativePath(words.takeFirst().toStdString()));
  const QString runner = RunnerOf(path);
  if (runner.isEmpty()) return false;
  if (runner != path) words.prepend(path);
  process.setProgram(runner);
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
  LeadGroup(*process);
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

}  // namespace

void ObserveProcessWaits(ProcessWaitObserver observer) {
  desktop.processWaitObserver = std::move(observer);
}

bool RunProcessAndWait(std::string_view commandLine, std::string_view folder) {
  ProcessPointer process = Start(commandLine, folder);
  return process && WaitForEnd(std::move(process));
}

ProcessEnd RunCancellableProcess(std::string_view commandLine, std::string_view folder,
                                 std::string_view title, std::string_view activity) {
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
  const QFileInfo file(FromPath(ReadablePath(path)));
  return file.isFile() && QDesktopServices::openUrl(QUrl::fromLocalFile(file.absoluteFilePath()));
}

}  // namespace mw
