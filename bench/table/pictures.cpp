#include "bench/table/pictures.h"

#include <algorithm>
#include <cmath>

#include "core/little_endian.h"

namespace mw::bench {
namespace {

constexpr int kSide = kPictureSide;

double Noise(int x, int y) {
  auto hash =
      static_cast<std::uint32_t>(x) * 374761393u + static_cast<std::uint32_t>(y) * 668265263u;
  hash = (hash ^ hash >> 13) * 1274126177u;
  return (hash ^ hash >> 16) % 65536 / 65535.0;
}

double SmoothNoise(double x, double y) {
  const int column = static_cast<int>(x), row = static_cast<int>(y);
  const double u = x - column, v = y - row;
  return std::lerp(std::lerp(Noise(column, row), Noise(column + 1, row), u),
                   std::lerp(Noise(column, row + 1), Noise(column + 1, row + 1), u), v);
}

// Ground with grain of every size.
double Ground(int x, int y) {
  double value = 0, share = 0.5;
  for (double scale = 1.0 / 128; scale <= 1; scale *= 2, share *= 0.6) {
    value += share * (SmoothNoise(x * scale, y * scale) - 0.5);
  }
  return std::clamp(value + 0.5, 0.0, 1.0);
}

void PutPixel(Picture picture, int x, int y, std::uint8_t* rgb) {
  const auto set = [rgb](double r, double g, double b) {
    rgb[0] = static_cast<std::uint8_t>(r * 255);
    rgb[1] = static_cast<std::uint8_t>(g * 255);
    rgb[2] = static_cast<std::uint8_t>(b * 255);
  };
  if (picture == Picture::Natural) {
    const double dryness = Ground(x + 4000, y), light = Ground(x, y);
    set(light * (0.45 + 0.4 * dryness), light * 0.8, light * (0.25 + 0.2 * dryness));
  } else if (picture == Picture::Smooth) {
    const double u = x / double{kSide}, v = y / double{kSide};
    set(u, (1 - u) * v, 0.5 + 0.5 * std::sin(6 * (u + v)));
  } else {
    const bool stripe = (x + y / 3) / 19 % 2 == 0, disc = std::hypot(x % 61 - 30, y % 61 - 30) < 21;
    set(stripe ? 0.9 : 0.1, disc ? 0.85 : 0.2, stripe == disc ? 0.15 : 0.7);
  }
}

// A 5-6-5 colour with its high bits repeated below, as graphics cards expand it.
std::array<int, 3> Expand(unsigned c) {
  const int r = static_cast<int>(c >> 11), g = static_cast<int>(c >> 5 & 63),
            b = static_cast<int>(c & 31);
  return {r << 3 | r >> 2, g << 2 | g >> 4, b << 3 | b >> 2};
}

// Sum of the squared errors of a block of the picture. `original` is its first pixel.
double SquaredError(std::span<const std::uint8_t> block, const std::uint8_t* original) {
  const unsigned c0 = LoadU16(block, 0), c1 = LoadU16(block, 2);
  const auto a = Expand(c0), b = Expand(c1);
  double squares = 0;
  for (std::size_t pixel = 0; pixel < 16; ++pixel) {
    const unsigned index = block[4 + pixel / 4] >> (2 * (pixel % 4)) & 3;
    const std::uint8_t* const wanted = original + (pixel / 4 * kSide + pixel % 4) * 3;
    for (std::size_t channel = 0; channel < 3; ++channel) {
      const int x = a[channel], y = b[channel];
      const std::array<double, 4> opaque = {double(x), double(y), (2 * x + y) / 3.0,
                                            (x + 2 * y) / 3.0};
      const std::array<double, 4> threeColours = {double(x), double(y), (x + y) / 2.0, 0};
      const double error = (c0 > c1 ? opaque : threeColours)[index] - wanted[channel];
      squares += error * error;
    }
  }
  return squares;
}

}  // namespace

std::vector<std::uint8_t> Paint(Picture picture) {
  std::vector<std::uint8_t> rgb(std::size_t{kSide} * kSide * 3);
  std::uint8_t* pixel = rgb.data();
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x, pixel += 3) PutPixel(picture, x, y, pixel);
  }
  return rgb;
}

double Quality(std::span<const std::uint8_t> rgb, std::span<const std::uint8_t> blocks) {
  double squares = 0;
  for (std::size_t y = 0; y < kSide; y += 4) {
    for (std::size_t x = 0; x < kSide; x += 4, blocks = blocks.subspan(kDxt1BlockSize)) {
      squares += SquaredError(blocks.first(kDxt1BlockSize), rgb.data() + (y * kSide + x) * 3);
    }
  }
  return 10 * std::log10(255.0 * 255.0 * static_cast<double>(rgb.size()) / squares);
}

}  // namespace mw::bench
