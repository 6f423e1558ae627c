// The icons that a desktop shows: the program's, and that of level archives, in the sizes of its
// theme.
#include <QBuffer>
#include <QDataStream>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>
#include <iterator>

#include "assets/media_files.h"
#include "assets/picture_file.h"
#include "resources/drawn_icons.h"

namespace mw {
namespace {

constexpr int kIconSizes[] = {16, 22, 24, 32, 48, 64, 128, 256};

QImage Drawn(QSvgRenderer& drawing, int size) {
  QImage icon(size, size, QImage::Format_ARGB32_Premultiplied);
  icon.fill(Qt::transparent);
  QPainter painter(&icon);
  drawing.render(&painter);
  return icon;
}

bool WriteIcon(QSvgRenderer& drawing, int size, const QString& folder, const QString& file) {
  return MakeFolder(folder) && WriteImage(folder + u'/' + file, Drawn(drawing, size));
}

bool IsDrawing(const QSvgRenderer& drawing, const QString& file) {
  if (!drawing.isValid()) std::fprintf(stderr, "%s cannot be drawn\n", qPrintable(file));
  return drawing.isValid();
}

// A file of icons as Windows has it, which holds PNG pictures.
QByteArray IconFile(QSvgRenderer& drawing) {
  constexpr quint16 kIcons = 1, kPlanes = 1, kBits = 32;
  QByteArray head, pictures;
  QDataStream out(&head, QIODevice::WriteOnly);
  out.setByteOrder(QDataStream::LittleEndian);
  out << quint16{0} << kIcons << static_cast<quint16>(std::size(kDrawnIconSizes));
  constexpr qsizetype kHead = 6, kEntry = 16;
  for (const int size : kDrawnIconSizes) {
    QByteArray picture;
    QBuffer buffer(&picture);
    buffer.open(QIODevice::WriteOnly);
    Drawn(drawing, size).save(&buffer, "PNG");
    const auto side = static_cast<quint8>(size);  // 256 is written as 0
    out << side << side << quint8{0} << quint8{0} << kPlanes << kBits
        << static_cast<quint32>(picture.size())
        << static_cast<quint32>(kHead + kEntry * qsizetype{std::size(kDrawnIconSizes)} +
                                pictures.size());
    pictures += picture;
  }
  return head + pictures;
}

}  // namespace

bool WriteDesktopIcons(const QString& icons, const QString& folder) {
  const struct {
    const char *drawing, *kind, *file;
  } all[] = {{"mapwright.svg", "apps", "mapwright.png"},
             {"level_archive.svg", "mimetypes", "application-x-varnhold-archive.png"}};
  for (const auto& icon : all) {
    QSvgRenderer drawing(icons + u'/' + QLatin1String(icon.drawing));
    if (!IsDrawing(drawing, QLatin1String(icon.drawing))) return false;
    for (const int size : kIconSizes) {
      const QString place =
          QStringLiteral("%1/%2x%2/%3").arg(folder).arg(size).arg(QLatin1String(icon.kind));
      if (!WriteIcon(drawing, size, place, QLatin1String(icon.file))) return false;
    }
  }
  return true;
}

bool WriteWindowsIcons(const QString& icons, const QString& folder) {
  const QDir all(icons);
  for (const QString& file : all.entryList({QStringLiteral("*.svg")})) {
    QSvgRenderer drawing(all.filePath(file));
    if (!IsDrawing(drawing, file)) return false;
    for (const int size : kDrawnIconSizes) {
      const QString name = QFileInfo(file).baseName() + QStringLiteral("-%1.png").arg(size);
      if (!WriteIcon(drawing, size, folder + QStringLiteral("/icons"), name)) return false;
    }
  }
  QSvgRenderer program(all.filePath(QStringLiteral("mapwright.svg")));
  return WriteBytes(folder + QStringLiteral("/mapwright.ico"), IconFile(program));
}

}  // namespace mw
