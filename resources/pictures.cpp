#include "resources/pictures.h"

#include <QFile>

namespace mw {

QIcon Icon(const QString& name) {
  const QString path = QStringLiteral(":/icons/%1.svg").arg(name);
  return QFile::exists(path) ? QIcon(path) : QIcon();
}

QPixmap SplashPicture() { return QPixmap(QStringLiteral(":/pictures/splash.png")); }

QPixmap CreditsPicture() { return QPixmap(QStringLiteral(":/pictures/credits.png")); }

}  // namespace mw
