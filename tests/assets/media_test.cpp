// The media as the editor finds them: every picture there with its size,
// grounds that tile, a sky whose faces meet, glyphs that can be told apart, and
// resources that a program can load.
#include <QDir>
#include <QFile>
#include <QImage>
#include <cstdlib>
#include <gtest/gtest.h>

#include "assets/ground.h"
#include "assets/sky.h"
#include "resources/pictures.h"

namespace mw {
namespace {

QString Work(const QString& path) { return QStringLiteral(MAPWRIGHT_WORK "/") + path; }

const char* const kSets[] = {"Default", "Winter"};

QString Set(const QString& file, const QString& set = kSets[0]) {
  return Work(QStringLiteral("TextureSets/%1/%2").arg(set, file));
}

QImage Load(const QString& path) {
  const QImage image(path);
  EXPECT_FALSE(image.isNull()) << path.toStdString();
  return image.convertToFormat(QImage::Format_RGB888);
}

int Difference(QRgb a, QRgb b) {
  return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
         std::abs(qBlue(a) - qBlue(b));
}

// Mean difference between two neighbouring columns; the last and the first
// count as neighbours.
double ColumnStep(const QImage& image, int x) {
  const int next = (x + 1) % image.width();
  double sum = 0;
  for (int y = 0; y < image.height(); ++y)
    sum += Difference(image.pixel(x, y), image.pixel(next, y));
  return sum / image.height();
}

// The seam must not stand out from the steps that occur inside the picture.
void ExpectTiles(const QString& path, int side) {
  const QImage upright = Load(path);
  ASSERT_EQ(upright.size(), QSize(side, side)) << path.toStdString();
  for (const QImage& image : {upright, upright.transformed(QTransform().rotate(90))}) {
    double largest = 0;
    for (int x = 0; x < side - 1; ++x) largest = std::max(largest, ColumnStep(image, x));
    EXPECT_LE(ColumnStep(image, side - 1), largest) << path.toStdString();
  }
}

// Mean brightness, 0 ... 255.
double Brightness(const QImage& image) {
  double sum = 0;
  for (int k = 0; k < image.width() * image.height(); ++k) {
    sum += qGray(image.pixel(k % image.width(), k / image.width()));
  }
  return sum / (image.width() * image.height());
}

TEST(Media, EveryGroundTilesAndHasSnowInWinter) {
  for (const GroundKind& kind : kGroundKinds) {
    const QString file = QStringLiteral("%1.bmp").arg(kind.key);
    ExpectTiles(Work("media/mat_" + file), 256);
    for (const char* set : kSets) ExpectTiles(Set(file, set), 512);
    EXPECT_GT(Brightness(Load(Set(file, "Winter"))), Brightness(Load(Set(file))) + 10) << kind.key;
  }
  ExpectTiles(Work("media/water.bmp"), 256);
  ExpectTiles(Set("detail.bmp"), 512);
}

class TextureSetTest : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Media, TextureSetTest, testing::ValuesIn(kSets));

TEST_P(TextureSetTest, NamesOnlyFilesThatExistAndPalettesAreWhole) {
  QFile index(Set("index.dat", GetParam()));
  ASSERT_TRUE(index.open(QIODevice::ReadOnly));
  int lines = 0;
  for (; !index.atEnd(); ++lines) {
    const QByteArray line = index.readLine();
    ASSERT_TRUE(line.endsWith('\n') && !line.contains('\r')) << line.toStdString();
    const QByteArray file = line.trimmed().split('=').last().split(',').last();
    EXPECT_LE(file.size(), 31);
    EXPECT_TRUE(QFile::exists(Set(file, GetParam()))) << line.toStdString();
  }
  EXPECT_EQ(lines, 16 + 6 + 3);
  for (const char* name : {"terrain.pal", "object.pal"}) {
    QFile file(Set(name, GetParam()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    ASSERT_EQ(bytes.size(), 24 + 1024) << name;
    EXPECT_TRUE(bytes.startsWith("RIFF")) << name;
    EXPECT_LT(static_cast<unsigned char>(bytes[24]), static_cast<unsigned char>(bytes[24 + 1020]));
  }
}

TEST(Media, GlyphsDifferAndLeaveGroundFree) {
  const QImage font = Load(Work("media/igmfont.bmp"));
  ASSERT_EQ(font.size(), QSize(128, 9));
  for (int glyph = 0; glyph < 16; ++glyph) {
    const QImage image = font.copy(8 * glyph, 0, 8, 9);
    bool clear = false, white = false;
    for (int i = 0; i < 72; ++i) {
      clear |= image.pixel(i % 8, i / 8) == qRgb(255, 0, 0);
      white |= image.pixel(i % 8, i / 8) == qRgb(255, 255, 255);
    }
    EXPECT_TRUE(clear && white) << "glyph " << glyph;
    for (int other = 0; other < glyph; ++other) {
      EXPECT_NE(image, font.copy(8 * other, 0, 8, 9)) << glyph << " and " << other;
    }
  }
}

TEST(Media, SidesOfTheSkyMeet) {
  // Turning right from south: each picture's right edge is the next one's left
  // edge.
  const auto face = [](int k) { return Load(Set(QStringLiteral("env_0%1.bmp").arg(k))); };
  for (int k = 1; k <= 4; ++k) {
    const QImage left = face(k), right = face(k % 4 + 1);
    ASSERT_EQ(left.size(), QSize(kEnvironmentSide, kEnvironmentSide));
    double sum = 0;
    for (int y = 0; y < kEnvironmentSide; ++y) {
      sum += Difference(left.pixel(kEnvironmentSide - 1, y), right.pixel(0, y));
    }
    EXPECT_LT(sum / kEnvironmentSide, 24) << "right of " << k;
  }
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
}

}  // namespace
}  // namespace mw
