// The icons that a desktop shows: the program's, and that of level archives, in the sizes of its
// theme.
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

#include "assets/media_files.h"
#include "assets/picture_file.h"

namespace mw {
namespace {

constexpr int kIconSizes[] = {16, 22, 24, 32, 48, 64, 128, 256};

bool WriteIcon(QSvgRenderer& drawing, int size, const QString& folder, const QString& file) {
  QImage icon(size, size, QImage::Format_ARGB32_Premultiplied);
  icon.fill(Qt::transparent);
  QPainter painter(&icon);
  drawing.render(&painter);
  painter.end();
  return MakeFolder(folder) && WriteImage(folder + u'/' + file, icon);
}

}  // namespace

bool WriteDesktopIcons(const QString& icons, const QString& folder) {
  const struct {
    const char *drawing, *kind, *file;
  } all[] = {{"mapwright.svg", "apps", "mapwright.png"},
             {"level_archive.svg", "mimetypes", "application-x-varnhold-archive.png"}};
  for (const auto& icon : all) {
    QSvgRenderer drawing(icons + u'/' + QLatin1String(icon.drawing));
    if (!drawing.isValid()) {
      std::fprintf(stderr, "%s cannot be drawn\n", icon.drawing);
      return false;
    }
    for (const int size : kIconSizes) {
      const QString place =
          QStringLiteral("%1/%2x%2/%3").arg(folder).arg(size).arg(QLatin1String(icon.kind));
      if (!WriteIcon(drawing, size, place, QLatin1String(icon.file))) return false;
    }
  }
  return true;
}

}  // namespace mw
