#include "platform/single_instance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QStandardPaths>
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
  return lock->tryLock(0) || lock->error() != QLockFile::LockFailedError;
}

}  // namespace mw
