#include "assets/picture_file.h"

#include <QDir>
#include <QSaveFile>
#include <cstdio>

namespace mw {
namespace {

uchar Byte(float value) { return static_cast<uchar>(Clamp01(value) * 255 + 0.5f); }

bool Report(const QString& path) {
  std::fprintf(stderr, "make_media: cannot write %s\n", qPrintable(path));
  return false;
}

}  // namespace

QImage ToImage(const Picture& picture) {
  QImage image(picture.width, picture.height, QImage::Format_RGB888);
  for (int y = 0; y < picture.height; ++y) {
    uchar* out = image.scanLine(y);
    for (int x = 0; x < picture.width; ++x) {
      const Colour colour = picture.At(x, y);
      *out++ = Byte(colour.r);
      *out++ = Byte(colour.g);
      *out++ = Byte(colour.b);
    }
  }
  return image;
}

bool WriteImage(const QString& path, const QImage& image) {
  return image.save(path) || Report(path);
}

bool WriteBytes(const QString& path, const QByteArray& bytes) {
  QSaveFile file(path);
  const bool written =
      file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
  return written || Report(path);
}

bool MakeFolder(const QString& path) { return QDir().mkpath(path) || Report(path); }

}  // namespace mw
