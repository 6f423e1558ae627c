#include "platform/single_instance.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QStandardPaths>
#include <QSysInfo>
#include <memory>

#include "platform/qt/desktop.h"

namespace mw {
namespace {

// What tells the desktop sessions of one user apart: the display that the windows appear on, or the
// name of a Windows session.
QByteArray SessionKey() {
  const QByteArray session =
      qgetenv("WAYLAND_DISPLAY") + '|' + qgetenv("DISPLAY") + '|' + qgetenv("SESSIONNAME");
  return QCryptographicHash::hash(session, QCryptographicHash::Sha1).toHex().left(12);
}

}  // namespace

bool ClaimSingleInstance(std::string_view name) {
  const QDir folder(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
  const QString file = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())) + '-' +
                       SessionKey() + ".lock";
  auto& lock = desktop.instanceLock;
  lock = std::make_unique<QLockFile>(folder.filePath(file));
  lock->setStaleLockTime(0);
  // Where no lock can be written nobody can hold one.
  if (lock->tryLock(0) || lock->error() != QLockFile::LockFailedError) return true;
  // A killed program has left its lock, and the number that stands there is this one's now. Were
  // the lock held, the system would not let it go.
  qint64 holder = 0;
  QString host;
  if (!lock->getLockInfo(&holder, &host, nullptr)) return false;
  // Windows writes it with capital letters at times.
  const bool isOwnMachine = host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0;
  return isOwnMachine && holder == QCoreApplication::applicationPid() &&
         lock->removeStaleLockFile() && lock->tryLock(0);
}

}  // namespace mw
