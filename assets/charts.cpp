#include "assets/charts.h"

#include <array>

#include "assets/noise.h"
#include "assets/scatter.h"

namespace mw {
namespace {

constexpr int kGlyphs = 16, kGlyphWidth = 8, kGlyphHeight = 9;
constexpr int kLetterWidth = 5, kLetterHeight = 7;

// Each letter is seven rows of five pixels, the leftmost in bit 4.
constexpr std::array<std::array<unsigned char, kLetterHeight>, kGlyphs> kLetters{{
    {0b01110, 0b10001, 0b10001, 0b11111, 0b10001, 0b10001, 0b10001},  // A
    {0b11110, 0b10001, 0b10001, 0b11110, 0b10001, 0b10001, 0b11110},  // B
    {0b01110, 0b10001, 0b10000, 0b10000, 0b10000, 0b10001, 0b01110},  // C
    {0b11110, 0b10001, 0b10001, 0b10001, 0b10001, 0b10001, 0b11110},  // D
    {0b11111, 0b10000, 0b10000, 0b11110, 0b10000, 0b10000, 0b11111},  // E
    {0b11111, 0b10000, 0b10000, 0b11110, 0b10000, 0b10000, 0b10000},  // F
    {0b01110, 0b10001, 0b10000, 0b10111, 0b10001, 0b10001, 0b01110},  // G
    {0b10001, 0b10001, 0b10001, 0b11111, 0b10001, 0b10001, 0b10001},  // H
    {0b00100, 0b01100, 0b00100, 0b00100, 0b00100, 0b00100, 0b01110},  // 1
    {0b01110, 0b10001, 0b00001, 0b00110, 0b01000, 0b10000, 0b11111},  // 2
    {0b01110, 0b10001, 0b00001, 0b00110, 0b00001, 0b10001, 0b01110},  // 3
    {0b00010, 0b00110, 0b01010, 0b10010, 0b11111, 0b00010, 0b00010},  // 4
    {0b11111, 0b10000, 0b11110, 0b00001, 0b00001, 0b10001, 0b01110},  // 5
    {0b01110, 0b10000, 0b10000, 0b11110, 0b10001, 0b10001, 0b01110},  // 6
    {0b11111, 0b00001, 0b00010, 0b00100, 0b01000, 0b01000, 0b01000},  // 7
    {0b01110, 0b10001, 0b10001, 0b01110, 0b10001, 0b10001, 0b01110},  // 8
}};

// Whether a glyph has ink at a place of its 8 x 9 box, where the letter starts at (1, 1).
bool HasInk(int glyph, int x, int y) {
  const int column = x - 1, row = y - 1;
  if (column < 0 || column >= kLetterWidth || row < 0 || row >= kLetterHeight) return false;
  return (kLetters[glyph][row] >> (kLetterWidth - 1 - column) & 1) != 0;
}

bool TouchesInk(int glyph, int x, int y) {
  for (int j = -1; j <= 1; ++j) {
    for (int i = -1; i <= 1; ++i) {
      if (HasInk(glyph, x + i, y + j)) return true;
    }
  }
  return false;
}

}  // namespace

Picture PaintNoSurface() {
  constexpr int kSide = 256, kSquare = 16, kGroup = 4;
  constexpr Colour kDark = Rgb(118, 128, 118), kLight = Rgb(134, 144, 133);
  constexpr Colour kLine = Rgb(98, 109, 100), kGroupLine = Rgb(80, 92, 84);
  return MakePicture(kSide, [&](int x, int y, float, float) {
    const auto onLine = [&](int step, int width) { return x % step < width || y % step < width; };
    if (onLine(kSquare * kGroup, 2)) return kGroupLine;
    if (onLine(kSquare, 1)) return kLine;
    return (x / kSquare + y / kSquare) % 2 == 0 ? kDark : kLight;
  });
}

Picture PaintDetail() {
  constexpr int kSide = 512;
  Dice dice(300);
  StoneBed bed(MakeField(kSide, [](float u, float v) {
    const float crumbs = 1 - Worley(u, v, {72, 72}, 301).nearest;
    return 2.2f * crumbs + 1.6f * Fbm(u, v, {{64, 64}, 3, 0.65f, 302}) +
           3 * Fbm(u, v, {{12, 12}, 3, 0.5f, 303});
  }));
  ScatterStones(bed, 2600, {1.0f, 3.4f, 0.5f}, dice);
  const Field light = Relief(bed.height);
  const Field open = Occlusion(bed.height, 5, 6);
  Picture detail = MakePicture(kSide, [&](int x, int y, float, float) {
    const float grey = 0.5f * (0.55f + 0.45f * light.At(x, y)) * open.At(x, y);
    return Colour{grey, grey, grey};
  });
  float mean = 0;
  for (const Colour& pixel : detail.pixels) mean += pixel.r;
  mean /= static_cast<float>(detail.pixels.size());
  for (Colour& pixel : detail.pixels) pixel = pixel * (0.5f / mean);
  return detail;
}

Picture PaintMapGlyphs() {
  constexpr Colour kNotDrawn = Rgb(255, 0, 0);
  Picture glyphs(kGlyphs * kGlyphWidth, kGlyphHeight);
  for (int y = 0; y < glyphs.height; ++y) {
    for (int x = 0; x < glyphs.width; ++x) {
      const int glyph = x / kGlyphWidth, column = x % kGlyphWidth;
      const bool ink = HasInk(glyph, column, y);
      const Colour paper = TouchesInk(glyph, column, y) ? Colour{} : kNotDrawn;
      glyphs.At(x, y) = ink ? Rgb(255, 255, 255) : paper;
    }
  }
  return glyphs;
}

}  // namespace mw
