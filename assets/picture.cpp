#include "assets/picture.h"

#include <cmath>

#include "core/steady_math.h"

namespace mw {
namespace {

struct Normal {
  float x, y, z;
};

// Towards the light: left, up and out of the picture.
constexpr Normal kLight{-0.49f, -0.58f, 0.65f};
// Half way between the light and a viewer straight above.
constexpr Normal kHalfway{-0.27f, -0.32f, 0.908f};

Normal NormalAt(const Field& height, int x, int y) {
  const float dx = (height.At(x + 1, y) - height.At(x - 1, y)) / 2;
  const float dy = (height.At(x, y + 1) - height.At(x, y - 1)) / 2;
  const float scale = 1 / std::sqrt(dx * dx + dy * dy + 1);
  return {-dx * scale, -dy * scale, scale};
}

float Dot(Normal a, Normal b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

// Running means along rows (stepX 1) or columns (stepY 1).
Field MeanAlong(const Field& field, int radius, int stepX, int stepY) {
  Field result(field.side);
  const float share = 1 / static_cast<float>(2 * radius + 1);
  for (int line = 0; line < field.side; ++line) {
    const auto at = [&](int k) {
      return stepX != 0 ? field.At(k, line) : field.At(line, k * stepY);
    };
    float sum = 0;
    for (int k = -radius; k <= radius; ++k) sum += at(k);
    for (int k = 0; k < field.side; ++k) {
      (stepX != 0 ? result.At(k, line) : result.At(line, k)) = sum * share;
      sum += at(k + radius + 1) - at(k - radius);
    }
  }
  return result;
}

}  // namespace

Colour Ramp::At(float value) const {
  if (value <= stops_.front().first) return stops_.front().second;
  for (std::size_t i = 1; i < stops_.size(); ++i) {
    if (value > stops_[i].first) continue;
    const float from = stops_[i - 1].first;
    return Mix(stops_[i - 1].second, stops_[i].second, (value - from) / (stops_[i].first - from));
  }
  return stops_.back().second;
}

Field Relief(const Field& height) {
  Field light(height.side);
  for (int y = 0; y < height.side; ++y) {
    for (int x = 0; x < height.side; ++x) {
      const float facing = Dot(NormalAt(height, x, y), kLight) / kLight.z;
      light.At(x, y) = std::clamp(facing, 0.15f, 1.9f);
    }
  }
  return light;
}

Field Gloss(const Field& height, float sharpness) {
  Field gloss(height.side);
  for (int y = 0; y < height.side; ++y) {
    for (int x = 0; x < height.side; ++x) {
      const float facing = std::max(0.0f, Dot(NormalAt(height, x, y), kHalfway));
      gloss.At(x, y) = steady::Pow(facing, sharpness);
    }
  }
  return gloss;
}

Field Blurred(const Field& field, int radius) {
  const Field once = MeanAlong(MeanAlong(field, radius, 1, 0), radius, 0, 1);
  return MeanAlong(MeanAlong(once, radius, 1, 0), radius, 0, 1);
}

Field Occlusion(const Field& height, int radius, float depth) {
  Field result = Blurred(height, radius);
  for (std::size_t i = 0; i < result.values.size(); ++i) {
    const float above = (result.values[i] - height.values[i]) / depth;
    result.values[i] = std::clamp(1 - 0.6f * above, 0.3f, 1.15f);
  }
  return result;
}

Picture Halved(const Picture& picture) {
  Picture half(picture.width / 2, picture.height / 2);
  for (int y = 0; y < half.height; ++y) {
    for (int x = 0; x < half.width; ++x) {
      const Colour sum = picture.At(2 * x, 2 * y) + picture.At(2 * x + 1, 2 * y) +
                         picture.At(2 * x, 2 * y + 1) + picture.At(2 * x + 1, 2 * y + 1);
      half.At(x, y) = sum * 0.25f;
    }
  }
  return half;
}

}  // namespace mw
