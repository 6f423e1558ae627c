#include "sample/picture.h"

#include <algorithm>

namespace mw::sample {
namespace {

std::size_t Offset(const Picture& picture, int x, int y) {
  return (static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
          static_cast<std::size_t>(x)) *
         3;
}

std::uint8_t Byte(float value) {
  return static_cast<std::uint8_t>(std::clamp(value, 0.0f, 1.0f) * 255.0f + 0.5f);
}

}  // namespace

Colour operator*(const Colour& colour, float factor) {
  return {colour.r * factor, colour.g * factor, colour.b * factor};
}

Colour operator+(const Colour& a, const Colour& b) {
  return {a.r + b.r, a.g + b.g, a.b + b.b};
}

Colour Mix(const Colour& a, const Colour& b, float t) {
  return a * (1 - t) + b * t;
}

Colour Rgb(int r, int g, int b) {
  return Colour{static_cast<float>(r), static_cast<float>(g), static_cast<float>(b)} * (1 / 255.0f);
}

void Picture::Set(int x, int y, const Colour& colour) {
  std::uint8_t* pixel = rgb.data() + Offset(*this, x, y);
  pixel[0] = Byte(colour.r);
  pixel[1] = Byte(colour.g);
  pixel[2] = Byte(colour.b);
}

Colour Picture::At(int x, int y) const {
  const std::uint8_t* pixel = rgb.data() + Offset(*this, x, y);
  return Rgb(pixel[0], pixel[1], pixel[2]);
}

}  // namespace mw::sample
