#include "assets/snow.h"

#include <array>
#include <cmath>
#include <cstdint>

#include "assets/ground.h"
#include "assets/noise.h"

namespace mw {
namespace {

struct Snowfall {
  float cover = 0.5f;  // 0 bare, 1 buried
  // Which parts of the ground the snow takes first: 1 the bright raised ones, -1 the dark gaps.
  float clinging = 0;
};

// In the order of the material numbers.
constexpr std::array<Snowfall, kGroundKinds.size()> kSnowfalls{{
    {0.62f, -0.4f},  // Default
    {0.22f, 0.3f},   // Water: drifts on the ice
    {0.60f, -0.7f},  // Dry Grass
    {0.52f, -0.8f},  // Wet Grass
    {0.66f, -0.2f},  // Dry Dirt
    {0.40f, 0.5f},   // Wet Dirt
    {0.34f, 0.5f},   // Mud
    {0.50f, 0.3f},   // Outside Map
    {0.50f, -0.7f},  // Gravel
    {0.90f, 0.3f},   // Frozen Ground
    {0.72f, 0.0f},   // Dry Sand
    {0.38f, 0.4f},   // Wet Sand
    {0.44f, 0.6f},   // Rock Surface
    {0.46f, 0.2f},   // Sand Road
    {0.42f, 0.2f},   // Dirt Road
    {0.46f, -0.3f},  // Paved Road
}};

constexpr Colour kSnowShade = Rgb(164, 184, 210), kSnowLight = Rgb(249, 251, 253);
constexpr Colour kColdLight{0.93f, 0.99f, 1.08f};
constexpr std::size_t kWater = 1;
constexpr Colour kIce = Rgb(150, 178, 194);

float Brightness(Colour colour) {
  return 0.299f * colour.r + 0.587f * colour.g + 0.114f * colour.b;
}

Colour Cold(Colour colour) {
  const float grey = Brightness(colour);
  const Colour pale = Mix(colour, {grey, grey, grey}, 0.42f);
  return {pale.r * kColdLight.r, pale.g * kColdLight.g, Clamp01(pale.b * kColdLight.b)};
}

// How far each pixel's surroundings are brighter than the whole, about -1 to 1.
Field Standing(const Picture& ground) {
  Field bright(ground.width);
  double sum = 0, squares = 0;
  for (std::size_t k = 0; k < ground.pixels.size(); ++k) {
    const float value = Brightness(ground.pixels[k]);
    bright.values[k] = value;
    sum += value;
    squares += double{value} * value;
  }
  const double count = static_cast<double>(ground.pixels.size()), mean = sum / count;
  const double spread = std::sqrt(std::max(squares / count - mean * mean, 1e-6));
  Field standing = Blurred(bright, 1);
  for (float& value : standing.values) {
    value = std::clamp(static_cast<float>((value - mean) / (2 * spread)), -1.0f, 1.0f);
  }
  return standing;
}

// 0 bare to 1 covered.
Field SnowCover(const Picture& ground, const Snowfall& fall, std::uint32_t seed) {
  const Field standing = Standing(ground);
  Field drifts = MakeField(ground.width, [seed](float u, float v) {
    const Place place = Warp(u, v, 0.02f, {{10, 10}, 3, 0.5f, seed});
    return 0.6f * Fbm(place.u, place.v, {{10, 10}, 4, 0.55f, seed + 10}) +
           0.3f * Fbm(u, v, {{48, 48}, 3, 0.6f, seed + 20});
  });
  const float line = 1.1f * (1 - 2 * fall.cover);
  for (std::size_t k = 0; k < drifts.values.size(); ++k) {
    const float lies = drifts.values[k] + 0.75f * fall.clinging * standing.values[k];
    drifts.values[k] = SmoothStep(line - 0.42f, line + 0.42f, lies);
  }
  return drifts;
}

}  // namespace

Picture WinterGround(const Picture& ground, std::size_t material) {
  const std::uint32_t seed = 700 + 30 * static_cast<std::uint32_t>(material);
  const Field cover = SnowCover(ground, kSnowfalls[material], seed);
  Field surface = MakeField(ground.width, [seed](float u, float v) {
    return 9 * Fbm(u, v, {{5, 7}, 4, 0.5f, seed + 5}) + 1.2f * Fbm(u, v, {{64, 64}, 3, 0.6f, seed});
  });
  for (std::size_t k = 0; k < surface.values.size(); ++k) {
    surface.values[k] += 4 * cover.values[k];
  }
  const Field light = Relief(surface);
  const float ice = material == kWater ? 0.6f : 0;
  return MakePicture(ground.width, [&](int x, int y, float, float) {
    const Colour bare = Mix(Cold(ground.At(x, y)), kIce, ice);
    const Colour snow = Mix(kSnowShade, kSnowLight, Clamp01(light.At(x, y) - 0.25f));
    return Mix(bare, snow, 0.96f * cover.At(x, y));
  });
}

Picture WinterSky(const Picture& side) {
  Picture sky = side;
  for (Colour& colour : sky.pixels) {
    const float grey = 0.55f + 0.4f * Brightness(colour);
    colour = Mix(colour, {grey * 0.95f, grey * 0.98f, grey}, 0.82f);
  }
  return sky;
}

Picture WinterDetail(const Picture& detail) {
  Picture even = detail;
  for (Colour& colour : even.pixels) colour = Mix(colour, Rgb(128, 128, 128), 0.45f);
  return even;
}

}  // namespace mw
