#include "resources/pictures.h"

#include <QFile>

#include "resources/drawn_icons.h"

namespace mw {

QIcon Icon(const QString& name) {
  const QString path = QStringLiteral(":/icons/%1.svg").arg(name);
  if (QFile::exists(path)) return QIcon(path);
  QIcon icon;  // where it is built in as pictures
  for (const int size : kDrawnIconSizes) {
    const QString picture = QStringLiteral(":/icons/%1-%2.png").arg(name).arg(size);
    if (QFile::exists(picture)) icon.addFile(picture);
  }
  return icon;
}

QPixmap SplashPicture() { return QPixmap(QStringLiteral(":/pictures/splash.png")); }

QPixmap CreditsPicture() { return QPixmap(QStringLiteral(":/pictures/credits.png")); }

}  // namespace mw
