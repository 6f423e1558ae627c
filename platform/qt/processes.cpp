#include "platform/processes.h"

#include <QDesktopServices>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>
#include <memory>
#include <utility>

#include "platform/disk.h"
#include "platform/qt/process_wait.h"
#include "platform/qt/view_context.h"

namespace mw {
namespace {

ProcessWaitObserver processWaitObserver = [](bool) {};

QString FromPath(const std::filesystem::path& path) {
  return QString::fromStdString(path.string());
}

}  // namespace

void ObserveProcessWaits(ProcessWaitObserver observer) {
  processWaitObserver = std::move(observer);
}

bool RunProcessAndWait(std::string_view commandLine, std::string_view folder) {
  QStringList words = QProcess::splitCommand(
      QString::fromUtf8(commandLine.data(), static_cast<qsizetype>(commandLine.size())));
  if (words.isEmpty()) return false;
  const ViewContextKeeper keeper;
  auto process = std::make_unique<QProcess>();
  process->setProgram(FromPath(NativePath(words.takeFirst().toStdString())));
  process->setArguments(words);
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
    processWaitObserver(true);
    wait.exec();
    processWaitObserver(false);
  }
  if (process->error() == QProcess::FailedToStart) return false;
  // The program ends while the process runs on: its object must not take it along.
  if (process->state() != QProcess::NotRunning) (void)process.release();
  return true;
}

void OpenDocument(std::string_view path) {
  const QString given = QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size()));
  const QUrl address(given);
  const bool onTheWeb = address.scheme() == "http" || address.scheme() == "https";
  QDesktopServices::openUrl(
      onTheWeb ? address
               : QUrl::fromLocalFile(QFileInfo(FromPath(NativePath(path))).absoluteFilePath()));
}

}  // namespace mw
