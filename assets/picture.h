// Colours, pictures and height fields that the painters work on, and the light that turns a height
// field into relief. Fields and square pictures wrap around at their edges.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <utility>
#include <vector>

namespace mw {

struct Colour {
  float r = 0, g = 0, b = 0;  // 0 to 1, as shown on a screen
};

inline Colour operator+(Colour a, Colour b) { return {a.r + b.r, a.g + b.g, a.b + b.b}; }
inline Colour operator*(Colour a, float k) { return {a.r * k, a.g * k, a.b * k}; }
inline Colour Mix(Colour a, Colour b, float t) { return a * (1 - t) + b * t; }
// From the usual 0 to 255.
constexpr Colour Rgb(int r, int g, int b) {
  return {static_cast<float>(r) / 255, static_cast<float>(g) / 255, static_cast<float>(b) / 255};
}

inline float Clamp01(float t) { return std::clamp(t, 0.0f, 1.0f); }
// 0 up to `from`, 1 from `to` on, smooth between. `from` may be greater than `to`.
inline float SmoothStep(float from, float to, float value) {
  const float t = Clamp01((value - from) / (to - from));
  return t * t * (3 - 2 * t);
}

// Colour stops in rising order of their position; a value outside takes the end's colour.
class Ramp {
 public:
  Ramp(std::initializer_list<std::pair<float, Colour>> stops) : stops_(stops) {}
  Colour At(float value) const;

 private:
  std::vector<std::pair<float, Colour>> stops_;
};

// A square of values; the side is a power of two so that wrapping is a mask.
struct Field {
  explicit Field(int sideLength) : side(sideLength), values(sideLength * sideLength) {}
  float& At(int x, int y) { return values[(y & (side - 1)) * side + (x & (side - 1))]; }
  float At(int x, int y) const { return values[(y & (side - 1)) * side + (x & (side - 1))]; }

  int side;
  std::vector<float> values;
};

// Rows from the top.
struct Picture {
  Picture(int w, int h) : width(w), height(h), pixels(w * h) {}
  Colour& At(int x, int y) { return pixels[y * width + x]; }
  Colour At(int x, int y) const { return pixels[y * width + x]; }
  Colour& Wrapped(int x, int y) {
    return At((x % width + width) % width, (y % height + height) % height);
  }

  int width, height;
  std::vector<Colour> pixels;
};

// Calls value(u, v) at every pixel centre.
template <typename Function>
Field MakeField(int side, Function value) {
  Field field(side);
  const float step = 1.0f / static_cast<float>(side);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      field.At(x, y) =
          value((static_cast<float>(x) + 0.5f) * step, (static_cast<float>(y) + 0.5f) * step);
    }
  }
  return field;
}

// Calls colour(x, y, u, v) at every pixel.
template <typename Function>
Picture MakePicture(int side, Function colour) {
  Picture picture(side, side);
  const float step = 1.0f / static_cast<float>(side);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      picture.At(x, y) = colour(x, y, (static_cast<float>(x) + 0.5f) * step,
                                (static_cast<float>(y) + 0.5f) * step);
    }
  }
  return picture;
}

// Brightness of a surface lit from the upper left: 1 where it is flat. Heights are in pixels.
Field Relief(const Field& height);
// Mirror light of the sky on a wet surface, 0 to 1; a higher `sharpness` gives smaller glints.
Field Gloss(const Field& height, float sharpness);
// Mean over a square of 2 * radius + 1, twice, which is close to a Gaussian.
Field Blurred(const Field& field, int radius);
// Darkening of hollows: 1 on open ground, less where the surroundings rise above by `depth` pixels.
Field Occlusion(const Field& height, int radius, float depth);

Picture Halved(const Picture& picture);

}  // namespace mw
