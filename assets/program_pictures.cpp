// The pictures that are built into the program: splash and credits, painted scenes with text on
// them.
#include <QFontDatabase>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>
#include <array>
#include <cstdio>

#include "assets/landscape.h"
#include "assets/media_files.h"
#include "assets/picture_file.h"

namespace mw {
namespace {

constexpr int kSplashWidth = 520, kSplashHeight = 316;
constexpr int kCreditsWidth = 258, kCreditsHeight = 1456;

QFont TextFont(int pixels, QFont::Weight weight) {
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(pixels);
  font.setWeight(weight);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

// White text with a soft dark edge, readable on any ground.
void DrawText(QPainter& painter, QPointF baseline, const QFont& font, const QString& text) {
  QPainterPath path;
  path.addText(baseline, font, text);
  const qreal size = font.pixelSize();
  for (const qreal reach : {0.20, 0.13, 0.07}) {
    const QPen edge(QColor(8, 22, 34, 46), size * reach, Qt::SolidLine, Qt::RoundCap,
                    Qt::RoundJoin);
    painter.strokePath(path, edge);
  }
  painter.fillPath(path, Qt::white);
}

void DrawCentred(QPainter& painter, qreal y, const QFont& font, const QString& text) {
  const qreal width = QFontMetricsF(font).horizontalAdvance(text);
  DrawText(painter, {(kCreditsWidth - 2 - width) / 2, y}, font, text);
}

QLinearGradient Fade(qreal fromY, QColor from, qreal toY, QColor to) {
  QLinearGradient gradient(0, fromY, 0, toY);
  gradient.setColorAt(0, from);
  gradient.setColorAt(1, to);
  return gradient;
}

void DrawForegroundHill(QPainter& painter) {
  QPainterPath hill(QPointF(520, 316));
  hill.lineTo(520, 262);
  hill.cubicTo(478, 250, 430, 252, 396, 272);
  hill.cubicTo(368, 288, 330, 302, 292, 316);
  painter.fillPath(hill, Fade(254, QColor(54, 70, 38), 316, QColor(18, 26, 16)));
  // Tufts along the ridge.
  for (int i = 8; i < 96; ++i) {
    const QPointF root = hill.pointAtPercent(0.13 + 0.0052 * i);
    const qreal lean = (i * 7 % 5 - 2) * 1.1, height = 3 + i * 11 % 5;
    painter.setPen(QPen(QColor(62, 80, 42), 1, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(root + QPointF(0, 2), root + QPointF(lean, -height));
  }
}

// A low bunker with its flag on the near shore.
void DrawBunker(QPainter& painter) {
  const QPolygonF walls({{414, 270}, {420, 241}, {492, 239}, {504, 268}});
  QPainterPath outline;
  outline.addPolygon(walls);
  painter.fillPath(outline, Fade(240, QColor(74, 80, 74), 270, QColor(40, 46, 42)));
  painter.fillRect(QRectF(410, 233, 93, 9),
                   Fade(233, QColor(150, 152, 138), 242, QColor(82, 88, 80)));
  painter.fillRect(QRectF(428, 249, 50, 6), QColor(10, 14, 14));
  painter.setPen(QPen(QColor(40, 48, 46), 1.6));
  painter.drawLine(QPointF(488, 233), QPointF(488, 202));
  QPainterPath flag(QPointF(488, 203));
  flag.cubicTo(496, 198, 502, 208, 512, 203);
  flag.lineTo(512, 217);
  flag.cubicTo(502, 222, 496, 212, 488, 217);
  painter.fillPath(flag, Fade(200, QColor(226, 84, 70), 220, QColor(176, 46, 42)));
}

// Twice the size; the plain picture is its half.
QImage SplashAtTwice() {
  QImage image = ToImage(PaintSplashLandscape(2 * kSplashWidth, 2 * kSplashHeight));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(2, 2);
  painter.translate(0, -8);
  DrawBunker(painter);
  painter.translate(0, 8);
  DrawForegroundHill(painter);
  DrawText(painter, {22, 62}, TextFont(46, QFont::Bold), QStringLiteral("Mapwright"));
  DrawText(painter, {25, 86}, TextFont(14, QFont::Normal),
           QStringLiteral("The level editor for Varnhold"));
  DrawText(painter, {22, 300}, TextFont(11, QFont::Normal),
           QStringLiteral("Version " MAPWRIGHT_VERSION "  ·  free software, GPL 3 or later"));
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(16, 34, 48), 2));
  painter.drawRect(QRectF(0, 0, kSplashWidth, kSplashHeight));
  return image;
}

struct CreditLine {
  int y;  // of the base line
  int pixels;
  QFont::Weight weight;
  const char* text;
};

constexpr auto kPlain = QFont::Normal, kStrong = QFont::Bold;
constexpr std::array kCredits{
    CreditLine{124, 30, kStrong, "Mapwright"},
    CreditLine{148, 13, kPlain, "The level editor for Varnhold"},
    CreditLine{168, 11, kPlain, "Version " MAPWRIGHT_VERSION},
    CreditLine{372, 16, kStrong, "Built on"},
    CreditLine{406, 14, kStrong, "Qt"},
    CreditLine{423, 11, kPlain, "windows, pictures and events"},
    CreditLine{456, 14, kStrong, "OpenGL and Mesa"},
    CreditLine{473, 11, kPlain, "the world in three dimensions"},
    CreditLine{528, 14, kStrong, "LZO"},
    CreditLine{545, 11, kPlain, "archives packed small, opened fast"},
    CreditLine{578, 14, kStrong, "stb"},
    CreditLine{595, 11, kPlain, "textures in blocks of four by four"},
    CreditLine{628, 14, kStrong, "CMake, Ninja, GCC, Clang"},
    CreditLine{645, 11, kPlain, "from source to program"},
    CreditLine{720, 16, kStrong, "Kept honest by"},
    CreditLine{754, 14, kStrong, "GoogleTest"},
    CreditLine{771, 11, kPlain, "every fixed fault leaves a test"},
    CreditLine{804, 14, kStrong, "Google Benchmark"},
    CreditLine{821, 11, kPlain, "fast, and measured"},
    CreditLine{880, 16, kStrong, "Painted by code"},
    CreditLine{904, 11, kPlain, "Each blade of grass, each pebble and"},
    CreditLine{920, 11, kPlain, "each cloud is drawn by a program"},
    CreditLine{936, 11, kPlain, "while Mapwright is being built."},
    CreditLine{1068, 16, kStrong, "Thanks"},
    CreditLine{1094, 11, kPlain, "to all who carry and keep the"},
    CreditLine{1110, 11, kPlain, "free software that this stands on,"},
    CreditLine{1126, 11, kPlain, "to everyone who builds a level,"},
    CreditLine{1142, 11, kPlain, "and to everyone who plays it."},
    CreditLine{1204, 11, kPlain, "Mapwright is free software under the"},
    CreditLine{1220, 11, kPlain, "GNU General Public License, version 3"},
    CreditLine{1236, 11, kPlain, "or later, and comes with no warranty."},
    CreditLine{1366, 16, kStrong, "Now shape some ground."},
};

QImage Credits(const QString& icons) {
  QImage image = ToImage(PaintEarthLayers(kCreditsWidth, kCreditsHeight));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  QSvgRenderer(icons + QStringLiteral("/mapwright.svg"))
      .render(&painter, QRectF((kCreditsWidth - 2 - 64) / 2.0, 22, 64, 64));
  for (const CreditLine& line : kCredits) {
    DrawCentred(painter, line.y, TextFont(line.pixels, line.weight), QString::fromUtf8(line.text));
  }
  return image;
}

}  // namespace

bool WriteProgramPictures(const QString& icons, const QString& folder) {
  if (QFontDatabase::families().isEmpty()) {
    std::fputs("make_media: no font found for the text of the pictures (fonts-dejavu-core)\n",
               stderr);
    return false;
  }
  const QImage splash = SplashAtTwice();
  const QImage half =
      splash.scaled(kSplashWidth, kSplashHeight, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  return MakeFolder(folder) && WriteImage(folder + QStringLiteral("/splash.png"), half) &&
         WriteImage(folder + QStringLiteral("/splash@2x.png"), splash) &&
         WriteImage(folder + QStringLiteral("/credits.png"), Credits(icons));
}

}  // namespace mw
