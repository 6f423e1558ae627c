// The media as the editor finds them: every picture there with its bytes, grounds that tile, and
// resources that a program can load.
#include <QDir>
#include <QFile>
#include <QImage>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>

#include "assets/ground.h"
#include "assets/landscape.h"
#include "resources/pictures.h"
#include "support/golden.h"

namespace mw {
namespace {

QString Work(const QString& path) { return QStringLiteral(MAPWRIGHT_WORK "/") + path; }

int Difference(QRgb a, QRgb b) {
  return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
         std::abs(qBlue(a) - qBlue(b));
}

// Mean difference between two neighbouring columns; the last and the first count as neighbours.
double ColumnStep(const QImage& image, int x) {
  const int next = (x + 1) % image.width();
  double sum = 0;
  for (int y = 0; y < image.height(); ++y)
    sum += Difference(image.pixel(x, y), image.pixel(next, y));
  return sum / image.height();
}

// The seam must not stand out from the steps that occur inside the picture.
void ExpectTiles(const QString& path, int side) {
  const QImage upright(Work(path));
  ASSERT_EQ(upright.size(), QSize(side, side)) << path.toStdString();
  for (const QImage& image : {upright, upright.transformed(QTransform().rotate(90))}) {
    double largest = 0;
    for (int x = 0; x < side - 1; ++x) largest = std::max(largest, ColumnStep(image, x));
    EXPECT_LE(ColumnStep(image, side - 1), largest) << path.toStdString();
  }
}

TEST(Media, EveryGroundTiles) {
  for (const GroundKind& kind : kGroundKinds) {
    const QString file = QStringLiteral("%1.bmp").arg(kind.key);
    ExpectTiles("media/mat_" + file, 256);
    for (const char* set : {"TextureSets/Default/", "TextureSets/Winter/"}) {
      ExpectTiles(set + file, 512);
    }
  }
  ExpectTiles("media/water.bmp", 256);
  ExpectTiles("TextureSets/Default/detail.bmp", 512);
}

std::uint32_t Checksum(const QByteArray& bytes) {
  std::uint32_t sum = 0;
  for (const char byte : bytes) sum = (sum ^ static_cast<unsigned char>(byte)) * 16777619;
  return sum;
}

QByteArray BytesOf(const Picture& picture) {
  QByteArray bytes;
  for (const Colour& colour : picture.pixels) {
    for (const float part : {colour.r, colour.g, colour.b})
      bytes += static_cast<char>(std::lround(255 * Clamp01(part)));
  }
  return bytes;
}

// They are the same on every machine: names, sizes and checksums, and what the sets name; and the
// scenes of the program's own pictures.
TEST(Media, EveryFileHasItsBytes) {
  QByteArray told;
  for (const char* folder : {"media", "TextureSets/Default", "TextureSets/Winter"}) {
    for (const QFileInfo& info : QDir(Work(folder)).entryInfoList(QDir::Files, QDir::Name)) {
      QFile file(info.filePath());
      ASSERT_TRUE(file.open(QIODevice::ReadOnly));
      told += QByteArray(folder) + "/" + info.fileName().toUtf8() + " " +
              QByteArray::number(info.size()) + " " +
              QByteArray::number(Checksum(file.readAll()), 16) + "\n";
    }
    QFile index(Work(folder) + "/index.dat");
    if (index.open(QIODevice::ReadOnly)) told += index.readAll();
  }
  for (const Picture& scene : {PaintSplashLandscape(160, 100), PaintEarthLayers(90, 160)})
    told += "scene " + QByteArray::number(Checksum(BytesOf(scene)), 16) + "\n";
  ExpectGolden("assets/media.txt", std::string_view(told.data(), std::size_t(told.size())));
}

TEST(Resources, EveryIconDrawsSomethingAtSixteenPixels) {
  const QStringList icons = QDir(QStringLiteral(":/icons")).entryList();
  EXPECT_GE(icons.size(), 48);
  for (const QString& file : icons) {
    const QImage image = Icon(QString(file).remove(".svg")).pixmap(16, 16).toImage();
    int drawn = 0;
    for (int i = 0; i < image.width() * image.height(); ++i) {
      drawn += qAlpha(image.pixel(i % image.width(), i / image.width())) > 128;
    }
    EXPECT_GE(drawn, 20) << file.toStdString();
  }
  EXPECT_TRUE(Icon("no_such_icon").isNull());
  EXPECT_EQ(QImage(":/pictures/splash@2x.png").size(), 2 * QImage(":/pictures/splash.png").size());
}

}  // namespace
}  // namespace mw
