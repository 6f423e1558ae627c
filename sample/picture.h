// Pictures painted by code: red, green and blue bytes, rows from the top.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace mw::sample {

struct Colour {
  float r = 0, g = 0, b = 0;  // 0 ... 1
};

Colour operator*(const Colour& colour, float factor);
Colour operator+(const Colour& a, const Colour& b);
Colour Mix(const Colour& a, const Colour& b, float t);
// From 0 ... 255 each.
Colour Rgb(int r, int g, int b);

struct Picture {
  Picture(int pictureWidth, int pictureHeight)
      : width(pictureWidth),
        height(pictureHeight),
        rgb(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3) {}

  // Values outside 0 ... 1 are limited.
  void Set(int x, int y, const Colour& colour);
  Colour At(int x, int y) const;

  int width, height;
  std::vector<std::uint8_t> rgb;
};

}  // namespace mw::sample
